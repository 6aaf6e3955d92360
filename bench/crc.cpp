// The CRC of frames of 8, 64 and 253 bytes.

#include "rows.h"

#include "modbus/modbusframe.h"

#include <QByteArray>

#include <array>

namespace {

constexpr int frames = 20000; // a round

/** The two-table loop as published, its tables computed once. */
class PublishedCrc
{
public:
    PublishedCrc()
    {
        for (unsigned byte = 0; byte < 256; ++byte) {
            unsigned crc = byte;
            for (int bit = 0; bit < 8; ++bit)
                crc = crc & 1 ? crc >> 1 ^ 0xA001 : crc >> 1;
            m_hi[byte] = static_cast<unsigned char>(crc);
            m_lo[byte] = static_cast<unsigned char>(crc >> 8);
        }
    }

    void set(unsigned char *buffer, int length) const
    {
        unsigned char hi = 0xFF;
        unsigned char lo = 0xFF;
        for (int i = 0; i < length - 2; ++i) {
            const unsigned index = hi ^ buffer[i];
            hi = lo ^ m_hi[index];
            lo = m_lo[index];
        }
        buffer[length - 2] = hi;
        buffer[length - 1] = lo;
    }

private:
    std::array<unsigned char, 256> m_hi;
    std::array<unsigned char, 256> m_lo;
};

} // namespace

void benchCrc(Runner &runner)
{
    static const PublishedCrc published;
    for (int size : { 8, 64, 253 }) {
        QByteArray frame(size, 'x');
        auto *buffer = reinterpret_cast<unsigned char *>(frame.data());
        // Each frame's CRC goes into the next frame, so that none can be left out.
        const auto theirs = [=] {
            for (int i = 0; i < frames; ++i) {
                published.set(buffer, size);
                buffer[0] = buffer[size - 1];
            }
        };
        const auto ours = [=] {
            for (int i = 0; i < frames; ++i) {
                setModbusCRC(buffer, size);
                buffer[0] = buffer[size - 1];
            }
        };
        Row row { QStringLiteral("CRC of %1 bytes").arg(size),
                  { { QStringLiteral("published loop"), Role::Limit, frames, theirs },
                    { QStringLiteral("setModbusCRC"), Role::Ours, frames, ours } } };
        row.toLimit = 1.1;
        runner.run(row);
    }
}
