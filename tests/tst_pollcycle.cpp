#include "clientharness.h"
#include "hostdouble.h"
#include "linepause.h"
#include "portmanage.h"
#include "ptypair.h"
#include "serial/portlock.h"

#include <QTcpServer>

#include <thread>

/** A cycle in the test's own thread: whom it commands, and what it tells in which order. */
class tst_PollCycle : public GuardedTest
{
    Q_OBJECT

private slots:
    void init()
    {
        GuardedTest::init();
        m_sent.clear();
        m_queried = {};
        theDriver().onQuery([this](PortDescriptor &port, int unit, const FakeDriver::Callback &) {
            m_queried = { unit, port.device };
            return 1;
        });
        theDriver().onControl([this](PortDescriptor &port, const char *command) {
            m_sent.append({ theDriver().controlledUnit, port.device, command });
            if (m_onCommand)
                m_onCommand();
            return 1;
        });
        m_onCommand = nullptr;
        m_host = std::make_unique<HostDouble>();
        m_host->change([](DeviceSettings &settings) {
            settings.ports = PortManage::instance();
            settings.portName = QStringLiteral("/dev/nothing");
        });
        m_driver = std::make_unique<DriverBinding>("libkx300_g4_6-20k");
        QVERIFY(m_driver->load());
        m_cycle = std::make_unique<PollCycle>(
            deviceFamily(), *m_host,
            LinkRecord { m_host->state, m_host->failCount, m_host->reportedStates }, m_stop,
            *m_driver, nullptr, nullptr);
    }

    void cleanup()
    {
        m_cycle.reset();
        m_driver.reset();
        GuardedTest::cleanup();
    }

    void commandsAreAnswered_data()
    {
        using Kind = CommandAnswer::Kind;
        const Columns<bool, int, int, int> row("hasDriver", "driverSays", "queryAfterIt", "kind");
        row("done", true, 1, 1, int(Kind::Accepted));
        row("done, then lost", true, 1, 0, int(Kind::Accepted));
        row("refused by a device that answers", true, 0, 1, int(Kind::Refused));
        row("no answer", true, 0, 0, int(Kind::NoAnswer));
        row("no driver", false, 1, 1, int(Kind::NotSent));
    }

    void commandsAreAnswered()
    {
        QFETCH(int, driverSays);
        QFETCH(int, queryAfterIt);
        QFETCH(int, kind);
        QFETCH(bool, hasDriver);
        if (!hasDriver)
            m_driver->unload();
        theDriver().onQuery([=](auto &&...) { return queryAfterIt; });
        theDriver().onControl([=](auto &&...) { return driverSays; });
        send({ 1007 });
        m_cycle->run();
        QCOMPARE(m_host->answers.size(), 1);
        QCOMPARE(m_host->answers.first().command, 1007);
        QCOMPARE(int(m_host->answers.first().kind), kind);
        m_cycle->run();
        QCOMPARE(m_host->answers.size(), 1);
    }

    // Settings that change while commands are carried out count from the next command on.
    void commandsFollowTheSettings()
    {
        send({ 1001, 1007, 1003 });
        m_onCommand = [this] {
            m_host->change([](DeviceSettings &settings) {
                ++settings.unit;
                settings.portName += QLatin1Char('2');
            });
        };
        m_cycle->run();
        QCOMPARE(m_sent.size(), 3);
        QString name = QStringLiteral("/dev/nothing");
        for (int i = 0; i < 3; ++i, name += QLatin1Char('2')) {
            QCOMPARE(m_sent.at(i).unit, 1 + i);
            QIODevice *const port = PortManage::instance()->getPortHandle(name);
            QCOMPARE(m_sent.at(i).device, static_cast<void *>(port));
        }
        QCOMPARE(m_queried.unit, 4);
    }

    void drain()
    {
        CommandRunner &commands = m_cycle->commands();
        for (int i = 0; i < 250; ++i)
            commands.append({ 2016, QString::number(i) });
        commands.drain();
        QCOMPARE(m_sent.size(), 201);
        QCOMPARE(m_sent.last().command, QByteArray("200"));
        m_cycle->run();
        QCOMPARE(m_sent.size(), 250);
        // A closing of the port ends it.
        for (const auto &[command, value] :
             { std::pair(1007, "now"), { 1018, "" }, { 1011, "12:00" } })
            commands.append({ command, value });
        commands.drain();
        QCOMPARE(m_sent.last().command, QByteArray("4,now"));
        commands.drain();
        QCOMPARE(m_sent.last().command, QByteArray());
        QVERIFY(m_guard->messages().contains("1011 \"12:00\" 1"));
    }

    // So do those that change while the line is waited for.
    void waitingForTheLine()
    {
        const PtyPair first;
        const PtyPair second;
        m_host->change([&](DeviceSettings &settings) { settings.portName = first.name(); });
        send({ 1007 });
        runBusy(first, [&](DeviceSettings &settings) {
            settings.portName = second.name();
            settings.unit = 7;
        });
        QIODevice *const expected = PortManage::instance()->getPortHandle(second.name());
        QCOMPARE(m_sent.size(), 1);
        QCOMPARE(m_sent.first().unit, 7);
        QCOMPARE(m_sent.first().device, static_cast<void *>(expected));
        QCOMPARE(m_queried.device, static_cast<void *>(expected));
        QVERIFY(m_host->published.contains({ "upsAddr", "7" })); // who was asked
    }

    // A peer that is not connected yet gets neither the old one's commands nor its name.
    void anotherPeerWaits()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        useTcp(server.serverPort());
        send({ 1001, 1007 });
        m_onCommand = [this] {
            m_host->change([](DeviceSettings &settings) { settings.ipAddress = "127.0.0.2"; });
        };
        QVector<int> types;
        m_host->onPost = [&types](int type, const QVariantMap &) { types.append(type); };
        m_cycle->run();
        QCOMPARE(m_sent.size(), 1);
        QVERIFY(types.isEmpty());
        QCOMPARE(m_queried.unit, 0);
        m_onCommand = nullptr;
        m_host->change([](DeviceSettings &settings) { settings.ipAddress = "127.0.0.1"; });
        m_cycle->run();
        QCOMPARE(m_sent.size(), 2);
        QCOMPARE(m_sent.last().command, QByteArray("4,"));
        QCOMPARE(m_queried.unit, 1);
    }

    // A receiver in the polling thread sees what has been reported so far, no more.
    void reportedStatesGrow()
    {
        QStringList steps;
        m_host->onPost = [&](int type, const QVariantMap &map) {
            if (type == 2007)
                return;
            const QMap<int, int> &states = m_host->reportedStates;
            steps += QString::asprintf("%d:%d|%d,%d,%d", type, map.value("alarmId").toInt(),
                                       states.value(5), states.value(59), states.value(2059));
        };
        m_cycle->store(2005, 1);
        m_cycle->store(2059, 1);
        m_cycle->report();
        QCOMPARE(
            steps,
            QStringList({ "2006:5|0,0,0", "2006:59|1,0,0", "2010:59|1,1,1", "2001:59|1,1,1" }));
    }

    // A flag of the first report was set before anybody could know.
    void onsets()
    {
        m_cycle->report(); // nothing has been read yet: that is no look
        m_cycle->store(2005, 1);
        m_cycle->report();
        m_cycle->store(2006, 1);
        m_cycle->report();
        QCOMPARE(m_host->onsets.keys(), QList<int>({ 5, 6 }));
        QVERIFY(!m_host->onsets.value(5).isExact && m_host->onsets.value(6).isExact);
        m_cycle->store(2005, 2);
        m_cycle->report();
        QCOMPARE(m_host->onsets.keys(), QList<int>({ 6 }));
        // What one report tells began at once, however long a receiver takes.
        m_host->onPost = [](int, const QVariantMap &) {
            const qint64 begun = QDateTime::currentMSecsSinceEpoch();
            while (QDateTime::currentMSecsSinceEpoch() == begun) { }
        };
        m_cycle->store(2007, 1);
        m_cycle->store(2008, 1);
        m_cycle->report();
        QCOMPARE(m_host->onsets.value(7).since, m_host->onsets.value(8).since);
    }

    // A query may take long to fail: the view's "since" is the time in the host's log.
    void lossHasOneTime()
    {
        theDriver().onQuery([](auto &&...) {
            const qint64 begun = QDateTime::currentSecsSinceEpoch();
            return int(
                !QTest::qWaitFor([begun] { return QDateTime::currentSecsSinceEpoch() > begun; }));
        });
        m_host->change([](DeviceSettings &settings) { settings.retries = 1; });
        QString told;
        m_host->onPost = [&told](int type, const QVariantMap &map) {
            if (type == 1041)
                told = map.value("timeStr").toString();
        };
        m_cycle->run();
        QVERIFY(!told.isEmpty());
        QCOMPARE(m_host->linkTime.toString("yyyy-MM-dd hh:mm:ss"), told);
    }

    // While another program has the device nobody asks it anything, and it is not lost.
    void heldOff()
    {
        m_host->change([](DeviceSettings &settings) { settings.retries = 1; });
        QVector<int> types;
        m_host->onPost = [&types](int type, const QVariantMap &) { types.append(type); };
        auto pause = std::make_unique<LinePause>("/dev/nothing");
        QVERIFY(pause->isQuiet());
        send({ 1007 });
        for (int i = 0; i < 3; ++i)
            m_cycle->run();
        QVERIFY(m_sent.isEmpty() && types.isEmpty() && m_queried.unit == 0);
        QCOMPARE(m_host->failCount, 0);
        pause.reset();
        m_cycle->run();
        QCOMPARE(m_sent.size(), 1);
        QCOMPARE(m_queried.unit, 1);
        // One that begins while the driver is at work stops the next call, and waits for this one.
        m_queried = {};
        bool isQuietInside = true;
        m_onCommand = [&] {
            pause = std::make_unique<LinePause>("/dev/nothing");
            isQuietInside = pause->isQuiet();
        };
        send({ 1001, 1007 });
        m_cycle->run();
        QVERIFY(m_sent.size() == 2 && m_queried.unit == 0);
        QVERIFY(!isQuietInside && pause->isQuiet());
    }

    // Whoever has the peer during a pause must not find its one connection taken.
    void heldPeer()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        useTcp(server.serverPort());
        const QString peer = QStringLiteral("127.0.0.1:%1").arg(server.serverPort());
        std::thread poller([this] { m_cycle->run(); });
        QTest::qWait(500); // it pauses before it connects
        auto pause = std::make_unique<LinePause>(peer);
        QVERIFY(pause->isQuiet());
        poller.join();
        QVERIFY(!server.waitForNewConnection(0));
        QVERIFY(m_host->failCount == 0 && m_queried.unit == 0);
        pause.reset();
        m_cycle->run();
        QVERIFY(server.waitForNewConnection(0));
        QCOMPARE(m_queried.unit, 1);
        pause = std::make_unique<LinePause>(peer);
        QVERIFY(!pause->isQuiet() && m_cycle->hasToTurn());
        m_cycle->run();
        QVERIFY(pause->isQuiet() && !m_cycle->hasToTurn());
    }

    void driverThatThrows()
    {
        m_guard->expect("driver (Query|Control) threw: broken");
        const auto fails = [](auto &&...) -> int { throw std::runtime_error("broken"); };
        theDriver().onQuery(fails);
        theDriver().onControl(fails);
        m_host->change([](DeviceSettings &settings) { settings.retries = 1; });
        send({ 1007 });
        m_cycle->run();
        QCOMPARE(m_host->state, 1);
        QVERIFY(m_guard->messages().contains("1007 \"\" 0"));
        // The line is free again.
        SerialPort *port = PortManage::instance()->getPortHandle(QStringLiteral("/dev/nothing"));
        QVERIFY(port->mutex->tryLock());
        port->mutex->unlock();
    }

private:
    struct Call
    {
        int unit = 0;
        void *device = nullptr;
        QByteArray command {};
    };

    // One cycle, whose settings change while it waits for the line, most likely; whatever it does
    // then, the outcome is the same.
    template <typename Change> void runBusy(const PtyPair &line, const Change &change)
    {
        SerialPort *port = PortManage::instance()->getLockedPort(line.name());
        QVERIFY(port);
        auto lock = std::make_unique<PortLock>(*port, std::adopt_lock);
        std::thread poller([this] { m_cycle->run(); });
        QTest::qWait(100);
        m_host->change(change);
        lock.reset();
        poller.join();
    }

    void useTcp(quint16 port)
    {
        m_host->change([port](DeviceSettings &settings) {
            settings.communicationType = tcpCommunication;
            settings.ipAddress = QStringLiteral("127.0.0.1");
            settings.tcpPort = port;
        });
    }

    void send(const QVector<int> &commands)
    {
        for (const int command : commands)
            m_cycle->commands().append({ command, {} });
    }

    std::unique_ptr<HostDouble> m_host;
    std::unique_ptr<DriverBinding> m_driver;
    StopSource m_stop;
    std::unique_ptr<PollCycle> m_cycle;
    QVector<Call> m_sent;
    Call m_queried;
    std::function<void()> m_onCommand;
};

QTEST_MAIN(tst_PollCycle)
#include "tst_pollcycle.moc"
