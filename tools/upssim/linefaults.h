#pragma once

#include "modbusadu.h"

#include <QByteArray>

#include <chrono>
#include <random>

namespace upssim {

/** What the device does wrong with one reply. */
enum class Fault {
    None,
    Late,      ///< parameter: ms
    Silent,    ///< the request is not even carried out
    Truncated, ///< the second half is missing
    Crc,       ///< RTU: the CRC is wrong; TCP, which has none: the function code is
    Unit,      ///< the reply is another unit's
    Exception, ///< parameter: exception code
    Garbage,   ///< bytes that belong to no reply come first; on TCP a whole foreign frame
};

/** A fault and how it is to be done. */
struct Disturbance
{
    Fault fault = Fault::None;
    int parameter = 0;
};

/**
 * Decides which replies go wrong, and how.
 *
 * Threads: one thread only.
 */
class LineFaults
{
public:
    explicit LineFaults(quint32 seed)
        : m_random(seed)
    {
    }

    /** The next `count` replies suffer `disturbance`; all of them when `count` is negative. */
    void set(Disturbance disturbance, int count);

    /** Each reply is lost or garbled with probability `rate`, 0 to 1. */
    void setFlakyRate(double rate) { m_flakyRate = rate; }

    /** What happens to the next reply. */
    Disturbance next();

private:
    std::mt19937 m_random;
    Disturbance m_disturbance;
    int m_left = 0; // -1: no end
    double m_flakyRate = 0;
};

/** The bytes that go out in place of `reply`. The faults Late, Silent, Unit and Exception show
 *  elsewhere and leave the bytes alone. */
QByteArray disturbed(QByteArray reply, Fault fault, modbus::Framing framing);

} // namespace upssim
