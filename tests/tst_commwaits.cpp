// How waits for peers, names and lines end, and what they do without descriptors.

#include "guardedtest.h"
#include "modbus/commio.h"
#include "modbusserver.h"
#include "portmanage.h"
#include "ptypair.h"
#include "registerread.h"
#include "serial/portlock.h"
#include "silentpeer.h"
#include "stopsource.h"
#include "tcpconnect.h"
#include "tcpconnection.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <ctime>
#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

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

} // namespace

using Wait = void (*)();
Q_DECLARE_METATYPE(Wait)

class tst_CommWaits : public GuardedTest
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

    // The descriptors that are left are for what cannot do without: threads and ports.
    void fewDescriptors()
    {
        rlimit usual = {};
        getrlimit(RLIMIT_NOFILE, &usual);
        const rlimit few = { 100, usual.rlim_max };
        setrlimit(RLIMIT_NOFILE, &few);
        m_guard->expect(QStringLiteral("^WakeUp: of 100 file descriptors .* half are in use"));
        std::vector<std::unique_ptr<StopSource>> sources(200);
        for (auto &source : sources)
            source = std::make_unique<StopSource>();
        const int left = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        setrlimit(RLIMIT_NOFILE, &usual);
        ::close(left);
        QVERIFY2(left >= 0 && left < 60, qPrintable(QString::number(left)));
        QCOMPARE(m_guard->messages().filter(QStringLiteral("WakeUp")).size(), 1);
        std::thread stopper([&] { sources.back()->request(); });
        const StopSource::Scope scope(*sources.back());
        Stopwatch clock;
        QCOMPARE(StopSource::waitFor(-1, 0, 5s), StopSource::Wait::Stopped);
        stopper.join();
        QVERIFY(clock.elapsed() < 1000);
        QMutex mutex;
        const QMutexLocker lock(&mutex);
        QVERIFY(!StopSource::lock(mutex));
    }

    void stopEndsWaiting_data()
    {
        const Columns<Wait> row("wait");
        row("serial read", &readSerial);
        row("serial write", &writeSerial);
        row("busy port", &askForBusyPort);
        row("queue", &queueForPort);
        row("connecting", &connectToSilence);
    }

    void stopEndsWaiting()
    {
        QFETCH(Wait, wait);
        StopSource source;
        const StopSource::Scope scope(source);
        std::thread stopper([&source] {
            StopSource::waitFor(-1, 0, 300ms);
            source.request();
        });
        Stopwatch clock;
        const std::clock_t worked = std::clock();
        wait();
        const qint64 elapsed = clock.elapsed();
        const auto busy = (std::clock() - worked) * 1000 / CLOCKS_PER_SEC;
        QVERIFY2(busy < 50, qPrintable(QString::number(busy))); // it sleeps
        stopper.join();
        QVERIFY(elapsed >= 250);
        QVERIFY2(elapsed < 1000, qPrintable(QString::number(elapsed)));
    }

private:
    static void readSerial()
    {
        PtyPair line;
        SerialPort port;
        QVERIFY(port.CommOpen(line.name(), plain, 20'000));
        char byte = 0;
        QCOMPARE(port.readData(&byte, 1), -1);
    }

    static void writeSerial()
    {
        PtyPair line;
        SerialPort port;
        QVERIFY(port.CommOpen(line.name(), plain, 20'000));
        const QByteArray flood(1'000'000, 'f'); // nobody reads it
        const qint64 written = port.writeData(flood.constData(), flood.size());
        QVERIFY(written > 0 && written < flood.size());
    }

    static void askForBusyPort()
    {
        PtyPair line;
        PortManage manager;
        SerialPort *port = manager.getPortHandle(line.name());
        port->Lock();
        QVERIFY(!manager.getPortHandle(line.name()) && !PortLock(*port));
        port->UnLock();
    }

    static void queueForPort()
    {
        PtyPair line;
        PortManage manager;
        SerialPort *port = manager.getPortHandle(line.name());
        port->Lock();
        std::thread first([port] { const PortLock lock(*port); });
        StopSource::waitFor(-1, 0, 50ms);
        QVERIFY(!manager.getLockedPort(line.name()));
        port->UnLock();
        first.join();
    }

    static void connectToSilence()
    {
        const SilentPeer peer;
        QTcpSocket socket;
        QVERIFY(!connectToPeer(socket, loopback, peer.port(), 20s));
        QVERIFY(StopSource::currentRequested());
    }
};

QTEST_GUILESS_MAIN(tst_CommWaits)
#include "tst_commwaits.moc"
