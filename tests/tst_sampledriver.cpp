// The sample driver, loaded as the client loads it, against the simulator process: over a
// pseudo-terminal and over TCP, through the functions that the client gives to drivers.

#include "comm/commio.h"
#include "comm/driverapi.h"
#include "comm/serialport.h"
#include "comm/stopsource.h"
#include "tools/measurementrows.h"
#include "tools/settingrows.h"
#include "upssimprocess.h"
#include "warningguard.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLibrary>
#include <QMap>
#include <QTcpSocket>
#include <QTest>
#include <QThread>

#include <atomic>
#include <memory>

using namespace registermap;

namespace {

using Points = QMap<int, float>;

constexpr int patience = 20'000;   // ms
constexpr int longestQuery = 9000; // ms; the driver's own limit and some air
constexpr char historyName[] = "history.txt";

enum Transport { Rtu, Tcp };

/** The driver's two functions. */
struct Driver
{
    QueryFunction query = nullptr;
    ControlFunction control = nullptr;
};

Driver driver;

/** What a client has: an open port, and the address of its device. */
class Client
{
public:
    bool open(const UpsSimProcess &simulator, Transport transport)
    {
        if (transport == Tcp) {
            m_socket.connectToHost(QStringLiteral("127.0.0.1"), simulator.tcpPort());
            m_port = { &m_socket, TcpCommRead, TcpCommWrite };
            return m_socket.waitForConnected(patience);
        }
        m_port = { &m_serial, CommRead, CommWrite };
        return m_serial.CommOpen(simulator.terminalName(), QStringLiteral("9600,n,8,1"), 500);
    }

    int query()
    {
        m_points.clear();
        return driver.query(&m_port, 1, store, &m_points);
    }

    int control(const char *text)
    {
        char command[50] = {};
        qstrncpy(command, text, sizeof command);
        return driver.control(&m_port, 1, command, nullptr);
    }

    // A value of a new query; not a number when it failed or left the point out.
    float value(int id) { return query() ? m_points.value(id, qQNaN()) : float(qQNaN()); }
    const Points &points() const { return m_points; }

    QString text(int id, int length) const
    {
        QString result;
        for (int i = 0; i < length && m_points.value(id + i) > 0; ++i)
            result += QChar(ushort(m_points.value(id + i)));
        return result;
    }

private:
    static void store(int id, float value, void *context)
    {
        static_cast<Points *>(context)->insert(id, value);
    }

    SerialPort m_serial;
    QTcpSocket m_socket;
    PortDescriptor m_port {};
    Points m_points;
};

int expectedPoints()
{
    int count = eventCount;
    for (const SettingRow &row : settingRows)
        count += row.registers.count;
    for (const RegisterRow &row : measurementRows)
        count += row.count;
    return count;
}

QByteArray fileContents(const char *name)
{
    QFile file(QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const char *name, const QByteArray &bytes)
{
    QFile file(QString::fromLatin1(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

class tst_SampleDriver : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void readsEverything_data() { transports(); }
    void readsEverything();
    void misbehaviour_data();
    void misbehaviour();
    void silenceIsBounded_data() { transports(); }
    void silenceIsBounded();
    void lateReplyIsNotTakenForTheNext_data() { transports(); }
    void lateReplyIsNotTakenForTheNext();
    void commandsAct_data() { transports(); }
    void commandsAct();
    void settingsAreReadBack_data();
    void settingsAreReadBack();
    void refusedCommands_data();
    void refusedCommands();
    void historyIsTheSameOnBothTransports();
    void historyIsCompleteOrUntouched();
    void hostilePorts_data();
    void hostilePorts();
    void twoClientsAtOnce();
    void endsWithItsClient_data() { transports(); }
    void endsWithItsClient();
    void simulatorOptions_data();
    void simulatorOptions();
    void simulatorLeavesNothingBehind();

private:
    static void transports();
};

void tst_SampleDriver::transports()
{
    QTest::addColumn<int>("transport");
    QTest::newRow("rtu") << int(Rtu);
    QTest::newRow("tcp") << int(Tcp);
}

// Makes the simulator and a client on the row's transport.
#define START_ON(TRANSPORT)                                                                        \
    const WarningGuard guard;                                                                      \
    UpsSimProcess simulator;                                                                       \
    QVERIFY2(simulator.start(), qPrintable(simulator.message()));                                  \
    Client client;                                                                                 \
    QVERIFY(client.open(simulator, Transport(TRANSPORT)))

void tst_SampleDriver::initTestCase()
{
    QLibrary library(QStringLiteral("libkx300_g4_6-20k"));
    QVERIFY2(library.load(), qPrintable(library.errorString()));
    driver = { reinterpret_cast<QueryFunction>(library.resolve("Query")),
               reinterpret_cast<ControlFunction>(library.resolve("Control")) };
    QVERIFY(driver.query && driver.control);
}

void tst_SampleDriver::readsEverything()
{
    QFETCH(int, transport);
    START_ON(transport);
    QCOMPARE(client.query(), 1);
    QCOMPARE(client.points().size(), expectedPoints());
    QCOMPARE(client.points()[3007], 2.25f);
    QCOMPARE(client.points()[4241], 4.0f);
    QVERIFY(qAbs(client.points()[4164] - 230) < 3);
    QVERIFY(client.text(4016, 16).startsWith(QStringLiteral("KX300")));

    QVERIFY(simulator.perform("set flag 95 1"));
    QVERIFY(simulator.perform("battery off"));
    QTRY_COMPARE(client.value(2095), 1.0f);
    QCOMPARE(client.points()[2052], 1.0f); // battery disconnected
    QVERIFY2(!client.points().contains(4107), "no value, no point");
    QCOMPARE(guard.unexpected(), QStringList());
}

void tst_SampleDriver::misbehaviour_data()
{
    QTest::addColumn<int>("transport");
    QTest::addColumn<QByteArray>("fault"); // of one reply
    QTest::addColumn<int>("result");
    for (const int transport : { Rtu, Tcp }) {
        const auto row = [transport](const char *fault, int result) {
            QTest::addRow("%s: %s", transport == Rtu ? "rtu" : "tcp", fault)
                << transport << QByteArray(fault) << result;
        };
        row("line late 1200 1", 1);
        row("line silent 1", 1);
        row("line truncated 1", 1);
        row("line crc 1", 1);
        row("line unit 1", 1);
        row("line garbage 1", 1);
        row("line exception 2 1", 0);
        row("line exception 6 1", 1); // busy
    }
}

void tst_SampleDriver::misbehaviour()
{
    QFETCH(int, transport);
    QFETCH(QByteArray, fault);
    QFETCH(int, result);
    START_ON(transport);
    QVERIFY(simulator.perform(fault));
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(client.query(), result);
    QVERIFY(clock.elapsed() < longestQuery);
    // All of a reading, or none of it.
    QCOMPARE(client.points().size(), result ? expectedPoints() : 0);
    QVERIFY(simulator.perform("line ok"));
    QCOMPARE(client.query(), 1);
    QCOMPARE(client.points().size(), expectedPoints());
    QCOMPARE(guard.unexpected(), QStringList());
}

void tst_SampleDriver::silenceIsBounded()
{
    QFETCH(int, transport);
    START_ON(transport);
    QVERIFY(simulator.perform("line silent"));
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(client.query(), 0);
    QVERIFY(clock.elapsed() >= 3000 && clock.elapsed() < longestQuery);
    QCOMPARE(client.control("0,"), 0);
    QVERIFY(simulator.perform("line ok"));
    QCOMPARE(client.value(4241), 4.0f); // nothing of it reached the device
}

// Replies that all come too late fail the query; the last of them arrives during the next one.
void tst_SampleDriver::lateReplyIsNotTakenForTheNext()
{
    QFETCH(int, transport);
    START_ON(transport);
    QVERIFY(simulator.perform("line late 1300"));
    QCOMPARE(client.query(), 0);
    QVERIFY(simulator.perform("line ok"));
    QVERIFY(simulator.perform("set flag 33 1"));
    QTRY_COMPARE(client.value(2033), 1.0f);
    QCOMPARE(client.control("3005,18"), 1);
    QCOMPARE(client.control("3005,19"), 1);
    QCOMPARE(client.value(3005), 19.0f);
}

void tst_SampleDriver::commandsAct()
{
    QFETCH(int, transport);
    START_ON(transport);
    struct Row
    {
        const char *command;
        int id;
        float value;
    };
    // clang-format off
    const Row rows[] = {
        { "0,",  4241, 6 }, { "3,",  4241, 4 }, { "2,",  2094, 1 }, { "3,",  2094, 0 },
        { "10,", 4161, 1 }, { "11,", 4161, 2 }, { "9,",  4243, 0 }, { "7,",  4161, 2 },
        { "4,",  4221, 0 }, { "7,",  4221, 1 }, { "18,", 4244, 0 }, { "17,", 4244, 1 },
    };
    // clang-format on
    for (const Row &row : rows) {
        QCOMPARE(client.control(row.command), 1);
        QTRY_COMPARE_WITH_TIMEOUT(client.value(row.id), row.value, patience);
    }
    QVERIFY(simulator.perform("epo on"));
    QTRY_COMPARE_WITH_TIMEOUT(client.value(2030), 1.0f, patience);
    QVERIFY(simulator.perform("epo off"));
    QCOMPARE(client.control("7,"), 0); // while the emergency power off stands
    QCOMPARE(client.control("12,"), 1);
    QTRY_COMPARE_WITH_TIMEOUT(client.value(2030), 0.0f, patience);
}

void tst_SampleDriver::settingsAreReadBack_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<int>("id");
    QTest::addColumn<float>("value");
    QTest::newRow("whole number") << QByteArray("3005,18") << 3005 << 18.0f;
    QTest::newRow("hundredths") << QByteArray("3007,230") << 3007 << 2.3f;
    QTest::newRow("tenths") << QByteArray("3097,605") << 3097 << 60.5f;
    QTest::newRow("large") << QByteArray("3006,30000") << 3006 << 30000.0f;
    QTest::newRow("negative") << QByteArray("3003,-7") << 3003 << -7.0f;
    QTest::newRow("last of a text") << QByteArray("3071,0123456789") << 3080 << float('9');
    QTest::newRow("text that is too long") << QByteArray("3081,ABCDEFGHIJKLMNOP") << 3095 << 276.0f;
}

void tst_SampleDriver::settingsAreReadBack()
{
    QFETCH(QByteArray, command);
    QFETCH(int, id);
    START_ON(Rtu);
    QCOMPARE(client.control(command), 1);
    QTEST(client.value(id), "value");

    QCOMPARE(client.control("3081,A longer one"), 1);
    QCOMPARE(client.control("3081,ACME"), 1);
    QCOMPARE(client.query(), 1);
    QCOMPARE(client.text(3081, 14), QStringLiteral("ACME"));
    QCOMPARE(client.points()[3094], 0.0f);
}

void tst_SampleDriver::refusedCommands_data()
{
    QTest::addColumn<QByteArray>("command");
    for (const char *command :
         { "",         ",",       " 0,",          "x",      "-0,",      "+0,",    "0x,",
           "1,300",    "5,",      "99999999999,", "2999,1", "3005",     "3005,",  "3005,18x",
           "3005, 18", "3005,25", "3005,65553",   "3016,1", "3082,ABC", "3105,1", "4000,1" })
        QTest::addRow("\"%s\"", command) << QByteArray(command);
    QTest::newRow("a broken character") << QByteArray("3081,\xC3");
}

void tst_SampleDriver::refusedCommands()
{
    QFETCH(QByteArray, command);
    START_ON(Tcp);
    QCOMPARE(client.query(), 1);
    const Points before = client.points();
    QCOMPARE(client.control(command), 0);
    QCOMPARE(client.query(), 1);
    for (int id = firstSetting; id < firstSetting + settingCount; ++id)
        QCOMPARE(client.points().value(id), before.value(id));
    QCOMPARE(client.points()[4241], 4.0f); // an empty command must not start a battery test
}

void tst_SampleDriver::historyIsTheSameOnBothTransports()
{
    START_ON(Rtu);
    Client other;
    QVERIFY(other.open(simulator, Tcp));
    for (int i = 0; i < 2 * historyPage; ++i)
        QCOMPARE(client.control("12,"), 1);
    QCOMPARE(client.control("20,/somewhere/else.csv"), 1);
    const QByteArray overRtu = fileContents(historyName);
    QCOMPARE(other.control("20,"), 1);
    QCOMPARE(fileContents(historyName), overRtu);
    QVERIFY(QDir().entryList({ QStringLiteral("history.txt.*") }).isEmpty());

    const QList<QByteArray> lines = overRtu.split('\n');
    QCOMPARE(lines.size(), 2 + 2 * historyPage + 1); // two of the start, and the end
    for (int i = 0; i < lines.size() - 1; ++i) {
        const QList<QByteArray> fields = lines[i].split(' ');
        QCOMPARE(fields.size(), 7);
        QCOMPARE(fields[0].toInt(), i + 1);
        QVERIFY((fields[5].toInt() << 16 | fields[4].toInt()) < 86'400);
    }
    QVERIFY(lines[0].startsWith("1 112 1 0 "));

    QCOMPARE(other.control("13,"), 1);
    QCOMPARE(client.control("20,"), 1);
    QCOMPARE(fileContents(historyName).count('\n'), 1);
    QVERIFY(fileContents(historyName).contains(" 114 1 "));
    QCOMPARE(guard.unexpected(), QStringList());
}

void tst_SampleDriver::historyIsCompleteOrUntouched()
{
    START_ON(Rtu);
    for (int i = 0; i < 3 * historyPage; ++i)
        QCOMPARE(client.control("12,"), 1);
    writeFile(historyName, "as it was\n");
    QVERIFY(simulator.perform("line exception 4"));
    QCOMPARE(client.control("20,"), 0);
    QCOMPARE(fileContents(historyName), QByteArray("as it was\n"));
    QVERIFY(simulator.perform("line garbage 2"));
    QCOMPARE(client.control("20,"), 1);
    QCOMPARE(fileContents(historyName).count('\n'), 3 * historyPage + 2);

    // A folder in the file's place cannot be replaced.
    QVERIFY(QFile::remove(QString::fromLatin1(historyName)));
    QVERIFY(QDir().mkdir(QString::fromLatin1(historyName)));
    QCOMPARE(client.control("20,"), 0);
    QVERIFY(QDir().rmdir(QString::fromLatin1(historyName)));
    QVERIFY(QDir().entryList({ QStringLiteral("history.txt.*") }).isEmpty());
}

void tst_SampleDriver::hostilePorts_data()
{
    QTest::addColumn<int>("read"); // what a read returns; it fills the room with ones
    QTest::addColumn<int>("written");
    QTest::newRow("babble") << 200 << 8;
    QTest::newRow("more than there is room for") << 1'000'000 << 8;
    QTest::newRow("reads fail") << -1 << 8;
    QTest::newRow("nothing ever comes") << 0 << 8;
    QTest::newRow("writes fail") << 0 << -1;
    QTest::newRow("short writes") << 0 << 3;
}

void tst_SampleDriver::hostilePorts()
{
    struct Hostile
    {
        PortDescriptor port;
        int read;
        int written;
    };
    QFETCH(int, read);
    QFETCH(int, written);
    Hostile hostile { { &hostile,
                        [](void *handle, char *buffer, int length) {
                            const auto self = static_cast<Hostile *>(handle);
                            std::fill_n(buffer, qBound(0, self->read, length), '\x01');
                            return self->read;
                        },
                        [](void *handle, char *, int) {
                            return static_cast<Hostile *>(handle)->written;
                        } },
                      read,
                      written };
    int points = 0;
    const DataCallback count = [](int, float, void *context) { ++*static_cast<int *>(context); };
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(driver.query(&hostile.port, 1, count, &points), 0);
    QVERIFY(clock.elapsed() < longestQuery);
    QCOMPARE(points, 0);
    QCOMPARE(driver.query(nullptr, 1, count, &points), 0);
    QCOMPARE(driver.control(&hostile.port, 1, nullptr, nullptr), 0);
}

void tst_SampleDriver::twoClientsAtOnce()
{
    const WarningGuard guard;
    UpsSimProcess simulator;
    QVERIFY2(simulator.start(), qPrintable(simulator.message()));
    constexpr int rounds = 20;
    std::atomic<int> complete { 0 };
    std::vector<std::unique_ptr<QThread>> threads;
    for (const Transport transport : { Rtu, Tcp, Tcp }) {
        threads.emplace_back(QThread::create([&simulator, &complete, transport] {
            Client client;
            if (!client.open(simulator, transport))
                return;
            for (int i = 0; i < rounds; ++i)
                complete += client.query() && client.points().size() == expectedPoints();
        }));
        threads.back()->start();
    }
    for (const auto &thread : threads)
        QVERIFY(thread->wait(60'000));
    QCOMPARE(complete.load(), 3 * rounds);
    QCOMPARE(guard.unexpected(), QStringList());
}

// A client that is being deleted asks its thread's waits to end; the driver must give up then.
void tst_SampleDriver::endsWithItsClient()
{
    QFETCH(int, transport);
    UpsSimProcess simulator;
    QVERIFY2(simulator.start(), qPrintable(simulator.message()));
    QVERIFY(simulator.perform("line silent"));
    StopSource stop;
    std::atomic<bool> querying { false };
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        const StopSource::Scope scope(stop);
        Client client;
        if (!client.open(simulator, Transport(transport)))
            return;
        querying = true;
        client.query();
    }));
    thread->start();
    QTRY_VERIFY_WITH_TIMEOUT(querying.load(), patience);
    QVERIFY(!thread->wait(200)); // well into its first request
    stop.request();
    QVERIFY(thread->wait(900));
}

void tst_SampleDriver::simulatorOptions_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char *arguments, const char *message) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments).split(QLatin1Char(' '))
                                 << QByteArray(message);
    };
    row("--verbose", "nothing to serve");
    row("--tcp 127.0.0.1", "is not an address and a port");
    row("--tcp 203.0.113.1:0", "cannot listen on");
    row("--pty /", "cannot make the link");
    row("--pty ups --address 248", "1 to 247");
    row("--pty ups --scenario nowhere", "there are: normal, mains-failure");
    row("--pty ups --script absent", "absent: ");
    row("--pty ups --script bad.script", "bad.script: line 2");
    row("--pty ups --scenario bypass --script x", "exclude each other");
}

void tst_SampleDriver::simulatorOptions()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, message);
    writeFile("bad.script", "0 mains off\n1 mains maybe\n");
    QProcess process;
    process.start(QStringLiteral(UPSSIM_FILE), arguments);
    QVERIFY(process.waitForFinished(patience));
    QCOMPARE(process.exitCode(), 1);
    const QByteArray said = process.readAllStandardError();
    QVERIFY2(said.contains(message), said.constData());
    QVERIFY(!QFileInfo(QStringLiteral("ups")).isSymLink());
}

void tst_SampleDriver::simulatorLeavesNothingBehind()
{
    UpsSimProcess simulator;
    // A link that a killed simulator left behind.
    QVERIFY(QFile::link(QStringLiteral("/dev/pts/nowhere"), simulator.terminalName()));
    QVERIFY2(simulator.start(), qPrintable(simulator.message()));
    Client client;
    QVERIFY(client.open(simulator, Rtu));
    QCOMPARE(client.query(), 1);
    QVERIFY(!simulator.perform("mains maybe"));
    QCOMPARE(simulator.terminate(), 0);
    QVERIFY(!QFileInfo(simulator.terminalName()).isSymLink());
    QCOMPARE(client.query(), 0);
}

QTEST_GUILESS_MAIN(tst_SampleDriver)
#include "tst_sampledriver.moc"
