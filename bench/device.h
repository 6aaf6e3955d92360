#pragma once

#include <QByteArray>
#include <QString>

#include <thread>

/** The request every contender sends: 125 holding registers of unit 1, as RTU frame. */
QByteArray rtuRequest();

/** The reply to it, 255 bytes. */
QByteArray rtuReply();

/** The same pair as Modbus TCP frames, 12 and 259 bytes. */
QByteArray tcpRequest();
QByteArray tcpReply();

/** A simulated device on a pseudo-terminal: answers every 8 bytes with rtuReply(). */
class PtyDevice
{
public:
    PtyDevice();
    ~PtyDevice();
    PtyDevice(const PtyDevice &) = delete;
    PtyDevice &operator=(const PtyDevice &) = delete;

    QString path() const { return m_path; }

private:
    int m_master = -1;
    int m_slave = -1; // held open, or the master sees hang-ups between contenders
    QString m_path;
    std::thread m_thread;
};

/** A simulated device on loopback TCP: answers every 12 bytes of a connection with tcpReply(),
 *  its transaction id that of the request. */
class TcpDevice
{
public:
    TcpDevice();
    ~TcpDevice();
    TcpDevice(const TcpDevice &) = delete;
    TcpDevice &operator=(const TcpDevice &) = delete;

    quint16 port() const { return m_port; }

private:
    int m_listener = -1;
    quint16 m_port = 0;
    std::thread m_thread;
};
