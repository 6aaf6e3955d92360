#pragma once

#include "modbus/driverapi.h"
#include "serial/serialport.h"

#include <QMap>
#include <QTcpSocket>

#include <atomic>

class UpsSimProcess;

/** The driver's two functions, and the function by which it knows TCP: its own view of it, since
 *  a test that links the port functions has copies of its own. */
struct Driver
{
    QueryFunction query = nullptr;
    ControlFunction control = nullptr;
    IoFunction tcpRead = nullptr;
};

/** Loads the sample driver as the client does; all null when that fails. It stays loaded. */
Driver loadDriver();

constexpr int longestQuery = 9000; // ms; the driver's own limit and some air

/** What a client has: an open port, and the address of its device. */
class DriverClient
{
public:
    bool open(const UpsSimProcess &simulator, bool tcp);
    void setAddress(int address) { m_address = address; }

    int query();
    int control(const char *text);

    /** A value of a new query; not a number when it failed or left the point out. */
    float value(int id) { return query() ? m_points.value(id, qQNaN()) : float(qQNaN()); }
    const QMap<int, float> &points() const { return m_points; }
    QString text(int id, int length) const;

    static std::atomic<int> requests; ///< of all clients

private:
    template <IoFunction function> static int write(void *handle, char *buffer, int length);
    static void store(int id, float value, void *context);

    const Driver m_driver = loadDriver();
    SerialPort m_serial;
    QTcpSocket m_socket;
    PortDescriptor m_port {};
    int m_address = 1;
    QMap<int, float> m_points;
};
