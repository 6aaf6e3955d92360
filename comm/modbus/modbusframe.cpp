#include "modbus/modbusframe.h"

#include <algorithm>
#include <array>
#include <limits>
#include <QtEndian>

namespace {

using ByteTable = std::array<unsigned char, 256>;

// The 16-bit CRC of one byte, polynomial 0xA001 (reflected).
constexpr unsigned crcOfByte(unsigned byte)
{
    for (int bit = 0; bit < 8; ++bit)
        byte = byte & 1 ? (byte >> 1) ^ 0xA001 : byte >> 1;
    return byte;
}

constexpr ByteTable crcTable(int shift)
{
    ByteTable table = {};
    for (unsigned i = 0; i < table.size(); ++i)
        table[i] = static_cast<unsigned char>(crcOfByte(i) >> shift);
    return table;
}

// Named as in the Modbus serial line guide, where "Hi" is the byte that goes on the line first.
constexpr ByteTable auchCRCHi = crcTable(0);
constexpr ByteTable auchCRCLo = crcTable(8);
static_assert(auchCRCHi[1] == 0xC1 && auchCRCLo[1] == 0xC0 && auchCRCHi[255] == 0x40
                  && auchCRCLo[255] == 0x40,
              "the tables differ from the published ones");

constexpr int crcLength = 2;
constexpr int shortestFrame = 4;
constexpr int requestLength = 8;

struct Crc
{
    unsigned char hi = 0xFF;
    unsigned char lo = 0xFF;
};

Crc crcOf(const unsigned char *bytes, int length)
{
    Crc crc;
    for (int i = 0; i < length; ++i) {
        const unsigned index = crc.hi ^ bytes[i];
        crc.hi = auchCRCHi[index] ^ crc.lo;
        crc.lo = auchCRCLo[index];
    }
    return crc;
}

void putUint16(unsigned char *bytes, int value)
{
    qToBigEndian(static_cast<quint16>(value), bytes);
}

void putHeader(unsigned char *frame, int unit, int functionCode, int address, int word)
{
    frame[0] = static_cast<unsigned char>(unit);
    frame[1] = static_cast<unsigned char>(functionCode);
    putUint16(frame + 2, address);
    putUint16(frame + 4, word);
}

// The length as far as an int can tell it; counts are the driver's and may be anything.
int toLength(qint64 length)
{
    using Limits = std::numeric_limits<int>;
    return length >= Limits::min() && length <= Limits::max() ? static_cast<int>(length) : -1;
}

} // namespace

int setModbusCRC(unsigned char *buffer, int length)
{
    if (!buffer || length < shortestFrame)
        return -1;
    const Crc crc = crcOf(buffer, length - crcLength);
    buffer[length - 2] = crc.hi;
    buffer[length - 1] = crc.lo;
    return 0;
}

int checkModbufCRC(const unsigned char *buffer, int length)
{
    if (!buffer || length < shortestFrame)
        return -1;
    const Crc crc = crcOf(buffer, length - crcLength);
    return buffer[length - 2] == crc.hi && buffer[length - 1] == crc.lo ? 0 : -1;
}

int mod_Set_SetBuf(unsigned char *buffer, int unit, int address, int value)
{
    if (!buffer)
        return -1;
    putHeader(buffer, unit, 0x06, address, value);
    return setModbusCRC(buffer, requestLength);
}

int buildCmd(unsigned char *buffer, int unit, int functionCode, int address, int count)
{
    if (!buffer)
        return -1;
    putHeader(buffer, unit, functionCode, address, count);
    setModbusCRC(buffer, requestLength);
    switch (functionCode) {
    case 2:
        // Rounded down although the device rounds up: intended, drivers reckon with it.
        return count / 8 + 5;
    case 3:
    case 4:
        return toLength(2 * qint64(count) + 5);
    case 6:
        return requestLength;
    default:
        return 0; // function code 1 too, although it reads: intended
    }
}

int buildCmd16(unsigned char *buffer, int unit, int address, int count,
               const unsigned short *values)
{
    constexpr int headerLength = 7;
    const qint64 length = 2 * qint64(count) + headerLength + crcLength;
    if (!buffer || (!values && count > 0) || toLength(length) != length)
        return -1;

    unsigned char header[headerLength];
    putHeader(header, unit, 0x10, address, count);
    header[6] = static_cast<unsigned char>(2 * qint64(count));
    // A negative count makes a frame that is shorter than its header.
    std::copy_n(header, qBound(qint64(0), length, qint64(headerLength)), buffer);
    for (int i = 0; i < count; ++i)
        putUint16(buffer + headerLength + 2 * qptrdiff(i), values[i]);
    setModbusCRC(buffer, static_cast<int>(length));
    return static_cast<int>(length);
}

unsigned short UINT8_2_to_UINT16(const unsigned char *bytes)
{
    return bytes ? qFromBigEndian<quint16>(bytes) : 0;
}

unsigned int UINT8_4_to_UINT32(const unsigned char *bytes)
{
    return bytes ? qFromBigEndian<quint32>(bytes) : 0;
}

char *FiltSpace(char *text)
{
    while (text && *text == ' ')
        ++text;
    return text;
}
