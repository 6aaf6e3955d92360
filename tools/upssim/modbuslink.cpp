#include "modbuslink.h"

#include "simulator.h"

#include <QTimer>

#include <array>
#include <cerrno>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int byteTimeout = 100'000; // us within a request
constexpr quint8 foreignUnit = 0xF7;

} // namespace

Descriptor::~Descriptor()
{
    if (valid())
        close(m_number);
}

Descriptor::Descriptor(Descriptor &&other) noexcept
    : m_number(std::exchange(other.m_number, -1))
{
}

Descriptor &Descriptor::operator=(Descriptor &&other) noexcept
{
    std::swap(m_number, other.m_number);
    return *this;
}

ModbusLink::ModbusLink(Simulator &simulator, Framing framing, ModbusContext context,
                       Descriptor line, int address, QObject *parent)
    : QObject(parent)
    , m_simulator(simulator)
    , m_framing(framing)
    , m_address(address)
    , m_line(std::move(line))
    , m_context(std::move(context))
    , m_notifier(m_line.number(), QSocketNotifier::Read)
{
    int pair[2] = { -1, -1 };
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, pair) == 0) {
        m_replyIn = Descriptor(pair[0]);
        m_replyOut = Descriptor(pair[1]);
    } else {
        qWarning("No pair of sockets: the link stays silent");
    }
    modbus_set_slave(m_context.get(), address);
    modbus_set_socket(m_context.get(), m_line.number());
    modbus_set_byte_timeout(m_context.get(), 0, byteTimeout);
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] { readRequest(); });
}

void ModbusLink::readRequest()
{
    std::array<quint8, MODBUS_MAX_ADU_LENGTH> buffer {};
    const int length = modbus_receive(m_context.get(), buffer.data());
    if (length > 0)
        return answer(QByteArray(reinterpret_cast<const char *>(buffer.data()), length));
    // A connection cannot be resynchronised once a frame is broken; a serial line can.
    if (length < 0 && m_framing == Framing::Tcp) {
        m_notifier.setEnabled(false);
        emit closed();
    }
}

void ModbusLink::answer(QByteArray request)
{
    const int header = modbus_get_header_length(m_context.get());
    const int unit = quint8(request.at(header - 1));
    const bool broadcast = m_framing == Framing::Rtu && unit == MODBUS_BROADCAST_ADDRESS;
    // On TCP libmodbus takes every unit for its own.
    if (unit != m_address && !broadcast)
        return;
    const Disturbance disturbance = m_simulator.faults().next();
    if (disturbance.fault == Fault::Silent)
        return;

    int exception = disturbance.parameter;
    if (disturbance.fault != Fault::Exception) {
        const auto pdu = reinterpret_cast<const quint8 *>(request.constData()) + header;
        exception = m_simulator.registers().handle(RegisterRequest::fromPdu(pdu));
    }
    if (disturbance.fault == Fault::Unit)
        request[header - 1] = char(foreignUnit); // which libmodbus repeats in its reply
    const QByteArray bytes = disturbed(reply(request, exception), disturbance.fault, m_framing);
    const int delay = disturbance.fault == Fault::Late ? disturbance.parameter : 0;
    if (delay == 0)
        return send(bytes);
    QTimer::singleShot(delay, this, [this, bytes] { send(bytes); });
}

// What libmodbus answers.
QByteArray ModbusLink::reply(const QByteArray &request, int exception)
{
    const auto bytes = reinterpret_cast<const quint8 *>(request.constData());
    modbus_set_socket(m_context.get(), m_replyIn.number());
    if (exception != 0)
        modbus_reply_exception(m_context.get(), bytes, unsigned(exception));
    else
        modbus_reply(m_context.get(), bytes, request.size(), m_simulator.registers().mapping());
    modbus_set_socket(m_context.get(), m_line.number());

    std::array<char, MODBUS_MAX_ADU_LENGTH> buffer;
    const auto count = read(m_replyOut.number(), buffer.data(), buffer.size());
    return count > 0 ? QByteArray(buffer.data(), int(count)) : QByteArray();
}

void ModbusLink::send(const QByteArray &bytes)
{
    int sent = 0;
    while (sent < bytes.size()) {
        const auto count = m_framing == Framing::Tcp
            ? ::send(m_line.number(), bytes.constData() + sent, size_t(bytes.size() - sent),
                     MSG_NOSIGNAL | MSG_DONTWAIT)
            : ::write(m_line.number(), bytes.constData() + sent, size_t(bytes.size() - sent));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return; // nobody takes the reply: it is lost, as on a real line
        sent += int(count);
    }
}
