// What drivers read and write with, against Modbus devices and odd peers on real sockets.

#include "comm/commio.h"
#include "comm/driverapi.h"
#include "comm/modbusframe.h"
#include "comm/portlock.h"
#include "comm/portmanage.h"
#include "comm/tcpconnect.h"
#include "modbusserver.h"
#include "ptypair.h"
#include "warningguard.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <functional>
#include <list>
#include <sys/socket.h>
#include <thread>

using namespace std::chrono_literals;

Q_DECLARE_METATYPE(std::function<void()>)

namespace {

const QString loopback = QStringLiteral("127.0.0.1");
const QString plain = QStringLiteral("9600,n,8,1");

unsigned char *bytesOf(char *buffer)
{
    return reinterpret_cast<unsigned char *>(buffer);
}

/** Both ends of a connection. */
struct Connection
{
    Connection()
    {
        ok = server.listen(QHostAddress::LocalHost)
            && connectToPeer(near, loopback, server.serverPort(), 5s)
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

// Reads `count` registers as a driver does, in as many pieces as the line delivers.
bool readRegisters(PortDescriptor &port, int address, int count)
{
    char frame[1000] = {};
    const int length = buildCmd(bytesOf(frame), 1, 3, address, count);
    if (port.write(&port, frame, 8) != 8)
        return false;
    int got = 0;
    for (int part = 1; got < length && part > 0; got += qMax(0, part))
        part = port.read(&port, frame + got, int(sizeof frame) - got);
    if (got != length || checkModbufCRC(bytesOf(frame), got) != 0)
        return false;
    return UINT8_2_to_UINT16(bytesOf(frame) + 3) == 3 * address;
}

} // namespace

class tst_CommIo : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_guard = std::make_unique<WarningGuard>(); }
    void cleanup();
    void serialDevice();
    void tcpDevice();
    void tcpReplies_data();
    void tcpReplies();
    void tcpRequests_data();
    void tcpRequests();
    void refusals();
    void lostPeer();
    void noPeer_data();
    void noPeer();
    void stopEndsWaiting_data();
    void stopEndsWaiting();

private:
    std::unique_ptr<WarningGuard> m_guard;
};

void tst_CommIo::cleanup()
{
    QCOMPARE(m_guard->unexpected(), QStringList());
    m_guard.reset();
}

void tst_CommIo::serialDevice()
{
    PtyPair line;
    const ModbusServer device(line.master());
    SerialPort port;
    QVERIFY(port.CommOpen(line.name(), plain, 2000));
    PortDescriptor handle { &port, CommRead, CommWrite };
    for (const int count : { 1, 20, 125 })
        QVERIFY(readRegisters(handle, 100, count));
    CommClose();
    QVERIFY(port.isOpen());
    QCOMPARE(CommOpen(), 0);
}

void tst_CommIo::tcpDevice()
{
    const ModbusServer device;
    QTcpSocket socket;
    QVERIFY(connectToPeer(socket, QStringLiteral("localhost"), device.port(), 10s));
    PortDescriptor handle { &socket, TcpCommRead, TcpCommWrite };
    for (const int count : { 1, 20, 125 })
        QVERIFY(readRegisters(handle, 100, count));
}

void tst_CommIo::tcpReplies_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QByteArray>("frame"); // without CRC; none when the read fails
    QTest::newRow("registers") << QByteArray::fromHex("00010000000701030400 0a0014")
                               << QByteArray::fromHex("010304000a0014");
    QTest::newRow("mere header") << QByteArray::fromHex("000100000000") << QByteArray();
    QTest::newRow("silence") << QByteArray() << QByteArray();
    QTest::newRow("one byte") << QByteArray("\x01") << QByteArray();
    QTest::newRow("unit only") << QByteArray(7, 'u') << QByteArray("u");
    QTest::newRow("longest") << QByteArray(1000, 'x') << QByteArray(994, 'x');
    QTest::newRow("too long") << QByteArray(1020, 'y') << QByteArray(994, 'y');
}

void tst_CommIo::tcpReplies()
{
    QFETCH(QByteArray, reply);
    QFETCH(QByteArray, frame);
    Connection connection;
    QVERIFY(connection.ok);
    connection.near.setReadBufferSize(1024);
    connection.far->write(reply);
    QCOMPARE(connection.far->flush(), !reply.isEmpty());
    QByteArray out(1100, 'z');
    QElapsedTimer clock;
    clock.start();
    const int length = TcpCommRead(&connection.handle, out.data(), 0);
    QCOMPARE(clock.elapsed() >= 990, reply.isEmpty());
    QCOMPARE(length, frame.isEmpty() ? -5 : frame.size() + 2);
    QCOMPARE(out.left(frame.size()), frame);
    const int used = qMax(0, length);
    QCOMPARE(out.mid(used), QByteArray(out.size() - used, 'z'));
    if (length >= 4)
        QCOMPARE(checkModbufCRC(bytesOf(out.data()), length), 0);
}

void tst_CommIo::tcpRequests_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("length");
    QTest::addColumn<QByteArray>("sent");
    const QByteArray request = QByteArray::fromHex("01030000000ac5cd");
    QTest::newRow("request") << request << 8 << QByteArray::fromHex("00000000000601030000000a");
    QTest::newRow("CRC only") << request << 2 << QByteArray(6, '\0');
    QTest::newRow("less than a CRC") << request << 1 << QByteArray::fromHex("0000000000ff");
    QTest::newRow("longest") << QByteArray(996, 'l') << 996
                             << QByteArray::fromHex("0000000000e2") + QByteArray(994, 'l');
}

void tst_CommIo::tcpRequests()
{
    QFETCH(QByteArray, frame);
    QFETCH(int, length);
    QFETCH(QByteArray, sent);
    Connection connection;
    QVERIFY(connection.ok);
    QCOMPARE(TcpCommWrite(&connection.handle, frame.data(), length), length);
    // Without an event loop in between: it has really left.
    QByteArray arrived;
    while (arrived.size() < sent.size() && connection.far->waitForReadyRead(2000))
        arrived += connection.far->readAll();
    QCOMPARE(arrived, sent);
}

void tst_CommIo::refusals()
{
    Connection connection;
    SerialPort closed;
    QTcpSocket unconnected;
    char frame[8] = {};
    PortDescriptor none {};
    for (PortDescriptor *handle : { static_cast<PortDescriptor *>(nullptr), &none })
        QCOMPARE(CommRead(handle, frame, 8) + CommWrite(handle, frame, 8)
                     + TcpCommRead(handle, frame, 8) + TcpCommWrite(handle, frame, 8),
                 -8);
    for (void *device : { static_cast<void *>(&closed), static_cast<void *>(&unconnected) }) {
        PortDescriptor handle { device, nullptr, nullptr };
        QCOMPARE(CommRead(&handle, frame, 8) + CommWrite(&handle, frame, 8)
                     + TcpCommRead(&handle, frame, 8) + TcpCommWrite(&handle, frame, 8),
                 -8);
    }
    QCOMPARE(CommRead(&connection.handle, nullptr, 8) + CommWrite(&connection.handle, nullptr, 8)
                 + TcpCommRead(&connection.handle, nullptr, 8)
                 + TcpCommWrite(&connection.handle, nullptr, 8),
             -8);
    for (const int length : { 997, INT_MAX, -1, INT_MIN })
        QCOMPARE(TcpCommWrite(&connection.handle, frame, length), -1);
    QCOMPARE(CommRead(&connection.handle, frame, -1) + CommWrite(&connection.handle, frame, -1),
             -2);
}

void tst_CommIo::lostPeer()
{
    Connection connection;
    QVERIFY(connection.ok);
    char frame[1000] = {};
    delete connection.far;
    QCOMPARE(TcpCommRead(&connection.handle, frame, 0), -5);
    QCOMPARE(TcpCommWrite(&connection.handle, frame, 8), -1);
    QCOMPARE(connection.near.state(), QAbstractSocket::UnconnectedState);
    // The same socket serves again.
    QVERIFY(connectToPeer(connection.near, loopback, connection.server.serverPort(), 5s));
    QCOMPARE(TcpCommWrite(&connection.handle, frame, 8), 8);
}

void tst_CommIo::noPeer_data()
{
    QTest::addColumn<QString>("host");
    QTest::newRow("nobody listens") << loopback;
    QTest::newRow("no such name") << QStringLiteral("no.such.host.invalid");
    QTest::newRow("no name") << QString();
    QTest::newRow("no address") << QStringLiteral("300.1.1.1 ;");
}

void tst_CommIo::noPeer()
{
    QFETCH(QString, host);
    QTcpSocket socket;
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!connectToPeer(socket, host, 1, 2s));
    QVERIFY(clock.elapsed() < 4000);
    QCOMPARE(socket.state(), QAbstractSocket::UnconnectedState);
    QVERIFY(m_guard->messages().constLast().startsWith(
        QStringLiteral("connectToPeer: no connection to %1 port 1: ").arg(host)));
}

void tst_CommIo::stopEndsWaiting_data()
{
    QTest::addColumn<std::function<void()>>("wait");
    using Wait = std::function<void()>;
    QTest::newRow("serial read") << Wait([] {
        PtyPair line;
        SerialPort port;
        QVERIFY(port.CommOpen(line.name(), plain, 20'000));
        char byte = 0;
        QCOMPARE(port.readData(&byte, 1), -1);
    });
    QTest::newRow("serial write") << Wait([] {
        PtyPair line;
        SerialPort port;
        QVERIFY(port.CommOpen(line.name(), plain, 20'000));
        const QByteArray flood(1'000'000, 'f'); // nobody reads it
        const qint64 written = port.writeData(flood.constData(), flood.size());
        QVERIFY(written > 0 && written < flood.size());
    });
    QTest::newRow("port lock") << Wait([] {
        SerialPort port;
        port.Lock();
        QVERIFY(!PortLock(port));
        port.UnLock();
    });
    QTest::newRow("busy port of the manager") << Wait([] {
        PtyPair line;
        PortManage manager;
        SerialPort *port = manager.getPortHandle(line.name());
        port->Lock();
        QVERIFY(!manager.getPortHandle(line.name()));
        port->UnLock();
    });
    QTest::newRow("TCP read") << Wait([] {
        Connection connection;
        char frame[1000];
        while (!StopSource::currentRequested())
            QCOMPARE(TcpCommRead(&connection.handle, frame, 0), -5);
    });
    QTest::newRow("connect") << Wait([] {
        // With its queue full, the listener lets further connections wait for ever.
        QTcpServer server;
        server.setMaxPendingConnections(1);
        QVERIFY(server.listen(QHostAddress::LocalHost));
        ::listen(int(server.socketDescriptor()), 0);
        std::list<QTcpSocket> sockets;
        do {
            sockets.emplace_back();
        } while (connectToPeer(sockets.back(), loopback, server.serverPort(), 20s));
        QVERIFY(StopSource::currentRequested());
    });
}

void tst_CommIo::stopEndsWaiting()
{
    QFETCH(std::function<void()>, wait);
    StopSource source;
    const StopSource::Scope scope(source);
    std::thread stopper([&source] {
        StopSource::waitFor(-1, 0, 300ms);
        source.request();
    });
    QElapsedTimer clock;
    clock.start();
    wait();
    const qint64 elapsed = clock.elapsed();
    stopper.join();
    QVERIFY(elapsed >= 250);
    QVERIFY2(elapsed < 1000, qPrintable(QString::number(elapsed)));
}

QTEST_GUILESS_MAIN(tst_CommIo)
#include "tst_commio.moc"
