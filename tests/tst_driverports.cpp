// The sample driver on ports that only seem to be some: whom it writes to, and what it takes from
// them.

#include "driverclient.h"
#include "guardedtest.h"

#include <QBuffer>
#include <QSet>

class tst_DriverPorts : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_driver = loadDriver();
        QVERIFY(m_driver.query && m_driver.control && m_driver.tcpRead);
    }

    void addresses_data()
    {
        // asked: with reads; commanded: without an answer to anything
        const Columns<bool, int, bool, bool> row("tcp", "address", "asked", "commanded");
        // clang-format off
        row("line: the first", false, 1, true, true);
        row("line: the last", false, 247, true, true);
        row("line: broadcast", false, 0, false, false);
        row("line: reserved", false, 248, false, false);
        row("line: the device itself", false, 255, false, false);
        row("line: 256 is no 0", false, 256, false, false);
        row("line: 261 is no 5", false, 261, false, false);
        row("line: -251 is no 5", false, -251, false, false);
        row("tcp: the device itself", true, 255, true, true);
        row("tcp: itself, or a broadcast", true, 0, true, false);
        row("tcp: reserved", true, 248, false, false);
        row("tcp: 261 is no 5", true, 261, false, false);
        row("tcp: -1 is no 255", true, -1, false, false);
        // clang-format on
    }

    // A command that reaches another unit than the one meant shuts a wrong load down.
    void addresses()
    {
        QFETCH(bool, tcp);
        QFETCH(int, address);
        static QList<QByteArray> sent;
        QBuffer silent; // has a QIODevice's shape and never a reply
        PortDescriptor port { static_cast<QIODevice *>(&silent),
                              tcp ? m_driver.tcpRead : [](void *, char *, int) { return -1; },
                              [](void *, char *frame, int length) {
                                  sent.append(QByteArray(frame, length));
                                  return length;
                              } };
        const auto functions = [address] {
            QSet<int> all;
            for (const QByteArray &frame : qAsConst(sent))
                all.insert(quint8(frame[0]) == address ? frame[1] : -1);
            return all;
        };
        sent.clear();
        QCOMPARE(m_driver.query(
                     &port, address, [](int, float, void *) {}, nullptr),
                 0);
        QTEST(functions() == QSet<int> { 2 }, "asked");
        sent.clear();
        for (QByteArray command : { "4,", "3005,18", "3081,ACME" })
            QCOMPARE(m_driver.control(&port, address, command.data(), nullptr), 0);
        QTEST((functions() == QSet<int> { 6, 16 }), "commanded");
        QTEST(!sent.isEmpty(), "asked");
        QVERIFY(!functions().contains(-1));
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
            QCOMPARE(m_driver.query(&port, 1, count, &points), 0);
            QVERIFY(clock.elapsed() < longestQuery);
        }
        QCOMPARE(m_driver.query(nullptr, 1, count, &points), 0);
        QCOMPARE(m_driver.control(&port, 1, nullptr, nullptr), 0);
        QCOMPARE(points, 0);
    }

private:
    Driver m_driver;
};

QTEST_GUILESS_MAIN(tst_DriverPorts)
#include "tst_driverports.moc"
