#pragma once

#include "comm/driverapi.h"

#include <chrono>
#include <cstdint>

/** What a request ended with. */
enum class Outcome {
    Answered,
    Refused,  ///< the device sent an exception reply
    NoAnswer, ///< nothing usable came, however often it was asked
};

/**
 * Modbus requests to one device through the client's port descriptor.
 *
 * Speaks RTU on every transport: on TCP the port's two functions convert the frames. A request
 * is repeated when its reply is missing or damaged; what arrives beside the reply is discarded.
 * After such a failure the line is read until it is silent before the next request goes out, also
 * when that is in a later call, or a late reply would be taken for the next one.
 *
 * Threads:   the calling thread only; one line at a time for a device.
 * Ownership: the descriptor stays the caller's and must outlive the line.
 */
class ModbusLine
{
public:
    using Clock = std::chrono::steady_clock;

    /** @param unit   device address, 1 to 247
     *  @param total  all requests of this line together take no longer */
    ModbusLine(PortDescriptor &port, int unit, std::chrono::milliseconds total);

    /** Reads registers (function 3 or 4, at most 125) or discrete inputs (function 2, a multiple of
     *  8, at most 2000): one value for each goes to `values`, which stays untouched on failure. */
    [[nodiscard]] Outcome read(int function, int address, int count, std::uint16_t *values);

    /** Writes one register (function 6). */
    [[nodiscard]] Outcome write(int address, std::uint16_t value);

    /** Writes `count` registers (function 16), at most 123. */
    [[nodiscard]] Outcome write(int address, const std::uint16_t *values, int count);

private:
    struct Request;
    struct Reply;

    Outcome exchange(const Request &request, Reply &reply);
    Outcome collect(const Request &request, Reply &reply);
    bool receive(Reply &reply);
    void drain();

    PortDescriptor &m_port;
    const unsigned char m_unit;
    const Clock::time_point m_deadline;
};
