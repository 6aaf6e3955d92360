// The sample driver, loaded as the client loads it, against the simulator process: over a
// pseudo-terminal and over TCP, through the functions that the client gives to drivers.

#include "comm/commio.h"
#include "comm/driverapi.h"
#include "comm/serialport.h"
#include "comm/stopsource.h"
#include "guardedtest.h"
#include "tools/measurementrows.h"
#include "tools/settingrows.h"
#include "upssimprocess.h"

#include <QTcpSocket>

#include <atomic>
#include <memory>
#include <thread>

using namespace registermap;

namespace {

using Points = QMap<int, float>;

constexpr int patience = 20'000;   // ms
constexpr int longestQuery = 9000; // ms; the driver's own limit and some air

/** The driver's two functions. */
struct Driver
{
    QueryFunction query = nullptr;
    ControlFunction control = nullptr;
};

Driver driver;

/** A command, and a value that shows its effect. */
struct Row
{
    const char *command;
    int id;
    float value;
};

/** What a client has: an open port, and the address of its device. */
class Client
{
public:
    bool open(const UpsSimProcess &simulator, bool tcp)
    {
        if (tcp) {
            m_socket.connectToHost(QStringLiteral("127.0.0.1"), simulator.tcpPort());
            m_port = { &m_socket, TcpCommRead, write<TcpCommWrite> };
            return m_socket.waitForConnected(patience);
        }
        m_port = { &m_serial, CommRead, write<CommWrite> };
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

    static std::atomic<int> requests; // of all clients

private:
    template <IoFunction function> static int write(void *handle, char *buffer, int length)
    {
        ++requests;
        return function(handle, buffer, length);
    }

    static void store(int id, float value, void *context)
    {
        static_cast<Points *>(context)->insert(id, value);
    }

    SerialPort m_serial;
    QTcpSocket m_socket;
    PortDescriptor m_port {};
    Points m_points;
};

std::atomic<int> Client::requests { 0 };

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
    void initTestCase()
    {
        QLibrary library(QStringLiteral("libkx300_g4_6-20k"));
        QVERIFY2(library.load(), qPrintable(library.errorString()));
        driver = { reinterpret_cast<QueryFunction>(library.resolve("Query")),
                   reinterpret_cast<ControlFunction>(library.resolve("Control")) };
        QVERIFY(driver.query && driver.control);
    }

    void init()
    {
        GuardedTest::init();
        m_simulator = std::make_unique<UpsSimProcess>();
        QVERIFY2(m_simulator->start(), qPrintable(m_simulator->message()));
        m_client = std::make_unique<Client>();
        const bool tcp = QByteArray(QTest::currentDataTag()).startsWith("tcp");
        QVERIFY(m_client->open(*m_simulator, tcp));
    }

    void cleanup()
    {
        m_client.reset();
        m_simulator.reset();
        GuardedTest::cleanup();
    }

    void readsEverything_data() { transports(); }

    void readsEverything()
    {
        QCOMPARE(m_client->query(), 1);
        QCOMPARE(m_client->points().size(), expectedPoints());
        QCOMPARE(m_client->points()[3007], 2.25f);
        QCOMPARE(m_client->points()[4241], 4.0f);
        QVERIFY(qAbs(m_client->points()[4164] - 230) < 3);
        QVERIFY(m_client->text(4016, 16).startsWith(QStringLiteral("KX300")));

        QVERIFY(m_simulator->perform("set flag 95 1"));
        QVERIFY(m_simulator->perform("battery off"));
        QTRY_COMPARE(m_client->value(2095), 1.0f);
        QCOMPARE(m_client->points()[2052], 1.0f); // battery disconnected
        QVERIFY2(!m_client->points().contains(4107), "no value, no point");
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

    void commandsAct_data() { transports(); }

    void commandsAct()
    {
        // clang-format off
        const Row rows[] = {
            { "0,",  4241, 6 }, { "3,",  4241, 4 }, { "2,",  2094, 1 }, { "3,",  2094, 0 },
            { "10,", 4161, 1 }, { "11,", 4161, 2 }, { "9,",  4243, 0 }, { "7,",  4161, 2 },
            { "4,",  4221, 0 }, { "7,",  4221, 1 }, { "18,", 4244, 0 }, { "17,", 4244, 1 },
            { "3005,18",    3005, 18 },    { "3007,230", 3007, 2.3f }, { "3097,605",        3097, 60.5f },
            { "3006,30000", 3006, 30000 }, { "3003,-7",  3003, -7 },   { "3071,0123456789", 3080, '9' },
            { "3081,ABCDEFGHIJKLMNOP", 3095, 276 }, // too long; what follows stays
        };
        // clang-format on
        for (const Row &row : rows) {
            QCOMPARE(m_client->control(row.command), 1);
            QTRY_COMPARE_WITH_TIMEOUT(m_client->value(row.id), row.value, patience);
        }
        QVERIFY(m_simulator->perform("epo on"));
        QTRY_COMPARE_WITH_TIMEOUT(m_client->value(2030), 1.0f, patience);
        QCOMPARE(m_client->control("7,"), 0); // while the emergency power off stands
        QCOMPARE(m_client->control("3081,ACME"), 1);
        QCOMPARE(m_client->query(), 1);
        QCOMPARE(m_client->text(3081, 14), QStringLiteral("ACME"));
        QCOMPARE(m_client->points()[3094], 0.0f);
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
        const Points before = m_client->points();
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
        QCOMPARE(m_client->control("13,") + m_client->control("20,"), 2);
        QCOMPARE(fileContents(name).count('\n'), 1);
        QVERIFY(fileContents(name).contains(" 114 1 "));

        // A folder in the file's place cannot be replaced.
        QVERIFY(QFile::remove(name) && QDir().mkdir(name));
        QCOMPARE(m_client->control("20,"), 0);
        QCOMPARE(QDir().entryList({ name + '*' }), QStringList(name));
    }

    // Babble, more than there is room for, failures, silence, short writes.
    void hostilePorts()
    {
        static int read; // a read's result, which fills the room with ones
        static int written;
        const int rows[][2] = { { 200, 8 }, { 1'000'000, 8 }, { -1, 8 }, { 0, 3 } };
        PortDescriptor port { &read,
                              [](void *, char *buffer, int length) {
                                  std::fill_n(buffer, qBound(0, read, length), '\x01');
                                  return read;
                              },
                              [](void *, char *, int) { return written; } };
        int points = 0;
        const DataCallback count = [](int, float, void *context) {
            ++*static_cast<int *>(context);
        };
        for (const auto &row : rows) {
            read = row[0];
            written = row[1];
            Stopwatch clock;
            QCOMPARE(driver.query(&port, 1, count, &points), 0);
            QVERIFY(clock.elapsed() < longestQuery);
        }
        QCOMPARE(driver.query(nullptr, 1, count, &points), 0);
        QCOMPARE(driver.control(&port, 1, nullptr, nullptr), 0);
        QCOMPARE(points, 0);
    }

    // A client that is being deleted asks its thread's waits to end; the driver must give up then.
    void endsWithItsClient()
    {
        QVERIFY(m_simulator->perform("line silent"));
        StopSource stop;
        std::atomic<int> result { -1 };
        const int before = Client::requests;
        std::thread thread([&] {
            const StopSource::Scope scope(stop);
            Client client;
            result = client.open(*m_simulator, false) ? client.query() : -2;
        });
        const bool asked =
            QTest::qWaitFor([before] { return Client::requests > before; }, patience);
        Stopwatch clock;
        stop.request();
        thread.join();
        QVERIFY(asked);
        QVERIFY(clock.elapsed() < 900);
        QCOMPARE(result.load(), 0);
    }

private:
    static void transports()
    {
        QTest::addColumn<bool>("tcp");
        QTest::newRow("rtu") << false;
        QTest::newRow("tcp") << true;
    }

    std::unique_ptr<UpsSimProcess> m_simulator;
    std::unique_ptr<Client> m_client;
};

QTEST_GUILESS_MAIN(tst_SampleDriver)
#include "tst_sampledriver.moc"
