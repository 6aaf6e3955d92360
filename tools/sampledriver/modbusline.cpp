#include "modbusline.h"

#include "commio.h"
#include "modbusadu.h"
#include "modbusframe.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>
#include <thread>

namespace {

using namespace std::chrono_literals;
using modbus::Adu;
using modbus::Framing;

constexpr int attempts = 3;
constexpr auto replyTimeout = 1000ms;
constexpr auto drainTimeout = 1500ms; // a little more than a read on TCP waits
constexpr modbus::Layout layout = modbus::layoutOf(Framing::Rtu);
constexpr int exceptionSize = layout.function() + modbus::exceptionPduSize + layout.trailer;
constexpr int fixedSize = layout.data() + 4 + layout.trailer; // unit, function, two words, CRC
constexpr int noCount = -1;
constexpr int deviceBusy = 6;
constexpr int readBits = 2;
constexpr int readHolding = 3;
constexpr int maxWritten = 123; // registers
constexpr int broadcastUnit = 0;
constexpr int lastUnit = 247; // what follows is reserved...
constexpr int peerUnit = 255; // ...but for this one on TCP, which is the peer itself
// A read on TCP fills up to 996 bytes whatever size it is given.
constexpr int readRoom = 1024;
constexpr int noiseRoom = 512; // for what comes ahead of a reply

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
    int replyLength = 0;     ///< CRC included
    int echoed = 0;          ///< bytes of the request that the reply begins with
    int byteCount = noCount; ///< that a read's reply tells; writes have none

    Adu adu() const { return Adu(Framing::Rtu, frame, length); }
};

/** What has arrived; the reply, once found, begins at `begin`. */
struct ModbusLine::Reply
{
    unsigned char bytes[noiseRoom + readRoom] = {};
    int size = 0;
    int begin = 0;

    Adu adu() const { return Adu(Framing::Rtu, bytes + begin, size - begin); }
    Outcome find(const Request &request);
    Outcome judge(const Request &request) const;
};

// Looks for the reply anywhere in what has arrived: noise, or another unit's frame, may precede it.
Outcome ModbusLine::Reply::find(const Request &request)
{
    for (begin = 0; size - begin >= exceptionSize; ++begin) {
        const Outcome outcome = judge(request);
        if (outcome != Outcome::NoAnswer)
            return outcome;
    }
    return Outcome::NoAnswer;
}

// What the bytes from `begin` on are to the request.
Outcome ModbusLine::Reply::judge(const Request &request) const
{
    const Adu reply = adu();
    if (reply.unit() != request.adu().unit())
        return Outcome::NoAnswer;
    const unsigned char *const first = bytes + begin;
    if (reply.function() == (request.adu().function() | modbus::exceptionBit))
        return checkModbufCRC(first, exceptionSize) == 0 ? Outcome::Refused : Outcome::NoAnswer;
    const bool matches = size - begin >= request.replyLength
        && std::memcmp(first, request.frame, std::size_t(request.echoed)) == 0
        && (request.byteCount == noCount || reply.data()[0] == request.byteCount)
        && checkModbufCRC(first, request.replyLength) == 0;
    return matches ? Outcome::Answered : Outcome::NoAnswer;
}

std::optional<Unit> Unit::at(const PortDescriptor &port, int number)
{
    const bool tcp = port.read == TcpCommRead;
    const bool peer = tcp && (number == broadcastUnit || number == peerUnit);
    if (!peer && (number <= broadcastUnit || number > lastUnit))
        return {};
    return Unit(static_cast<std::uint8_t>(number));
}

ModbusLine::ModbusLine(PortDescriptor &port, Unit unit, std::chrono::milliseconds total)
    : m_port(port)
    , m_unit(unit)
    , m_deadline(Clock::now() + total)
{
}

Outcome ModbusLine::read(int function, int address, int count, std::uint16_t *values)
{
    Request request;
    request.replyLength = buildCmd(request.frame, m_unit.number(), function, address, count);
    request.length = fixedSize;
    request.echoed = layout.data(); // unit and function
    request.byteCount = request.replyLength - layout.data() - 1 - layout.trailer;

    Reply reply;
    const Outcome outcome = exchange(request, reply);
    if (outcome != Outcome::Answered)
        return outcome;
    const unsigned char *const payload = reply.adu().data() + 1; // behind the byte count
    for (int i = 0; i < count; ++i) {
        if (function == readBits)
            values[i] = (payload[i / 8] >> (i % 8)) & 1;
        else
            values[i] = UINT8_2_to_UINT16(payload + 2 * i);
    }
    return outcome;
}

Outcome ModbusLine::write(int address, std::uint16_t value)
{
    if (!isHeardByOne(address))
        return Outcome::NoAnswer;
    Request request;
    mod_Set_SetBuf(request.frame, m_unit.number(), address, value);
    request.length = fixedSize;
    request.replyLength = fixedSize;
    request.echoed = fixedSize - layout.trailer;
    Reply reply;
    return exchange(request, reply);
}

Outcome ModbusLine::write(int address, const std::uint16_t *values, int count)
{
    if (!isHeardByOne(address))
        return Outcome::NoAnswer;
    Request request;
    constexpr int longest = fixedSize + 1 + 2 * maxWritten; // the byte count, and the values
    static_assert(sizeof request.frame >= longest, "the longest request");
    request.length = buildCmd16(request.frame, m_unit.number(), address, count, values);
    request.replyLength = fixedSize;
    request.echoed = fixedSize - layout.trailer; // up to the count
    Reply reply;
    return exchange(request, reply);
}

// Unit 0 is the peer itself on TCP, but a gateway passes it on to every device of its line. Those
// never answer a broadcast: whoever answers a read is one device.
bool ModbusLine::isHeardByOne(int address)
{
    std::uint16_t value = 0;
    return m_unit.number() != broadcastUnit
        || read(readHolding, address, 1, &value) == Outcome::Answered;
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
        if (outcome == Outcome::Refused && reply.adu().data()[0] != deviceBusy)
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
