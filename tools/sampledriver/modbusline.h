#pragma once

#include "driverapi.h"

#include <chrono>
#include <cstdint>
#include <optional>

/** What a request ended with. */
enum class Outcome {
    Answered,
    Refused,  ///< the device sent an exception reply
    NoAnswer, ///< nothing usable came, however often it was asked
};

/** The unit that requests go to; always one that the port's transport has. */
class Unit
{
public:
    /** Takes a port that does not read with `TcpCommRead` for a line: there the rules are tighter.
     *  @param number  1 to 247; on TCP also 0 and 255, which there are the peer itself
     *  @return nothing for any other; none is cut to a byte */
    static std::optional<Unit> at(const PortDescriptor &port, int number);

    std::uint8_t number() const { return m_number; }

private:
    explicit Unit(std::uint8_t number)
        : m_number(number)
    {
    }

    std::uint8_t m_number;
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

    /** @param total  all requests of this line together take no longer */
    ModbusLine(PortDescriptor &port, Unit unit, std::chrono::milliseconds total);

    /** Reads registers (function 3 or 4, at most 125) or discrete inputs (function 2, a multiple of
     *  8, at most 2000): one value for each goes to `values`, which stays untouched on failure. */
    [[nodiscard]] Outcome read(int function, int address, int count, std::uint16_t *values);

    /** Writes one register (function 6). Like the other write, it first reads the register when the
     *  unit is 0, and sends nothing without an answer: see isHeardByOne(). */
    [[nodiscard]] Outcome write(int address, std::uint16_t value);

    /** Writes `count` registers (function 16), at most 123. */
    [[nodiscard]] Outcome write(int address, const std::uint16_t *values, int count);

private:
    struct Request;
    struct Reply;

    bool isHeardByOne(int address);
    Outcome exchange(const Request &request, Reply &reply);
    Outcome collect(const Request &request, Reply &reply);
    bool receive(Reply &reply);
    void drain();

    PortDescriptor &m_port;
    const Unit m_unit;
    const Clock::time_point m_deadline;
};
