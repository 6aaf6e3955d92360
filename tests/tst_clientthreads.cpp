#include "clientharness.h"
#include "portmanage.h"
#include "ptypair.h"
#include "serial/portlock.h"
#include "silentpeer.h"

#include <QAbstractEventDispatcher>
#include <QTcpServer>
#include <QTcpSocket>

#include <atomic>
#include <thread>

using namespace std::chrono_literals;

/** Clients in their own threads: they end at once, and settings and commands may come any time.
 *
 *  None on the stack, which the next test writes to: ThreadSanitizer does not see Qt end a thread. */
class tst_ClientThreads : public GuardedTest
{
    Q_OBJECT

private slots:
    void init()
    {
        GuardedTest::init();
        theDriver().onQuery(nullptr);
        theDriver().onControl(nullptr);
    }

    void endsAtOnce_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<bool>("polled"); // by another thread than the client's own
        for (const char *state : { "not started", "idle", "serial read", "port lock", "drain",
                                   "pause", "connecting", "tcp read" }) {
            QTest::addRow("%s", state) << state << false;
            if (strcmp(state, "not started") != 0)
                QTest::addRow("%s, polled", state) << state << true;
        }
    }

    void endsAtOnce()
    {
        QFETCH(QString, state);
        QFETCH(bool, polled);
        const PtyPair pty;
        // A read waits for 25 s.
        QVERIFY(writeFile("serial.ini", "[" + pty.name().mid(1).toLatin1() + "]\ntimeout=25000\n"));
        const SilentPeer peer;
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));

        std::atomic<int> calls { 0 };
        const auto read = [&calls](PortDescriptor &port) { return ++calls && readFrom(port); };
        const bool reads = state.endsWith("read") || state == "drain";
        theDriver().onQuery([&](PortDescriptor &port, int, const FakeDriver::Callback &) {
            return reads ? read(port) : int(++calls);
        });
        theDriver().onControl([&](PortDescriptor &port, const char *) { return int(read(port)); });

        auto *client = new tavoClient;
        const QPointer<tavoClient> alive(client);
        const quint16 port = state == "tcp read" ? server.serverPort() : peer.port();
        prepare(*client, state, pty.name(), port);
        SerialPort *line = PortManage::instance()->getPortHandle(pty.name());
        auto busy = state == "port lock" ? std::make_unique<PortLock>(*line) : nullptr;

        std::thread poller;
        if (polled)
            poller = std::thread([client] { client->poll(); });
        else if (state != "not started")
            client->start();
        // Before it is in, the thread must not be overtaken by the deletion.
        if (polled && state != "idle")
            QTRY_VERIFY_WITH_TIMEOUT(client->getWorkState() == 1, 20000);
        waitToBeIn(state, calls);

        Stopwatch clock;
        client->release(client);
        QTRY_VERIFY_WITH_TIMEOUT(!alive, 5000);
        const qint64 took = clock.elapsed();
        if (poller.joinable())
            poller.join();
        busy.reset();
        QVERIFY2(took < 1000, qPrintable(QString::number(took)));
    }

    // What a host may do with a thread, a client's own also does; also when it is started again.
    void eventLoop()
    {
        const auto owned = std::make_unique<tavoClient>();
        tavoClient &client = *owned;
        client.setPort("/dev/nothing", {});
        for (int start = 0; start < 2; ++start) {
            QTRY_VERIFY(client.eventDispatcher());
            std::atomic<int> awoken { 0 };
            std::atomic<int> blocked { 0 };
            const auto *dispatcher = client.eventDispatcher();
            connect(dispatcher, &QAbstractEventDispatcher::awake, [&] { ++awoken; });
            connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, [&] { ++blocked; });
            client.start();
            QObject inside;
            inside.moveToThread(&client);
            QTcpServer server;
            QVERIFY(server.listen(QHostAddress::LocalHost));
            QByteArray got;
            std::atomic<int> ticks { 0 };
            const auto work = [&] {
                got = talk(server.serverPort(), ticks);
                QTimer::singleShot(20, &inside, [&] {
                    inside.moveToThread(thread());
                    QThread::currentThread()->quit();
                });
            };
            QMetaObject::invokeMethod(&inside, work);
            QTRY_VERIFY(server.hasPendingConnections() && ticks > 3);
            const std::unique_ptr<QTcpSocket> peer(server.nextPendingConnection());
            QTRY_COMPARE(peer->peek(9), QByteArray("ping"));
            peer->write("pong");
            peer->disconnectFromHost();
            QTRY_VERIFY(client.isFinished());
            QCOMPARE(got, QByteArray("pong"));
            QVERIFY(blocked > 0 && awoken >= 2 * blocked); // each turn, and after each wait
        }
    }

    // What cancels a client's thread leaves a client that can be polled, or deleted, as ever.
    void threadThatWasCancelled()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        QSKIP("the sanitizers do not follow the unwinding of a cancelled thread");
#endif
        m_guard->expect("Qt has caught an exception"); // the cancellation
        std::atomic<bool> isCalled { false };
        theDriver().onQuery([&](PortDescriptor &, int, const FakeDriver::Callback &) {
            isCalled = true;
            std::this_thread::sleep_for(60s);
            return 1;
        });
        auto client = std::make_unique<tavoClient>();
        configure(*client, "ups1", "portName=/dev/nothing\n");
        client->start();
        QTRY_VERIFY(isCalled);
        client->terminate();
        QVERIFY(client->wait(5000));
        theDriver().onQuery(nullptr);
        client->poll();
        QCOMPARE(client->communicationState, 0);
        const Stopwatch clock;
        client.reset();
        QVERIFY(clock.elapsed() < 1000);
    }

    void commandsFromFourThreads()
    {
        constexpr int each = 500;
        std::mutex mutex;
        QVector<QVector<int>> seen(4);
        theDriver().onControl([&](PortDescriptor &, const char *command) {
            const QList<QByteArray> parts = QByteArray(command).split(',');
            const std::lock_guard<std::mutex> lock(mutex);
            seen[parts.at(0).toInt()].append(parts.at(1).toInt());
            return 1;
        });
        const auto owned = std::make_unique<tavoClient>();
        tavoClient &client = *owned;
        client.start();
        std::vector<std::thread> hosts;
        for (int host = 0; host < 4; ++host) {
            hosts.emplace_back([&client, host] {
                for (int i = 0; i < each; ++i)
                    client.control(2016, QStringLiteral("%1,%2").arg(host).arg(i));
            });
        }
        for (std::thread &host : hosts)
            host.join();
        QVector<int> expected(each);
        std::iota(expected.begin(), expected.end(), 0);
        for (int host = 0; host < 4; ++host) {
            QTRY_VERIFY_WITH_TIMEOUT((std::lock_guard(mutex), seen[host].size() >= each), 30000);
            const std::lock_guard<std::mutex> lock(mutex);
            QCOMPARE(seen[host], expected);
        }
    }

    void reconfiguredWhilePolling()
    {
        const PtyPair ptys[2];
        PortManage manager;
        std::mutex mutex;
        QSet<QPair<QString, int>> used; // port and address of the queries
        std::atomic<int> queries { 0 };
        theDriver().onQuery(
            [&](PortDescriptor &port, int address, const FakeDriver::Callback &value) {
                value(2000, float(++queries % 2));
                const auto *line = static_cast<SerialPort *>(static_cast<QIODevice *>(port.device));
                const std::lock_guard<std::mutex> lock(mutex);
                used.insert({ line->getPortName(), address });
                return 1;
            });
        const auto owned = std::make_unique<tavoClient>();
        tavoClient &client = *owned;
        configure(client, "ups1", "portName=" + ptys[0].name().toLatin1() + '\n');
        client.start();
        std::thread commands([&client] {
            for (int i = 0; i < 200; ++i)
                client.control(i % 50 ? 1003 : 1018, {});
        });
        for (int i = 0; i < 60; ++i) {
            client.setPort(ptys[i % 2].name(), "9600,n,8,1");
            client.setPortHandle(i % 3 ? nullptr : &manager);
            changeTheRest(client, i);
            QTest::qWait(1);
        }
        commands.join();
        client.setPort(ptys[1].name(), "9600,n,8,1");
        client.setDevId(77);
        const QPair<QString, int> last(ptys[1].name(), 77);
        QTRY_VERIFY((std::lock_guard(mutex), used.contains(last)));
        const int before = queries;
        {
            const std::lock_guard<std::mutex> lock(mutex);
            used.clear();
        }
        QTRY_VERIFY(queries > before + 3);
        const std::lock_guard<std::mutex> lock(mutex);
        QCOMPARE(used, (QSet<QPair<QString, int>> { last }));
    }

    void peerOfAnotherThread_data()
    {
        const Columns<QString> row("thread");
        for (const char *thread : { "with an event loop", "without one", "gone" })
            row(thread, thread);
    }

    // A host polled from a thread of its own: the peer is free as soon as the client is gone.
    void peerOfAnotherThread()
    {
        QFETCH(QString, thread);
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        auto client = std::make_unique<tavoClient>();
        configure(*client, "ups1",
                  "commType=1\nipAddr=127.0.0.1\nport=" + QByteArray::number(server.serverPort())
                      + '\n');
        QSemaphore polled;
        QSemaphore end;
        std::unique_ptr<QThread> host(QThread::create([&] {
            client->poll();
            polled.release();
            if (thread == "with an event loop")
                QEventLoop().exec();
            else if (thread == "without one")
                end.acquire();
        }));
        host->start();
        QVERIFY(polled.tryAcquire(1, 20000));
        if (thread == "gone") {
            QVERIFY(host->wait());
            host.reset();
        }
        QTRY_VERIFY(server.hasPendingConnections());
        const std::unique_ptr<QTcpSocket> peer(server.nextPendingConnection());
        client.reset();
        QTRY_COMPARE_WITH_TIMEOUT(peer->state(), QAbstractSocket::UnconnectedState, 2000);
        end.release();
        if (host)
            host->quit();
        QVERIFY(!host || host->wait());
    }

private:
    // With timers beside it. @return what the peer says to a "ping"
    static QByteArray talk(quint16 port, std::atomic<int> &ticks)
    {
        QTimer timer;
        connect(&timer, &QTimer::timeout, &timer, [&] { ++ticks; });
        timer.start(5);
        QTcpSocket socket;
        connect(&socket, &QTcpSocket::connected, &socket, [&] { socket.write("ping"); });
        socket.connectToHost(QHostAddress::LocalHost, port);
        QEventLoop loop;
        connect(&socket, &QTcpSocket::disconnected, &loop, &QEventLoop::quit);
        loop.exec();
        const QByteArray got = socket.readAll();
        QTcpServer idle; // is watched, and has nothing to tell
        int turns = 0;
        for (idle.listen(); turns < 100 && loop.processEvents(); ++turns) { }
        return turns < 100 ? got : "there is always something to do";
    }

    static bool readFrom(PortDescriptor &port)
    {
        char reply[1000];
        return port.read(&port, reply, sizeof reply) > 0;
    }

    static void prepare(tavoClient &client, const QString &state, const QString &line, int port)
    {
        const bool isTcp = state == "pause" || state == "connecting" || state == "tcp read";
        configure(client, "ups1",
                  "portName=" + line.toLatin1() + "\nipAddr=127.0.0.1\ncommType="
                      + (isTcp ? "1" : "0") + "\nport=" + QByteArray::number(port) + '\n');
        for (int i = 0; state == "drain" && i < 200; ++i)
            client.control(1003, {});
    }

    // Where the driver cannot tell: a moment in the pause, or the pause and a moment.
    static void waitToBeIn(const QString &state, const std::atomic<int> &calls)
    {
        if (state == "connecting")
            QTest::qWait(5300);
        else if (state == "pause" || state == "port lock")
            QTest::qWait(300);
        else if (state != "not started")
            QTRY_VERIFY_WITH_TIMEOUT(calls > 0, 20000);
    }

    static void changeTheRest(tavoClient &client, int round)
    {
        client.setDevId(round);
        client.flushUpsInfo("host", round);
        client.getWorkState();
        if (round % 20 == 0)
            client.loadConfig();
    }
};

QTEST_GUILESS_MAIN(tst_ClientThreads)
#include "tst_clientthreads.moc"
