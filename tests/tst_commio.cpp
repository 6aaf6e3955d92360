// What drivers read and write with, against Modbus devices and odd peers on real sockets.

#include "comm/commio.h"
#include "comm/modbusframe.h"
#include "comm/portlock.h"
#include "comm/portmanage.h"
#include "comm/tcpconnect.h"
#include "guardedtest.h"
#include "modbusserver.h"
#include "ptypair.h"
#include "registerread.h"
#include "silentpeer.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <dlfcn.h>
#include <functional>
#include <netdb.h>
#include <sys/socket.h>
#include <thread>

using namespace std::chrono_literals;

static std::atomic<int> lookUps { 0 }; // of "slow.test"
static QSemaphore answers;             // to them

// Knows names that stand for two addresses.
extern "C" int getaddrinfo(const char *host, const char *service, const addrinfo *hints,
                           addrinfo **list)
{
    static const auto real =
        reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    if (!QByteArray(host).endsWith(".test") || hints->ai_flags & AI_NUMERICHOST)
        return real(host, service, hints, list);
    if (host[0] == 's') {
        ++lookUps;
        answers.acquire();
    }
    return real("127.0.0.1", service, hints, list)
        || real("127.0.0.2", service, hints, &(*list)->ai_next);
}

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

} // namespace

class tst_CommIo : public GuardedTest
{
    Q_OBJECT

private slots:
    void devices()
    {
        PtyPair line;
        const ModbusServer serialDevice(line.master());
        const ModbusServer tcpDevice;
        SerialPort port;
        QVERIFY(port.CommOpen(line.name(), plain, 2000));
        QTcpSocket socket;
        QVERIFY(connectToPeer(socket, QStringLiteral("device.test"), tcpDevice.port(), 10s));
        PortDescriptor handles[] = { { &port, CommRead, CommWrite },
                                     { &socket, TcpCommRead, TcpCommWrite } };
        for (PortDescriptor &handle : handles) {
            for (const int count : { 1, 20, 125 })
                QVERIFY(readRegisters(handle, 100, count));
        }
        CommClose();
        QVERIFY(port.isOpen() && CommOpen() == 0);
    }

    void tcpReplies()
    {
        const struct
        {
            QByteArray reply;
            QByteArray frame; // without CRC; none when the read fails
            bool waits = false;
        } rows[] = {
            { QByteArray::fromHex("000100000007010304000a0014"),
              QByteArray::fromHex("010304000a0014") },
            { {}, {}, true },  // silence
            { "1", {}, true }, // a fragment
            { QByteArray::fromHex("0001000000070103"), "\1\3", true },
            { QByteArray::fromHex("000100000000"), {} },     // a mere header
            { QByteArray(7, 'u'), "u" },                     // a unit alone
            { QByteArray(1000, 'x'), QByteArray(994, 'x') }, // the longest
            { QByteArray(1020, 'y'), QByteArray(994, 'y') }, // more than that
        };
        for (const auto &row : rows) {
            Connection connection;
            QVERIFY(connection.ok);
            connection.near.setReadBufferSize(1024);
            connection.far->write(row.reply);
            connection.far->flush();
            QByteArray out(1100, 'z');
            Stopwatch clock;
            const int length = TcpCommRead(&connection.handle, out.data(), 0);
            QCOMPARE(clock.elapsed() >= 990, row.waits);
            QCOMPARE(length, row.frame.isEmpty() ? -5 : row.frame.size() + 2);
            QVERIFY(out.startsWith(row.frame));
            QVERIFY(out.endsWith(QByteArray(out.size() - qMax(0, length), 'z')));
            QCOMPARE(checkModbufCRC(bytesOf(out.data()), length), length >= 4 ? 0 : -1);
        }
    }

    void tcpReplyInPieces()
    {
        Connection connection;
        QVERIFY(connection.ok);
        const QByteArray reply = QByteArray::fromHex("000100000007010304000a0014");
        std::thread peer([&] {
            for (const char byte : reply) {
                std::this_thread::sleep_for(5ms);
                send(int(connection.far->socketDescriptor()), &byte, 1, MSG_NOSIGNAL);
            }
        });
        QByteArray out(1000, '\0');
        const int length = TcpCommRead(&connection.handle, out.data(), 0);
        peer.join();
        QCOMPARE(length, 9);
        QVERIFY(out.startsWith(reply.mid(6)));
    }

    void tcpRequests()
    {
        const struct
        {
            QByteArray frame;
            int length;
            QByteArray sent;
        } rows[] = {
            { QByteArray::fromHex("01030000000ac5cd"), 8,
              QByteArray::fromHex("00000000000601030000000a") },
            { "fr", 2, QByteArray(6, '\0') },
            { "f", 1, QByteArray::fromHex("0000000000ff") },
            { QByteArray(996, 'l'), 996,
              QByteArray::fromHex("0000000000e2") + QByteArray(994, 'l') },
        };
        for (const auto &row : rows) {
            Connection connection;
            QVERIFY(connection.ok);
            QByteArray frame = row.frame;
            QCOMPARE(TcpCommWrite(&connection.handle, frame.data(), row.length), row.length);
            // Without an event loop in between: it has really left.
            QByteArray arrived;
            while (arrived.size() < row.sent.size() && connection.far->waitForReadyRead(2000))
                arrived += connection.far->readAll();
            QCOMPARE(arrived, row.sent);
        }
    }

    void refusals()
    {
        Connection connection;
        SerialPort closed;
        QTcpSocket unconnected;
        char frame[8] = {};
        PortDescriptor none {};
        PortDescriptor serial { &closed, CommRead, CommWrite };
        PortDescriptor tcp { &unconnected, TcpCommRead, TcpCommWrite };
        const auto sumOfResults = [](PortDescriptor *handle, char *buffer) {
            return CommRead(handle, buffer, 8) + CommWrite(handle, buffer, 8)
                + TcpCommRead(handle, buffer, 8) + TcpCommWrite(handle, buffer, 8);
        };
        for (PortDescriptor *handle :
             { static_cast<PortDescriptor *>(nullptr), &none, &serial, &tcp })
            QCOMPARE(sumOfResults(handle, frame), -1 - 1 - 5 - 1);
        QCOMPARE(sumOfResults(&connection.handle, nullptr), -1 - 1 - 5 - 1);
        for (const int length : { 997, INT_MAX, -1, INT_MIN })
            QCOMPARE(TcpCommWrite(&connection.handle, frame, length), -1);
        QCOMPARE(CommRead(&connection.handle, frame, -1) + CommWrite(&connection.handle, frame, -1),
                 -2);
    }

    void lostPeer()
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

    void noPeer()
    {
        for (const char *host : { "127.0.0.1", "no.such.host.invalid", "", "127.0.0.1", "" }) {
            QTcpSocket socket;
            QVERIFY(!connectToPeer(socket, QString::fromLatin1(host), 1, 5s));
            QCOMPARE(socket.state(), QAbstractSocket::UnconnectedState);
        }
        QCOMPARE(
            m_guard->messages().filter(QStringLiteral("connectToPeer: no connection to")).size(),
            3); // told once each
    }

    void names()
    {
        const SilentPeer first;
        QTcpServer second;
        QVERIFY(second.listen(QHostAddress(QStringLiteral("127.0.0.2")), first.port()));
        QTcpSocket socket;
        Stopwatch clock;
        QVERIFY(connectToPeer(socket, QStringLiteral("two.test"), first.port(), 2s));
        QVERIFY(clock.elapsed() < 1900); // the first address did not use up the time
        // However long the resolver hangs, one thread waits for it.
        const QString slow = QStringLiteral("slow.test");
        for (int attempt = 0; attempt < 3; ++attempt)
            QVERIFY(!connectToPeer(socket, slow, first.port(), 20ms));
        answers.release(2);
        QVERIFY(connectToPeer(socket, slow, first.port(), 2s));
        QVERIFY(lookUps <= 2);
    }

    void stopEndsWaiting()
    {
        const std::function<void()> serialRead = [] {
            PtyPair line;
            SerialPort port;
            QVERIFY(port.CommOpen(line.name(), plain, 20'000));
            char byte = 0;
            QCOMPARE(port.readData(&byte, 1), -1);
        };
        const std::function<void()> serialWrite = [] {
            PtyPair line;
            SerialPort port;
            QVERIFY(port.CommOpen(line.name(), plain, 20'000));
            const QByteArray flood(1'000'000, 'f'); // nobody reads it
            const qint64 written = port.writeData(flood.constData(), flood.size());
            QVERIFY(written > 0 && written < flood.size());
        };
        const std::function<void()> busyPort = [] {
            PtyPair line;
            PortManage manager;
            SerialPort *port = manager.getPortHandle(line.name());
            port->Lock();
            QVERIFY(!manager.getPortHandle(line.name()) && !PortLock(*port));
            port->UnLock();
        };
        const std::function<void()> connecting = [] {
            const SilentPeer peer;
            QTcpSocket socket;
            QVERIFY(!connectToPeer(socket, loopback, peer.port(), 20s));
            QVERIFY(StopSource::currentRequested());
        };
        for (const auto &wait : { serialRead, serialWrite, busyPort, connecting }) {
            StopSource source;
            const StopSource::Scope scope(source);
            std::thread stopper([&source] {
                StopSource::waitFor(-1, 0, 300ms);
                source.request();
            });
            Stopwatch clock;
            wait();
            const qint64 elapsed = clock.elapsed();
            stopper.join();
            QVERIFY(elapsed >= 250);
            QVERIFY2(elapsed < 1000, qPrintable(QString::number(elapsed)));
        }
    }
};

QTEST_GUILESS_MAIN(tst_CommIo)
#include "tst_commio.moc"
