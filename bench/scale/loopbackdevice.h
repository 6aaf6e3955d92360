#pragma once

#include <QtGlobal>

#include <sys/types.h>

/**
 * Simulated devices on one loopback port: any number of connections, each request answered at once.
 *
 * In a process of its own, so that what it takes is not counted with what is measured. Register
 * values move with each request, as a device's do.
 */
class LoopbackDevice
{
public:
    LoopbackDevice();
    ~LoopbackDevice();
    LoopbackDevice(const LoopbackDevice &) = delete;
    LoopbackDevice &operator=(const LoopbackDevice &) = delete;

    quint16 port() const { return m_port; }

private:
    pid_t m_process = -1;
    quint16 m_port = 0;
};
