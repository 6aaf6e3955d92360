#pragma once

#include <atomic>
#include <memory>
#include <modbus/modbus.h>
#include <QtGlobal>
#include <thread>

/**
 * A Modbus device on libmodbus: 1000 holding registers that hold three times their address.
 *
 * Serves unit 1 in a thread of its own, one connection after the other, until it is destroyed.
 */
class ModbusServer
{
public:
    /** Serves Modbus TCP on a free port of the loopback interface. */
    ModbusServer();
    /** Serves Modbus RTU on an open line, which stays the caller's. */
    explicit ModbusServer(int line);
    ~ModbusServer();

    quint16 port() const { return m_port; }

private:
    using Context = std::unique_ptr<modbus_t, decltype(&modbus_free)>;

    void acceptAll();
    void serve(int line);

    Context m_context;
    std::unique_ptr<modbus_mapping_t, decltype(&modbus_mapping_free)> m_registers;
    std::atomic<bool> m_stop { false };
    int m_listener = -1; // owned
    quint16 m_port = 0;
    std::thread m_thread;
};
