#include "modbusline.h"

#include "comm/modbusframe.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr int attempts = 3;
constexpr auto replyTimeout = 1000ms;
constexpr auto drainTimeout = 1500ms; // a little more than a read on TCP waits
constexpr int headerSize = 7;         // of the longest header, that of function 16
constexpr int crcSize = 2;
constexpr int exceptionSize = 5;
constexpr unsigned char exceptionBit = 0x80;
constexpr unsigned char deviceBusy = 6;
// A read on TCP fills up to 996 bytes whatever size it is given.
constexpr int readRoom = 1024;

// Devices whose last reply was missing or damaged; by device, since each call has a new line. Of
// fixed size, so that devices that are gone do not add up, and without a destructor, since other
// threads may still be polling when the process ends.
std::mutex suspectsMutex;
std::array<void *, 32> suspects {}; // guarded by suspectsMutex
std::size_t nextSuspect = 0;        // likewise

void suspect(void *device)
{
    const std::lock_guard<std::mutex> lock(suspectsMutex);
    if (std::find(suspects.begin(), suspects.end(), device) == suspects.end())
        suspects[nextSuspect++ % suspects.size()] = device;
}

// Tells whether the device was suspect, and trusts it again.
bool takeSuspect(void *device)
{
    const std::lock_guard<std::mutex> lock(suspectsMutex);
    const auto found = std::find(suspects.begin(), suspects.end(), device);
    if (found == suspects.end())
        return false;
    *found = nullptr;
    return true;
}

} // namespace

/** A complete frame and what its reply must look like. */
struct ModbusLine::Request
{
    unsigned char frame[256] = {};
    int length = 0;
    int replyLength = 0; ///< CRC included
    int echoed = 0;      ///< the reply begins with so many bytes of the request...
    int byteCount = -1;  ///< ...and goes on with this one, when not negative
};

/** What has arrived; the reply, once found, begins at `begin`. */
struct ModbusLine::Reply
{
    unsigned char bytes[2 * readRoom] = {};
    int size = 0;
    int begin = 0;

    const unsigned char *at(int offset) const { return bytes + begin + offset; }
    Outcome find(const Request &request);
};

// Looks for the reply anywhere in what has arrived: noise, or another unit's frame, may precede it.
Outcome ModbusLine::Reply::find(const Request &request)
{
    for (begin = 0; size - begin >= exceptionSize; ++begin) {
        if (*at(0) != request.frame[0])
            continue;
        if (*at(1) == (request.frame[1] | exceptionBit)
            && checkModbufCRC(at(0), exceptionSize) == 0)
            return Outcome::Refused;
        if (size - begin >= request.replyLength
            && !std::memcmp(at(0), request.frame, request.echoed)
            && (request.byteCount < 0 || *at(request.echoed) == request.byteCount)
            && checkModbufCRC(at(0), request.replyLength) == 0)
            return Outcome::Answered;
    }
    return Outcome::NoAnswer;
}

ModbusLine::ModbusLine(PortDescriptor &port, int unit, std::chrono::milliseconds total)
    : m_port(port)
    , m_unit(static_cast<unsigned char>(unit))
    , m_deadline(Clock::now() + total)
{
}

Outcome ModbusLine::read(int function, int address, int count, std::uint16_t *values)
{
    Request request;
    request.replyLength = buildCmd(request.frame, m_unit, function, address, count);
    request.length = 8;
    request.echoed = 2; // unit and function
    request.byteCount = request.replyLength - 3 - crcSize;

    Reply reply;
    const Outcome outcome = exchange(request, reply);
    if (outcome != Outcome::Answered)
        return outcome;
    for (int i = 0; i < count; ++i) {
        if (function == 2)
            values[i] = (*reply.at(3 + i / 8) >> (i % 8)) & 1;
        else
            values[i] = UINT8_2_to_UINT16(reply.at(3 + 2 * i));
    }
    return outcome;
}

Outcome ModbusLine::write(int address, std::uint16_t value)
{
    Request request;
    mod_Set_SetBuf(request.frame, m_unit, address, value);
    request.length = 8;
    request.replyLength = 8;
    request.echoed = 6; // everything but the CRC
    Reply reply;
    return exchange(request, reply);
}

Outcome ModbusLine::write(int address, const std::uint16_t *values, int count)
{
    Request request;
    static_assert(sizeof request.frame >= headerSize + 2 * 123 + crcSize, "the longest request");
    request.length = buildCmd16(request.frame, m_unit, address, count, values);
    request.replyLength = 8;
    request.echoed = 6; // unit, function, address, count
    Reply reply;
    return exchange(request, reply);
}

Outcome ModbusLine::exchange(const Request &request, Reply &reply)
{
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (takeSuspect(m_port.device))
            drain();
        // Nothing may go out whose reply nobody waits for.
        if (Clock::now() + replyTimeout > m_deadline) {
            suspect(m_port.device);
            return Outcome::NoAnswer;
        }
        reply = Reply();
        unsigned char frame[sizeof request.frame];
        std::memcpy(frame, request.frame, sizeof frame);
        Outcome outcome = Outcome::NoAnswer;
        if (m_port.write(&m_port, reinterpret_cast<char *>(frame), request.length)
            == request.length)
            outcome = collect(request, reply);
        if (outcome == Outcome::Answered)
            return outcome;
        if (outcome == Outcome::Refused && *reply.at(2) != deviceBusy)
            return outcome;
        suspect(m_port.device);
    }
    return Outcome::NoAnswer;
}

Outcome ModbusLine::collect(const Request &request, Reply &reply)
{
    const auto deadline = Clock::now() + replyTimeout;
    while (Clock::now() < deadline && receive(reply)) {
        const Outcome outcome = reply.find(request);
        if (outcome != Outcome::NoAnswer)
            return outcome;
    }
    return Outcome::NoAnswer;
}

// Appends what the port has; false when the port failed or too much noise has come.
bool ModbusLine::receive(Reply &reply)
{
    if (reply.size + readRoom > int(sizeof reply.bytes))
        return false;
    const auto begun = Clock::now();
    const int count =
        m_port.read(&m_port, reinterpret_cast<char *>(reply.bytes + reply.size), readRoom);
    if (count < 0 || count > readRoom)
        return false;
    // A port with a timeout of zero does not wait by itself.
    if (count == 0 && Clock::now() - begun < 1ms)
        std::this_thread::sleep_for(1ms);
    reply.size += count;
    return true;
}

// Reads until nothing more comes.
void ModbusLine::drain()
{
    const auto deadline = std::min(Clock::now() + drainTimeout, m_deadline);
    char waste[readRoom];
    while (Clock::now() < deadline && m_port.read(&m_port, waste, readRoom) > 0) { }
}
