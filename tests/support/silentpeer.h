#pragma once

#include <QTcpServer>
#include <QTcpSocket>

#include <sys/socket.h>

/** A TCP port that drops what asks for a connection: its queue is full. */
class SilentPeer
{
public:
    SilentPeer()
    {
        m_listener.listen(QHostAddress::LocalHost);
        m_listener.pauseAccepting();
        ::listen(int(m_listener.socketDescriptor()), 0);
        for (QTcpSocket &filler : m_fillers)
            filler.connectToHost(QHostAddress(QHostAddress::LocalHost), port());
    }
    quint16 port() const { return m_listener.serverPort(); }

private:
    QTcpServer m_listener;
    QTcpSocket m_fillers[4];
};
