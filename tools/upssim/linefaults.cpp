#include "linefaults.h"

namespace upssim {

namespace {

constexpr char rtuNoise[] = "\x00\xF3\x41\x00\x5A";
constexpr char foreignTcpReply[] = "\x00\x07\x00\x00\x00\x05\xF7\x03\x02\x12\x34";

} // namespace

void LineFaults::set(Disturbance disturbance, int count)
{
    m_disturbance = disturbance;
    m_left = disturbance.fault == Fault::None ? 0 : count;
}

Disturbance LineFaults::next()
{
    if (m_left != 0) {
        m_left -= m_left > 0 ? 1 : 0;
        return m_disturbance;
    }
    const double chance = double(m_random()) / double(std::mt19937::max());
    if (chance >= m_flakyRate)
        return {};
    return { chance < m_flakyRate / 2 ? Fault::Silent : Fault::Crc, 0 };
}

QByteArray disturbed(QByteArray reply, Fault fault, modbus::Framing framing)
{
    const bool tcp = framing == modbus::Framing::Tcp;
    switch (fault) {
    case Fault::Truncated:
        return reply.left(reply.size() / 2);
    case Fault::Crc: {
        const int position = tcp ? modbus::layoutOf(framing).function() : reply.size() - 1;
        if (position < reply.size())
            reply[position] = char(reply[position] ^ 0x55);
        return reply;
    }
    case Fault::Garbage:
        return (tcp ? QByteArray(foreignTcpReply, sizeof foreignTcpReply - 1)
                    : QByteArray(rtuNoise, sizeof rtuNoise - 1))
            + reply;
    case Fault::None:
    case Fault::Late:
    case Fault::Silent:
    case Fault::Unit:
    case Fault::Exception:
        break;
    }
    return reply;
}

} // namespace upssim
