#include "atend.h"
#include "clientharness.h"
#include "ptypair.h"

#include <algorithm>
#include <atomic>
#include <sys/resource.h>
#include <thread>

using namespace std::chrono_literals;

/** Clients beside each other: what one does, or cannot do, leaves the others and the host alone. */
class tst_ManyClients : public GuardedTest
{
    Q_OBJECT

private slots:
    void init()
    {
        GuardedTest::init();
        theDriver().onQuery(nullptr);
    }

    // Four silent units beside a healthy one: it is asked after no more than one call of each.
    void silentUnitsOfALine()
    {
        const PtyPair pty;
        QVERIFY(writeFile("serial.ini", "[" + pty.name().mid(1).toLatin1() + "]\ntimeout=200\n"));
        std::mutex mutex;
        std::vector<int> calls; // since unit 1 was asked
        size_t most = 0;
        std::atomic<int> rounds { 0 };
        std::atomic<bool> isHeld { false };
        std::atomic<bool> wasLetGo { false };
        QSemaphore letGo;
        theDriver().onQuery([&](PortDescriptor &port, int unit, const FakeDriver::Callback &) {
            if (unit == 1) {
                const std::lock_guard<std::mutex> lock(mutex);
                most = ++rounds > 1 ? std::max(most, calls.size()) : 0; // not before all have begun
                calls.clear();
                return 1;
            }
            char reply = 0;
            port.read(&port, &reply, 1);
            if (unit == 5 && rounds > 5 && !isHeld.exchange(true))
                wasLetGo = letGo.tryAcquire(1, 30'000);
            const std::lock_guard<std::mutex> lock(mutex);
            calls.push_back(unit);
            return 0;
        });
        const auto clients = fiveUnitsOf(pty);
        for (const auto &client : clients)
            client->start();
        QTRY_VERIFY_WITH_TIMEOUT(isHeld, 20'000);
        // The host's thread does not wait for the call that is under way.
        clients[1]->loadConfig();
        letGo.release();
        const int before = rounds;
        QTRY_VERIFY_WITH_TIMEOUT(rounds > before + 5, 20'000);
        QVERIFY(wasLetGo);
        QCOMPARE(clients[0]->communicationState, 0);
        QCOMPARE(clients[4]->communicationState, 1);
        const std::lock_guard<std::mutex> lock(mutex);
        QVERIFY2(most >= 3 && most <= 5, qPrintable(QString::number(most))); // and one on the way
    }

    // More clients than descriptors: each polls, or the log tells why not, and the host lives.
    void fewDescriptors()
    {
        constexpr int count = 150;
        const PtyPair pty;
        rlimit usual = {};
        getrlimit(RLIMIT_NOFILE, &usual);
        const rlimit few = { 128, usual.rlim_max };
        m_guard->expect("^WakeUp: of 128 file descriptors .* half are in use");
        theDriver().onQuery([](PortDescriptor &port, int, const FakeDriver::Callback &) {
            return int(static_cast<QIODevice *>(port.device)->isOpen());
        });
        setrlimit(RLIMIT_NOFILE, &few);
        const AtEnd restore([&] { setrlimit(RLIMIT_NOFILE, &usual); });
        std::atomic<int> reports { 0 };
        std::vector<std::unique_ptr<tavoClient>> clients(count);
        for (int i = 0; i < count; ++i) {
            auto &client = clients[size_t(i)] = std::make_unique<tavoClient>();
            client->retries = 1;
            QVERIFY(QFile::link(pty.name(), path(QString::number(i))));
            client->setPort(path(QString::number(i)), "9600,n,8,1");
            connect(
                client.get(), &CollectThread::postDEvent, client.get(),
                [&](int type) { reports += type == 2007; }, Qt::DirectConnection);
            client->start();
        }
        QTRY_VERIFY_WITH_TIMEOUT(reports > 3 * count, 20'000);
        QThread ofTheHost; // has an event loop of Qt's own
        ofTheHost.start();
        ofTheHost.quit();
        QVERIFY(ofTheHost.wait());
        int lost = 0;
        for (int i = 0; i < count; ++i) {
            const bool isLost = clients[size_t(i)]->communicationState != 0;
            lost += isLost;
            const QString why = path(QString::number(i)) + " does not open: Too many open files";
            QCOMPARE(m_guard->messages().filter(why).size(), int(isLost));
        }
        QVERIFY2(lost > 50 && lost < 148, qPrintable(QString::number(lost)));
        QCOMPARE(m_guard->messages().filter("WakeUp").size(), 1);
    }

    // The host's event loop goes on, and the clients are deleted once their drivers are back.
    void driversThatStay()
    {
        constexpr int count = 10;
        m_guard->expect("is deleted later");
        std::atomic<int> inside { 0 };
        std::atomic<bool> back { false };
        theDriver().onQuery([&](PortDescriptor &, int, const FakeDriver::Callback &) {
            for (++inside; !back;)
                std::this_thread::sleep_for(1ms);
            return 0;
        });
        QVector<QPointer<tavoClient>> clients;
        std::vector<std::thread> pollers;
        for (int i = 0; i < count; ++i) {
            tavoClient *client = new tavoClient;
            client->setPort(QStringLiteral("/dev/nothing%1").arg(i), {});
            clients.append(client);
            pollers.emplace_back([client] { client->poll(); });
        }
        QTRY_COMPARE(inside.load(), count);
        const auto left = [&clients] {
            return std::count_if(clients.begin(), clients.end(), [](auto &c) { return bool(c); });
        };
        for (const auto &client : clients)
            client->deleteLater(); // as a host does that has only the base class
        const Stopwatch clock;
        turnOfTheLoop();
        QVERIFY(clock.elapsed() < 700); // less than the patience with one of them
        QTRY_COMPARE(m_guard->messages().filter("is deleted later").size(), count);
        QCOMPARE(left(), qptrdiff(count));
        for (const auto &client : clients) // as from a view: still to come when the driver returns
            QMetaObject::invokeMethod(
                client, [] {}, Qt::QueuedConnection);
        back = true;
        for (std::thread &poller : pollers)
            poller.join();
        QTRY_COMPARE(left(), qptrdiff(0));
    }

    // Healthy ones take turns with the rest of the loop, and none is forgotten.
    void manyDeletions()
    {
        QVector<QPointer<tavoClient>> clients;
        for (int i = 0; i < 300; ++i)
            clients.append(new tavoClient);
        for (const auto &client : clients)
            client->deleteLater();
        turnOfTheLoop();
        QTRY_VERIFY(std::none_of(clients.begin(), clients.end(), [](auto &c) { return bool(c); }));
    }

private:
    static std::vector<std::unique_ptr<tavoClient>> fiveUnitsOf(const PtyPair &line)
    {
        std::vector<std::unique_ptr<tavoClient>> clients;
        // All in one file: QSettings takes one of the same size and millisecond for the last one.
        QByteArray lines;
        for (int unit = 1; unit <= 5; ++unit)
            lines += "[unit" + QByteArray::number(unit) + "]\nportName=" + line.name().toLatin1()
                + "\naddr=" + QByteArray::number(unit) + "\nretries=2\n";
        configure(*clients.emplace_back(std::make_unique<tavoClient>()), "unit1",
                  lines.mid(int(sizeof "[unit1]")));
        for (int unit = 2; unit <= 5; ++unit) {
            clients.push_back(std::make_unique<tavoClient>());
            clients.back()->deviceName = QStringLiteral("unit%1").arg(unit);
            clients.back()->loadConfig();
        }
        return clients;
    }

    static void turnOfTheLoop()
    {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, &QEventLoop::quit);
        loop.exec();
    }
};

QTEST_GUILESS_MAIN(tst_ManyClients)
#include "tst_manyclients.moc"
