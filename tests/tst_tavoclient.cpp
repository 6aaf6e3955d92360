#include "clientharness.h"
#include "collectview.h"

#include <QTcpServer>
#include <QTcpSocket>

/** One event that a client posted. */
struct Post
{
    int type;
    QVariantMap map;
};

/** One client over its fake driver, driven by poll() from the test's own thread. */
class tst_TavoClient : public GuardedTest
{
    Q_OBJECT

private slots:
    void init()
    {
        GuardedTest::init(); // traffic logs and "./history.txt" go to the working directory
        m_commands.clear();
        theDriver().onQuery(nullptr);
        theDriver().onControl([this](PortDescriptor &, const char *command) {
            m_commands.append(command);
            return 1;
        });
        m_client = std::make_unique<tavoClient>();
        takePosts();
        connect(m_client.get(), &CollectThread::postDEvent, m_client.get(),
                [this](int type, const QVariantMap &map) {
                    m_posts.append({ type, map });
                });
        configure(*m_client, "ups1",
                  "portName=/dev/nothing\nretries=3\ninterval=3600\nprotocol=4\n");
    }

    void cleanup()
    {
        m_client.reset();
        GuardedTest::cleanup();
    }

    void metaObject()
    {
        const QMetaObject &meta = tavoClient::staticMetaObject;
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            methods << meta.method(i).methodSignature() + (meta.method(i).access() ? "+" : "-");
        QCOMPARE(methods, QStringList({ "control(int,QString)+", "threadTimer()-" }));
        QVERIFY(QMetaType::type("QList<int>") && QMetaType::type("CollectThread*"));
    }

    void create()
    {
        int manager = 0;
        int other = 0;
        m_client->portHandle = &other;
        const std::unique_ptr<CollectThread> created(m_client->create(&manager));
        QCOMPARE(created->portHandle, &manager);
        QCOMPARE(m_client->portHandle, &other);
        m_client->portHandle = nullptr;
        QCOMPARE(m_client->utfToChina(QString::fromLatin1("\xe4\xb8\xad")), QString(QChar(0x4e2d)));
        m_client->release(static_cast<tavoClient *>(nullptr));
    }

    void view()
    {
        CollectView *shown = m_client->getView();
        QCOMPARE(m_client->getView(), shown);
        shown->control(1003, "x");
        const QVector<Post> posts = takePosts();
        QCOMPARE(posts.size(), 1);
        QCOMPARE(posts.first().type, 1003);
        QCOMPARE(
            posts.first().map,
            QVariantMap({ { "name", "ups1" }, { "controlId", 1003 }, { "controlValue", "x" } }));
        delete shown; // a host's window may own the view, and go first
        QVERIFY(m_client->getView());
    }

    void badConfigIsLogged()
    {
        m_guard->expect("loadConfig .*/dev.ini: ups1/(addr|interval)");
        configure(*m_client, "ups1", "addr=x\ninterval=-9\n");
        QCOMPARE(m_guard->messages().filter("loadConfig").size(), 3);
        m_client->start(); // which raises the interval
        QTRY_COMPARE(__atomic_load_n(&m_client->interval, __ATOMIC_ACQUIRE), 1);
    }

    // The mutex is for the device information: who reads that holds up nothing else.
    void hostHoldsTheMutex()
    {
        const QMutexLocker lock(&m_client->mutex);
        m_client->setPortHandle(nullptr);
        m_client->setDevId(9);
        QCOMPARE(m_client->getWorkState(), 0);
        configure(*m_client, "ups1", "portName=/dev/nothing\nretries=4\n");
        QCOMPARE(m_client->retries, 4);
        QVERIFY(m_client->getView());
    }

    void linkComes()
    {
        theDriver().onQuery([&](PortDescriptor &, int address, const FakeDriver::Callback &) {
            return address == 1 ? 7 : 0;
        });
        cycle();
        const QVector<Post> up = takePosts();
        QCOMPARE(up.size(), 3); // 1040, 2001, 2007
        QCOMPARE(up[0].type, 1040);
        QCOMPARE(up[1].type, 2001);
        QVariantMap expected { { "name", "ups1" },
                               { "protocol", 4 },
                               { "port", "/dev/nothing" },
                               { "desc", "ups1" },
                               { "state", 0 } };
        QVariantMap map = up[0].map;
        QVERIFY(
            QDateTime::fromString(map.take("timeStr").toString(), "yyyy-MM-dd hh:mm:ss").isValid());
        QCOMPARE(map, expected);
        QCOMPARE(up[1].map, up[0].map);
    }

    void linkIsLost()
    {
        bool answers = true;
        int stateAtLoss = -2;
        theDriver().onQuery(
            [&](PortDescriptor &, int, const FakeDriver::Callback &) { return int(answers); });
        connect(m_client.get(), &CollectThread::postDEvent, this,
                [&](int type, const QVariantMap &) {
                    if (type == 1041)
                        stateAtLoss = m_client->communicationState;
                });
        cycle();
        takePosts();
        answers = false;
        cycle();
        cycle();
        QCOMPARE(takeTypes(), QVector<int>());
        const auto reopenings = [this] {
            return m_guard->messages().filter("[CommOpen]    打开标准串口").size();
        };
        const int before = reopenings();
        cycle();
        const QVector<Post> lost = takePosts();
        QCOMPARE(lost[0].type, 1041);
        QCOMPARE(lost[1].type, 2001);
        QCOMPARE(lost[0].map.value("lost"), QVariant(1));
        QCOMPARE(lost[1].map.value("state"), QVariant(1));
        QCOMPARE(stateAtLoss, 0);
        cycle();
        QCOMPARE(takeTypes(), QVector<int>());
        QCOMPARE(reopenings() - before, 2);
    }

    void commTypeTwoFails()
    {
        m_guard->expect("ups1/commType=2 is outside");
        configure(*m_client, "ups1", "portName=/dev/nothing\nretries=1\ncommType=2\n");
        m_client->control(1003, {});
        cycle();
        QCOMPARE(takeTypes(), QVector<int>({ 1041, 2001 }));
        QCOMPARE(m_commands.size(), 0);
        QVERIFY(m_guard->messages().contains("1003 \"\" 0"));
        QCOMPARE(m_client->deviceInformation.value("portInfo").toString(),
                 QStringLiteral("/dev/nothing-9600,n,8,1"));
    }

    void pollGate()
    {
        QVector<int> workStates;
        theDriver().onQuery([&](PortDescriptor &, int, const FakeDriver::Callback &) {
            workStates.append(m_client->getWorkState());
            m_client->poll(); // by a slot of the host, say: no cycle inside a cycle
            return 1;
        });
        m_client->poll();
        m_client->poll();
        QCOMPARE(workStates, QVector<int>({ 1 }));
        QCOMPARE(m_client->getWorkState(), 0);
        QCOMPARE(m_client->control(1003, {}), 1);
        m_client->poll();
        QCOMPARE(workStates.size(), 2);
        m_client->nextPollTime = 0;
        m_client->poll();
        QCOMPARE(workStates.size(), 3);
    }

    void report()
    {
        m_client->parseData(3, 1);
        m_client->parseData(3, 2.5f);
        m_client->parseData(2059, 1);
        m_client->manufacturer = "maker";
        m_client->deviceInformation.insert("12", "stays");
        m_client->reportData();
        const QVector<Post> posts = m_posts;
        QCOMPARE(takeTypes(0), QVector<int>({ 2006, 2010, 2001, 2007 }));
        QCOMPARE(posts[0].map.keys(),
                 QStringList(
                     { "alarmId", "alarmState", "lost", "name", "port", "protocol", "timeStr" }));
        QCOMPARE(posts[0].map.value("lost"), QVariant(0));
        QCOMPARE(posts[2].map.value("dis_alarm"), QVariant(1));
        QCOMPARE(posts[2].map.value("state"), QVariant(-1));
        QCOMPARE(posts[3].map, posts[2].map);
        using Data = QMap<int, QVariant>;
        const auto data = posts[3].map.value("data").value<Data>();
        QCOMPARE(data.size(), 2);
        QCOMPARE(data.value(3), QVariant(2.5f));
        const QVariantMap &information = m_client->deviceInformation;
        QCOMPARE(information.size(), 2 + 1 + 7);
        QCOMPARE(information.value("upsAddr"), QVariant("1"));
        QCOMPARE(information.value("IdentManufacturer"), QVariant("maker"));
        QCOMPARE(information.value("portInfo"), QVariant("/dev/nothing-9600,n,8,1"));
    }

    void reportKeepsTheHostsCopy()
    {
        using Data = QMap<int, QVariant>;
        const auto posted = [this] { return takePosts().last().map.value("data").value<Data>(); };
        m_client->parseData(1, 1);
        m_client->reportData();
        const Data first = posted();
        m_client->parseData(1, 1);
        m_client->reportData();
        QVERIFY(first.isSharedWith(posted())); // nothing changed: no copy
        m_client->parseData(1, 2);
        m_client->reportData();
        QCOMPARE(posted().value(1).toInt(), 2);
        QCOMPARE(first.value(1).toInt(), 1);
    }

    void download()
    {
        m_client->deviceName = "ups%2"; // a name that looks like a place marker
        for (const int outcome : { 1, 0, 9, -1 }) {
            theDriver().onControl([&](PortDescriptor &, const char *) {
                return writeFile("history.txt", "26 112 1 3 3725 0 4\n") ? outcome : 77;
            });
            m_client->control(1045, "out.csv");
            m_client->check_set_command();
            const QVector<Post> posts = takePosts();
            QCOMPARE(posts.size(), 1);
            QCOMPARE(posts.first().type, 1042);
            const QString result = outcome == 1 ? "successful" : "failed";
            QCOMPARE(posts.first().map,
                     QVariantMap({ { "controlId", 1046 },
                                   { "controlValue", "out.csv" },
                                   { "name", "ups%2" },
                                   { "result", 1 },
                                   { "desc", "ups%2 Download history " + result } }));
            QCOMPARE(fileContents("out.csv").split('\n').at(1),
                     QByteArray("1a,The Start Time,Appear,3:01:02:05,grid mode,"));
        }
    }

    // A call out of the cycle runs an event loop, in which somebody removes the device.
    void releasedWithinItsCycle()
    {
        tavoClient *const client = m_client.release();
        const QPointer<tavoClient> alive(client);
        bool survived = false;
        theDriver().onControl([&](PortDescriptor &, const char *) {
            writeFile("history.txt", "26 112 1 3 3725 0 4\n");
            client->release(client);
            QTest::qWait(100);
            survived = alive;
            return 1;
        });
        writeFile("out.csv", "old");
        client->control(1045, "out.csv");
        client->poll();
        QVERIFY(survived);
        QTRY_VERIFY(!alive);
        QCOMPARE(takeTypes(), QVector<int>());
        QCOMPARE(fileContents("out.csv"), QByteArray("old"));
        QVERIFY(fileContents("history.txt").isEmpty()); // another device must not export it
    }

    // The first connection comes after five seconds; another address is connected anew.
    void tcpPeer()
    {
        QTcpServer server;
        QTcpServer other;
        QVERIFY(server.listen(QHostAddress::LocalHost) && other.listen(QHostAddress::LocalHost));
        theDriver().onQuery([](PortDescriptor &port, int, const FakeDriver::Callback &) {
            char request[] = "\x01\x03\x00\x00\x00\x0a\xc5\xcd";
            return port.write(&port, request, 8) == 8;
        });
        configure(*m_client, "ups1",
                  "retries=1\ncommType=1\nipAddr=127.0.0.1\nport="
                      + QByteArray::number(server.serverPort()) + '\n');
        Stopwatch clock;
        cycle();
        QVERIFY(clock.elapsed() >= 4900);
        QCOMPARE(takeTypes(), QVector<int>({ 1040, 2001 }));
        clock.restart();
        cycle();
        QVERIFY(clock.elapsed() < 4900);
        QVERIFY(server.waitForNewConnection(0));
        QCOMPARE(m_client->deviceInformation.value("portInfo").toString(),
                 QStringLiteral("tcp:127.0.0.1:%1").arg(server.serverPort()));
        QVERIFY(!server.waitForNewConnection(0));
        m_client->tcpPort = other.serverPort();
        cycle();
        QVERIFY(other.waitForNewConnection(0));
        QCOMPARE(takeTypes(), QVector<int>());
        const std::unique_ptr<QTcpSocket> peer(other.nextPendingConnection());
        configure(*m_client, "ups1", "portName=/dev/nothing\n");
        cycle();
        QVERIFY(peer->waitForDisconnected(5000)); // a peer that is not used any more is let go
    }

private:
    void cycle() { QMetaObject::invokeMethod(m_client.get(), "threadTimer", Qt::DirectConnection); }

    QVector<Post> takePosts() { return std::exchange(m_posts, {}); }

    // Without the data reports, which end every cycle.
    QVector<int> takeTypes(int except = 2007)
    {
        QVector<int> types;
        for (const Post &post : takePosts()) {
            if (post.type != except)
                types.append(post.type);
        }
        return types;
    }

    std::unique_ptr<tavoClient> m_client;
    QVector<Post> m_posts;          // since the last look
    QVector<QByteArray> m_commands; // that the driver was given
};

QTEST_MAIN(tst_TavoClient)
#include "tst_tavoclient.moc"
