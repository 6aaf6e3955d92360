#include "modbusserver.h"

#include <cerrno>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int registerCount = 1000;
constexpr int lookInterval = 20; // ms between looks at the stop flag

modbus_mapping_t *makeRegisters()
{
    modbus_mapping_t *mapping = modbus_mapping_new(0, 0, registerCount, 0);
    for (int i = 0; i < registerCount; ++i)
        mapping->tab_registers[i] = quint16(3 * i);
    return mapping;
}

bool hasInput(int descriptor)
{
    pollfd watched = { descriptor, POLLIN, 0 };
    return poll(&watched, 1, lookInterval) == 1;
}

} // namespace

ModbusServer::ModbusServer()
    : m_context(modbus_new_tcp("127.0.0.1", 0), modbus_free)
    , m_registers(makeRegisters(), modbus_mapping_free)
    , m_listener(modbus_tcp_listen(m_context.get(), 1))
{
    sockaddr_in address = {};
    socklen_t length = sizeof address;
    if (getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &length) != 0)
        qFatal("the Modbus server does not listen");
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { acceptAll(); });
}

ModbusServer::ModbusServer(int line)
    : m_context(modbus_new_rtu("unused", 9600, 'N', 8, 1), modbus_free)
    , m_registers(makeRegisters(), modbus_mapping_free)
{
    m_thread = std::thread([this, line] { serve(line); });
}

ModbusServer::~ModbusServer()
{
    m_stop = true;
    m_thread.join();
    if (m_listener >= 0)
        close(m_listener);
}

void ModbusServer::acceptAll()
{
    while (!m_stop) {
        if (!hasInput(m_listener))
            continue;
        const int line = accept(m_listener, nullptr, nullptr);
        serve(line);
        close(line);
    }
}

void ModbusServer::serve(int line)
{
    modbus_set_slave(m_context.get(), 1);
    modbus_set_socket(m_context.get(), line);
    quint8 request[MODBUS_MAX_ADU_LENGTH];
    while (!m_stop) {
        if (!hasInput(line))
            continue;
        const int length = modbus_receive(m_context.get(), request);
        if (length > 0)
            modbus_reply(m_context.get(), request, length, m_registers.get());
        else if (length < 0 && (errno == ECONNRESET || errno == EBADF || errno == EIO))
            return;
    }
}
