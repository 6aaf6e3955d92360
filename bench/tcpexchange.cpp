// One Modbus TCP exchange over loopback: 12 bytes out, 259 bytes back.

#include "device.h"
#include "rows.h"

#include "modbus/commio.h"
#include "modbus/driverapi.h"

#include <QEventLoop>
#include <QModbusReply>
#include <QModbusTcpClient>
#include <QTcpSocket>
#include <QVariant>

#include <arpa/inet.h>
#include <modbus/modbus.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int exchanges = 20; // a round
constexpr int replySize = 259;

class RawSocket
{
public:
    explicit RawSocket(quint16 port)
        : m_descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address {};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (connect(m_descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
            qFatal("bench: raw connect");
    }
    ~RawSocket() { close(m_descriptor); }
    RawSocket(const RawSocket &) = delete;
    RawSocket &operator=(const RawSocket &) = delete;

    void exchange()
    {
        char buffer[512];
        send(m_descriptor, request.constData(), size_t(request.size()), 0);
        for (int got = 0; got < replySize;) {
            const auto n = recv(m_descriptor, buffer + got, sizeof buffer - size_t(got), 0);
            if (n <= 0)
                qFatal("bench: raw receive");
            got += int(n);
        }
    }

private:
    const QByteArray request = tcpRequest();
    int m_descriptor;
};

class OurSocket
{
public:
    explicit OurSocket(quint16 port)
    {
        m_socket.setReadBufferSize(1024);
        m_socket.connectToHost(QStringLiteral("127.0.0.1"), port);
        if (!m_socket.waitForConnected(1000))
            qFatal("bench: connect");
    }

    void exchange()
    {
        char buffer[1000];
        TcpCommWrite(&m_descriptor, request.data(), request.size());
        if (TcpCommRead(&m_descriptor, buffer, sizeof buffer) != 255)
            qFatal("bench: TcpCommRead");
    }

private:
    QByteArray request = rtuRequest();
    QTcpSocket m_socket;
    PortDescriptor m_descriptor { &m_socket, TcpCommRead, TcpCommWrite };
};

class QtSocket
{
public:
    explicit QtSocket(quint16 port)
    {
        m_socket.connectToHost(QStringLiteral("127.0.0.1"), port);
        if (!m_socket.waitForConnected(1000))
            qFatal("bench: QTcpSocket connect");
    }

    void exchange()
    {
        m_socket.write(request);
        for (int got = 0; got < replySize; got += m_socket.readAll().size()) {
            if (!m_socket.bytesAvailable() && !m_socket.waitForReadyRead(1000))
                qFatal("bench: QTcpSocket read");
        }
    }

private:
    const QByteArray request = tcpRequest();
    QTcpSocket m_socket;
};

class LibmodbusTcp
{
public:
    explicit LibmodbusTcp(quint16 port)
        : m_context(modbus_new_tcp("127.0.0.1", port))
    {
        if (modbus_connect(m_context) != 0)
            qFatal("bench: libmodbus connect");
        modbus_set_slave(m_context, 1);
    }
    ~LibmodbusTcp()
    {
        modbus_close(m_context);
        modbus_free(m_context);
    }
    LibmodbusTcp(const LibmodbusTcp &) = delete;
    LibmodbusTcp &operator=(const LibmodbusTcp &) = delete;

    void exchange()
    {
        uint16_t values[125];
        if (modbus_read_registers(m_context, 0, 125, values) != 125)
            qFatal("bench: libmodbus read: %s", modbus_strerror(errno));
    }

private:
    modbus_t *m_context;
};

class QtModbusTcp
{
public:
    explicit QtModbusTcp(quint16 port)
    {
        m_client.setConnectionParameter(QModbusDevice::NetworkAddressParameter, "127.0.0.1");
        m_client.setConnectionParameter(QModbusDevice::NetworkPortParameter, port);
        QEventLoop loop;
        QObject::connect(&m_client, &QModbusDevice::stateChanged, &loop,
                         [&](QModbusDevice::State state) {
                             if (state == QModbusDevice::ConnectedState)
                                 loop.quit();
                         });
        m_client.connectDevice();
        loop.exec();
    }

    void exchange()
    {
        QEventLoop loop;
        QModbusReply *reply =
            m_client.sendReadRequest({ QModbusDataUnit::HoldingRegisters, 0, 125 }, 1);
        QObject::connect(reply, &QModbusReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        if (reply->error() != QModbusDevice::NoError)
            qFatal("bench: QModbusTcpClient: %s", qPrintable(reply->errorString()));
        delete reply;
    }

private:
    QModbusTcpClient m_client;
};

template <typename Party> std::function<void()> round(Party &party)
{
    return [&party] {
        for (int i = 0; i < exchanges; ++i)
            party.exchange();
    };
}

} // namespace

void benchTcpExchange(Runner &runner)
{
    pinToOneProcessor();
    TcpDevice rawDevice, ourDevice, socketDevice, modbusDevice, clientDevice;
    RawSocket raw(rawDevice.port());
    OurSocket ours(ourDevice.port());
    QtSocket socket(socketDevice.port());
    LibmodbusTcp modbus(modbusDevice.port());
    QtModbusTcp client(clientDevice.port());
    Row row { QStringLiteral("TCP exchange over loopback, 12 bytes out, 259 back"),
              { { QStringLiteral("raw send/recv"), Role::Limit, exchanges, round(raw) },
                { QStringLiteral("TcpCommRead/TcpCommWrite"), Role::Ours, exchanges, round(ours) },
                { QStringLiteral("QTcpSocket"), Role::Other, exchanges, round(socket) },
                { QStringLiteral("libmodbus"), Role::Peer, exchanges, round(modbus) },
                { QStringLiteral("QModbusTcpClient"), Role::Other, exchanges, round(client) } } };
    row.clock = Clock::Wall;
    row.toLimit = 1.4;
    row.toPeer = 1.1;
    runner.run(row);
    unpin();
}
