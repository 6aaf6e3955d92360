#include "requestreader.h"

namespace upssim {

using namespace modbus;

namespace {

constexpr int writeCoils = 15;
constexpr int writeRegisters = 16;
constexpr int lastOfFixedLength = 6;
constexpr int crcSize = 2;
constexpr int fixedSize = 6 + crcSize; // unit, function, two words
constexpr int byteCountOffset = 6;
constexpr int maxRtuSize = 1 + maxPduSize + crcSize;
constexpr int unknown = 0; // length: not yet, or not at all

const quint8 *raw(const QByteArray &bytes)
{
    return reinterpret_cast<const quint8 *>(bytes.constData());
}

// An RTU frame does not tell its length; its function does.
int rtuSize(const QByteArray &bytes)
{
    if (bytes.size() <= byteCountOffset)
        return unknown;
    const int function = raw(bytes)[1];
    if (function == writeCoils || function == writeRegisters)
        return byteCountOffset + 1 + raw(bytes)[byteCountOffset] + crcSize;
    return function <= lastOfFixedLength ? fixedSize : unknown;
}

bool hasRightCrc(const QByteArray &frame)
{
    const int end = frame.size() - crcSize;
    if (end < 2)
        return false;
    const quint16 crc = crc16(frame.left(end));
    return raw(frame)[end] == (crc & 0xFF) && raw(frame)[end + 1] == crc >> 8;
}

} // namespace

quint16 crc16(const QByteArray &bytes)
{
    unsigned crc = 0xFFFF;
    for (const char byte : bytes) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc & 1 ? crc >> 1 ^ 0xA001 : crc >> 1;
    }
    return quint16(crc);
}

void RequestReader::append(const char *bytes, int count)
{
    m_bytes.append(bytes, count);
}

std::optional<QByteArray> RequestReader::next()
{
    const int size = expectedSize();
    if (m_framing == Framing::Rtu && size == unknown && m_bytes.size() > maxRtuSize)
        m_bytes.clear(); // noise
    if (size == unknown || m_bytes.size() < size)
        return {};
    if (m_framing == Framing::Tcp)
        return take(size);
    if (hasRightCrc(m_bytes.left(size)))
        return take(size);
    m_bytes.clear(); // nobody knows where the next one begins; whoever asked asks again
    return {};
}

std::optional<QByteArray> RequestReader::silence()
{
    if (m_framing == Framing::Tcp)
        return {};
    const QByteArray frame = std::exchange(m_bytes, QByteArray());
    return hasRightCrc(frame) ? std::optional(frame) : std::nullopt;
}

int RequestReader::expectedSize()
{
    if (m_framing == Framing::Rtu)
        return rtuSize(m_bytes);
    if (m_bytes.size() < Mbap::size)
        return unknown;
    const Mbap header = Mbap::read(raw(m_bytes));
    m_broken = m_broken || !header.isSane();
    return m_broken ? unknown : Mbap::size + header.length;
}

std::optional<QByteArray> RequestReader::take(int size)
{
    const QByteArray frame = m_bytes.left(size);
    m_bytes.remove(0, size);
    return frame;
}

} // namespace upssim
