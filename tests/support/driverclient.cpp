#include "driverclient.h"

#include "modbus/commio.h"
#include "upssimprocess.h"

#include <QLibrary>

namespace {
constexpr int patience = 20'000; // ms; a busy machine takes its time
}

std::atomic<int> DriverClient::requests { 0 };

Driver loadDriver()
{
    QLibrary library(QStringLiteral("libkx300_g4_6-20k"));
    if (!library.load())
        return {};
    return { reinterpret_cast<QueryFunction>(library.resolve("Query")),
             reinterpret_cast<ControlFunction>(library.resolve("Control")),
             reinterpret_cast<IoFunction>(library.resolve("TcpCommRead")) };
}

bool DriverClient::open(const UpsSimProcess &simulator, bool tcp)
{
    if (tcp) {
        m_socket.connectToHost(QStringLiteral("127.0.0.1"), simulator.tcpPort());
        m_port = { &m_socket, m_driver.tcpRead, write<TcpCommWrite> };
        return m_socket.waitForConnected(patience);
    }
    m_port = { &m_serial, CommRead, write<CommWrite> };
    return m_serial.CommOpen(simulator.terminalName(), QStringLiteral("9600,n,8,1"), 500);
}

int DriverClient::query()
{
    m_points.clear();
    return m_driver.query(&m_port, m_address, store, &m_points);
}

int DriverClient::control(const char *text)
{
    char command[50] = {};
    qstrncpy(command, text, sizeof command);
    return m_driver.control(&m_port, m_address, command, nullptr);
}

QString DriverClient::text(int id, int length) const
{
    QString result;
    for (int i = 0; i < length && m_points.value(id + i) > 0; ++i)
        result += QChar(ushort(m_points.value(id + i)));
    return result;
}

template <IoFunction function> int DriverClient::write(void *handle, char *buffer, int length)
{
    ++requests;
    return function(handle, buffer, length);
}

void DriverClient::store(int id, float value, void *context)
{
    static_cast<QMap<int, float> *>(context)->insert(id, value);
}
