// The sample driver, loaded as the client loads it, against the simulator process: over a
// pseudo-terminal and over TCP, through the functions that the client gives to drivers.

#include "driverclient.h"
#include "guardedtest.h"
#include "measurementrows.h"
#include "settingrows.h"
#include "stopsource.h"
#include "upssimprocess.h"

#include <atomic>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

using namespace registermap;

namespace {

constexpr int patience = 20'000; // ms

volatile std::sig_atomic_t downloadFlags = -1; // of the descriptor that a download writes to

void lookAtDownload(int)
{
    const int error = errno;
    for (int descriptor = 3; descriptor < 256; ++descriptor) {
        char link[32];
        char target[PATH_MAX] = {};
        std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
        if (readlink(link, target, sizeof target - 1) > 0 && std::strstr(target, "history.txt."))
            downloadFlags = fcntl(descriptor, F_GETFD);
    }
    errno = error;
}

int expectedPoints()
{
    int count = eventCount;
    for (const SettingRow &row : settingRows)
        count += row.registers.count;
    for (const RegisterRow &row : measurementRows)
        count += row.count;
    return count;
}

} // namespace

class tst_SampleDriver : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(loadDriver().query, "no driver"); }

    void init()
    {
        GuardedTest::init();
        m_simulator = std::make_unique<UpsSimProcess>();
        QVERIFY2(m_simulator->start(), qPrintable(m_simulator->message()));
        m_client = std::make_unique<DriverClient>();
        const bool tcp = QByteArray(QTest::currentDataTag()).startsWith("tcp");
        QVERIFY(m_client->open(*m_simulator, tcp));
    }

    void cleanup()
    {
        m_client.reset();
        m_simulator.reset();
        GuardedTest::cleanup();
    }

    // On TCP units 0 and 255 are the peer itself, which answers.
    void unitsOfThePeerItself_data()
    {
        const Columns<int> row("address");
        row("tcp: 0", 0);
        row("tcp: 255", 255);
    }

    void unitsOfThePeerItself()
    {
        QFETCH(int, address);
        m_client->setAddress(address);
        QCOMPARE(m_client->query(), 1);
        QCOMPARE(m_client->control("3005,18"), 1);
        QCOMPARE(m_client->value(3005), 18.0f);
    }

    void noValueNoPoint()
    {
        QCOMPARE(m_client->query(), 1);
        QVERIFY(m_client->points().contains(4107));
        QVERIFY(m_simulator->perform("battery off"));
        QTRY_COMPARE(m_client->value(2052), 1.0f); // battery disconnected
        QVERIFY(!m_client->points().contains(4107));
    }

    void misbehaviour_data()
    {
        QTest::addColumn<QByteArray>("fault"); // of one reply, or of all
        QTest::addColumn<int>("result");
        const auto row = [](const char *transport, const char *fault, int result) {
            QTest::addRow("%s: %s", transport, fault) << QByteArray(fault) << result;
        };
        const auto both = [&row](const char *fault, int result) {
            row("rtu", fault, result);
            row("tcp", fault, result);
        };
        both("line truncated 1", 1);
        both("line crc 1", 1);
        both("line unit 1", 1);
        both("line garbage 1", 1);
        both("line exception 2 1", 0);
        row("rtu", "line exception 6 1", 1); // busy
        row("rtu", "line silent", 0);
        both("line late 1300", 0); // the last reply arrives during the next query
    }

    void misbehaviour()
    {
        QFETCH(QByteArray, fault);
        QFETCH(int, result);
        QVERIFY(m_simulator->perform(fault));
        Stopwatch clock;
        QCOMPARE(m_client->query(), result);
        QVERIFY(clock.elapsed() < longestQuery);
        // All of a reading, or none of it.
        QCOMPARE(m_client->points().size(), result ? expectedPoints() : 0);
        QVERIFY(m_simulator->perform("line ok"));
        QVERIFY(m_simulator->perform("set flag 33 1"));
        QTRY_COMPARE(m_client->value(2033), 1.0f); // and no reply taken for another
        QCOMPARE(m_client->points().size(), expectedPoints());
        QCOMPARE(m_client->control("3005,18"), 1);
        QCOMPARE(m_client->value(3005), 18.0f);
    }

    // What fits; the rest is walked through.
    void texts()
    {
        for (const char *command : { "3081,ABCDEFGHIJKLMNOP", "3081,ACME" })
            QCOMPARE(m_client->control(command), 1);
        QCOMPARE(m_client->query(), 1);
        QCOMPARE(m_client->text(3081, 14), QStringLiteral("ACME"));
        QCOMPARE(m_client->points()[3094], 0.0f);
        QCOMPARE(m_client->points()[3095], 276.0f); // what follows stays
        QVERIFY(m_simulator->perform("epo on"));
        QTRY_COMPARE_WITH_TIMEOUT(m_client->value(2030), 1.0f, patience);
        QCOMPARE(m_client->control("7,"), 0); // while the emergency power off stands
    }

    void refusedCommands()
    {
        // clang-format off
        const char *const commands[] = {
            "", ",", " 0,", "x", "-0,", "+0,", "0x,", "1,300", "5,", "99999999999,", "2999,1", "3005",
            "3005,", "3005,18x", "3005, 18", "3005,25", "3005,65553", "3016,1", "3082,ABC", "3105,1",
            "4000,1", "3081,\xC3",
        };
        // clang-format on
        QCOMPARE(m_client->query(), 1);
        const QMap<int, float> before = m_client->points();
        for (const char *const command : commands)
            QVERIFY2(m_client->control(command) == 0, command);
        QCOMPARE(m_client->query(), 1);
        for (int id = firstSetting; id < firstSetting + settingCount; ++id)
            QCOMPARE(m_client->points().value(id), before.value(id));
        QCOMPARE(m_client->points()[4241], 4.0f); // an empty command must not start a battery test
    }

    void historyIsCompleteOrUntouched()
    {
        const QString name = QStringLiteral("history.txt");
        for (int i = 0; i < 2 * historyPage; ++i)
            QCOMPARE(m_client->control("12,"), 1);
        QVERIFY(writeFile(name, "as it was\n"));
        QVERIFY(m_simulator->perform("line exception 4"));
        QCOMPARE(m_client->control("20,"), 0);
        QCOMPARE(fileContents(name), QByteArray("as it was\n"));
        QVERIFY(m_simulator->perform("line garbage 2"));
        QCOMPARE(m_client->control("20,/somewhere/else.csv"), 1);
        const QList<QByteArray> lines = fileContents(name).split('\n');
        QCOMPARE(lines.size(), 2 + 2 * historyPage + 1); // two of the start, and the end
        for (int i = 0; i < lines.size() - 1; ++i) {
            const QList<QByteArray> fields = lines[i].split(' ');
            QCOMPARE(fields.size(), 7);
            QCOMPARE(fields[0].toInt(), i + 1);
            QVERIFY((fields[5].toInt() << 16 | fields[4].toInt()) < 86'400);
        }
        QVERIFY(lines[0].startsWith("1 112 1 0 "));
        QVERIFY(m_client->control("13,") && m_client->control("20,"));
        QCOMPARE(fileContents(name).count('\n'), 1);
        QVERIFY(fileContents(name).contains(" 114 1 "));

        // A folder in the file's place cannot be replaced.
        QVERIFY(QFile::remove(name) && QDir().mkdir(name));
        QCOMPARE(m_client->control("20,"), 0);
        QCOMPARE(QDir().entryList({ name + '*' }), QStringList(name));
    }

    // The disk is full; the signal that says so comes while the file is open.
    void failedDownloadLeavesTheFile()
    {
        const QString name = QStringLiteral("history.txt");
        QVERIFY(writeFile(name, "as it was\n"));
        m_guard->expect(QStringLiteral("log_.*File too large")); // the line's traffic log
        const rlimit none { 0, RLIM_INFINITY };
        rlimit before {};
        getrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, lookAtDownload);
        setrlimit(RLIMIT_FSIZE, &none);
        const int result = m_client->control("20,");
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, SIG_DFL);
        QCOMPARE(result, 0);
        QCOMPARE(fileContents(name), QByteArray("as it was\n"));
        QCOMPARE(QDir().entryList({ name + '*' }), QStringList(name));
#ifndef __SANITIZE_THREAD__                       // which puts the signal off
        QCOMPARE(int(downloadFlags), FD_CLOEXEC); // the host's child processes get nothing of it
#endif
    }

    // A client that is being deleted asks its thread's waits to end; the driver must give up then.
    void endsWithItsClient()
    {
        QVERIFY(m_simulator->perform("line silent"));
        StopSource stop;
        std::atomic<int> result { -1 };
        const int before = DriverClient::requests;
        std::thread thread([&] {
            const StopSource::Scope scope(stop);
            DriverClient client;
            result = client.open(*m_simulator, false) ? client.query() : -2;
        });
        const bool asked =
            QTest::qWaitFor([before] { return DriverClient::requests > before; }, patience);
        Stopwatch clock;
        stop.request();
        thread.join();
        QVERIFY(asked);
        QVERIFY(clock.elapsed() < 900);
        QCOMPARE(result.load(), 0);
    }

private:
    std::unique_ptr<UpsSimProcess> m_simulator;
    std::unique_ptr<DriverClient> m_client;
};

QTEST_GUILESS_MAIN(tst_SampleDriver)
#include "tst_sampledriver.moc"
