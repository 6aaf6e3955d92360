#pragma once

#include "serial/serialport.h"

#include <mutex>

/**
 * Holds a port's lock while it lives, unless the calling thread was asked to stop while waiting.
 *
 * Use: `const PortLock lock(port); if (!lock) return ...;`
 */
class PortLock
{
public:
    explicit PortLock(SerialPort &port)
        : m_port(port.lockWithin(LineQueue::Patience::UntilStopped) ? &port : nullptr)
    {
    }
    /** Takes over a lock that the calling thread holds already. */
    PortLock(SerialPort &port, std::adopt_lock_t)
        : m_port(&port)
    {
    }
    ~PortLock()
    {
        if (m_port)
            m_port->UnLock();
    }
    PortLock(const PortLock &) = delete;
    PortLock &operator=(const PortLock &) = delete;

    /** False when the wait was broken off. */
    explicit operator bool() const { return m_port != nullptr; }

private:
    SerialPort *m_port;
};
