#pragma once

#include "modbus/commio.h"
#include "modbus/driverapi.h"
#include "tcpconnect.h"

#include <QTcpServer>
#include <QTcpSocket>

/** Both ends of a connection. */
struct Connection
{
    Connection()
    {
        ok = server.listen(QHostAddress::LocalHost)
            && connectToPeer(near, QStringLiteral("127.0.0.1"), server.serverPort(),
                             std::chrono::seconds(5))
            && server.waitForNewConnection(5000);
        far = server.nextPendingConnection();
        handle = { &near, TcpCommRead, TcpCommWrite };
    }

    QTcpServer server;
    QTcpSocket near;
    QTcpSocket *far = nullptr; // the server's
    PortDescriptor handle;
    bool ok = false;
};
