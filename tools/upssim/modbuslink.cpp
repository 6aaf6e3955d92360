#include "modbuslink.h"

#include "simulator.h"

#include <algorithm>
#include <cerrno>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace upssim {

using modbus::Framing;

namespace {

constexpr int silenceMs = 100; // ends a frame on a serial line
constexpr quint8 foreignUnit = 0xF7;
constexpr int broadcastUnit = 0;
constexpr int peerUnits[] = { 0, 255 }; // which on TCP are the peer itself

} // namespace

ModbusLink::ModbusLink(Simulator &simulator, Framing framing, Descriptor line, int address,
                       QObject *parent)
    : QObject(parent)
    , m_simulator(simulator)
    , m_framing(framing)
    , m_address(address)
    , m_line(std::move(line))
    , m_replies(framing)
    , m_requests(framing)
    , m_notifier(m_line.number(), QSocketNotifier::Read)
{
    m_idle.start();
    m_silence.setSingleShot(true);
    m_silence.setInterval(silenceMs);
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] { readInput(); });
    connect(&m_silence, &QTimer::timeout, this, [this] {
        if (const auto request = m_requests.silence())
            answer(*request);
    });
}

// One piece a call, so that a peer that sends without end leaves the others their turns.
void ModbusLink::readInput()
{
    char buffer[512];
    const auto count = read(m_line.number(), buffer, sizeof buffer);
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0)
        return end();
    m_requests.append(buffer, int(count));
    while (const auto request = m_requests.next())
        answer(*request);
    if (m_requests.isBroken())
        return end();
    if (m_framing == Framing::Rtu && m_requests.pending())
        m_silence.start();
    else
        m_silence.stop();
}

// A terminal stays: it is never hung up, since the server holds its other end.
void ModbusLink::end()
{
    if (m_framing == Framing::Rtu || !m_notifier.isEnabled())
        return;
    m_notifier.setEnabled(false);
    emit closed();
}

bool ModbusLink::isOurs(int unit) const
{
    if (m_framing == Framing::Rtu)
        return unit == m_address || unit == broadcastUnit;
    return unit == m_address
        || std::find(std::begin(peerUnits), std::end(peerUnits), unit) != std::end(peerUnits);
}

void ModbusLink::answer(QByteArray request)
{
    const modbus::Adu adu(m_framing, reinterpret_cast<const quint8 *>(request.constData()),
                          request.size());
    m_idle.restart();
    if (!isOurs(adu.unit()))
        return;
    const Disturbance disturbance = m_simulator.faults().next();
    if (disturbance.fault == Fault::Silent)
        return;

    int exception = disturbance.parameter;
    if (disturbance.fault != Fault::Exception)
        exception = m_simulator.registers().handle(RegisterRequest::fromAdu(adu));
    if (m_framing == Framing::Rtu && adu.unit() == broadcastUnit)
        return;                           // carried out, never answered
    if (disturbance.fault == Fault::Unit) // libmodbus repeats the unit in its reply
        request[modbus::layoutOf(m_framing).unit] = char(foreignUnit);
    const QByteArray reply = m_replies.reply(request, exception, m_simulator.registers().mapping());
    const QByteArray bytes = disturbed(reply, disturbance.fault, m_framing);
    const int delay = disturbance.fault == Fault::Late ? disturbance.parameter : 0;
    if (delay == 0)
        return send(bytes);
    QTimer::singleShot(delay, this, [this, bytes] { send(bytes); });
}

// Nobody takes the reply: it is lost, as on a real line. On TCP part of it may be on its way, and
// what came after would not be understood.
void ModbusLink::send(const QByteArray &bytes)
{
    int sent = 0;
    while (sent < bytes.size()) {
        const char *const rest = bytes.constData() + sent;
        const auto size = size_t(bytes.size() - sent);
        const auto count = m_framing == Framing::Tcp
            ? ::send(m_line.number(), rest, size, MSG_NOSIGNAL)
            : write(m_line.number(), rest, size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return end();
        sent += int(count);
    }
}

} // namespace upssim
