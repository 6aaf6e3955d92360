// The simulator as its peers see it: requests in any pieces, slow and idle peers, long lines.

#include "guardedtest.h"
#include "requestreader.h"
#include "upssimprocess.h"

#include <QFile>
#include <QTcpSocket>
#include <QTimer>

#include <fcntl.h>
#include <unistd.h>

using namespace upssim;

namespace {

const QByteArray tcpRead = QByteArray::fromHex("000100000006010300050001"); // setting 3005
const QByteArray tcpAnswer = QByteArray::fromHex("0001000000050103020014");
const QByteArray rtuRead = QByteArray::fromHex("010300050001940b");
const QByteArray rtuAnswer = QByteArray::fromHex("0103020014b84b");

/** A client of the simulator that waits for nothing by itself. */
class Peer
{
public:
    explicit Peer(const UpsSimProcess &simulator, bool tcp = true)
        : m_tcp(tcp)
    {
        if (tcp)
            m_socket.connectToHost(QStringLiteral("127.0.0.1"), simulator.tcpPort());
        else
            m_terminal = open(QFile::encodeName(simulator.terminalName()).constData(),
                              O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    }
    ~Peer()
    {
        if (m_terminal >= 0)
            close(m_terminal);
    }

    void send(const QByteArray &bytes)
    {
        if (m_tcp)
            m_socket.write(bytes);
        else if (write(m_terminal, bytes.constData(), size_t(bytes.size())) != bytes.size())
            m_received = "the terminal takes nothing";
    }

    QByteArray received()
    {
        if (m_tcp)
            return m_received += m_socket.readAll();
        char buffer[512];
        const auto count = read(m_terminal, buffer, sizeof buffer);
        return m_received.append(buffer, count > 0 ? int(count) : 0);
    }

    bool isConnected() const { return m_socket.state() == QAbstractSocket::ConnectedState; }
    bool isGone() const { return m_socket.state() == QAbstractSocket::UnconnectedState; }

private:
    const bool m_tcp;
    QTcpSocket m_socket;
    int m_terminal = -1;
    QByteArray m_received;
};

} // namespace

class tst_UpsSimLines : public GuardedTest
{
    Q_OBJECT

private slots:
    void requestsOnALine_data()
    {
        // pieces: an empty one is silence
        const Columns<QStringList, QStringList> row("pieces", "requests");
        const QString request = QString::fromLatin1(rtuRead.toHex());
        const QString write = QStringLiteral("01100005000204000a0014139d");
        const QString unknown = QStringLiteral("0111c02c");
        const QStringList one { request };
        row("two in one piece", QStringList { request + write }, QStringList { request, write });
        row("in two pieces", QStringList { write.left(14), write.mid(14) }, QStringList { write });
        row("cut off by silence", QStringList { write.left(20), {}, request }, one);
        row("noise, then silence", QStringList { "00ff41", {}, request }, one);
        row("wrong CRC", QStringList { "010300050001940c", request }, one);
        row("noise without end",
            QStringList {
                QString(400, QLatin1Char('4')), QString(400, QLatin1Char('4')), {}, request },
            one);
        row("unknown function", QStringList { unknown, {}, request },
            QStringList { unknown, request });
    }

    void requestsOnALine()
    {
        QFETCH(QStringList, pieces);
        RequestReader reader(modbus::Framing::Rtu);
        QStringList requests;
        const auto note = [&requests](const QByteArray &request) {
            requests.append(QString::fromLatin1(request.toHex()));
        };
        for (const QString &piece : pieces) {
            const QByteArray bytes = QByteArray::fromHex(piece.toLatin1());
            reader.append(bytes.constData(), bytes.size());
            while (const auto request = reader.next())
                note(*request);
            if (const auto request = bytes.isEmpty() ? reader.silence() : std::nullopt)
                note(*request);
        }
        QTEST(requests, "requests");
        QVERIFY(!reader.pending());
    }

    void oddRequestsOnTcp_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("answer"); // empty: the connection ends
        const auto row = [](const char *name, const char *request, const char *answer) {
            QTest::newRow(name) << QByteArray::fromHex(request) << QByteArray::fromHex(answer);
        };
        row("unknown function", "000200000002 0111", "000200000003 019101");
        row("too short for a read", "000200000004 01030005", "000200000003 018303");
        row("fewer values than announced", "00020000000a 01100005000204001200",
            "000200000003 019003");
        row("more values than announced", "00020000000a 01100005000102001200",
            "000200000003 019003");
        row("length without a function", "000200000001 01", "");
        row("length beyond any frame", "0002000000ff 01", "");
        row("another protocol", "000200010006 010300050001", "");
    }

    void oddRequestsOnTcp()
    {
        QFETCH(QByteArray, request);
        QFETCH(QByteArray, answer);
        UpsSimProcess simulator;
        QVERIFY2(simulator.start(), qPrintable(simulator.message()));
        Peer peer(simulator);
        QTRY_VERIFY(peer.isConnected());
        peer.send(request + tcpRead);
        QTRY_COMPARE(peer.received(), answer.isEmpty() ? answer : answer + tcpAnswer);
        QTRY_COMPARE(peer.isGone(), answer.isEmpty());
    }

    void slowPeerHoldsNobodyUp_data()
    {
        const Columns<bool> row("tcp");
        row("another peer", true);
        row("the pseudo-terminal", false);
    }

    // One peer sends a long request byte by byte, and in the end gets its answer.
    void slowPeerHoldsNobodyUp()
    {
        QFETCH(bool, tcp);
        UpsSimProcess simulator;
        QVERIFY2(simulator.start(), qPrintable(simulator.message()));
        Peer slow(simulator);
        QByteArray rest = QByteArray::fromHex("00010000002f0110000500142800120002")
            + QByteArray(19 * 2, '\0'); // writes 20 settings, some of them not allowed
        rest.truncate(6 + 0x2f);
        QTimer drip;
        connect(&drip, &QTimer::timeout, this, [&] {
            slow.send(rest.left(1));
            rest.remove(0, 1);
            if (rest.isEmpty())
                drip.stop();
        });
        drip.start(40);
        QTRY_VERIFY(rest.size() < 45); // it has begun

        Peer other(simulator, tcp);
        Stopwatch clock;
        other.send(tcp ? tcpRead : rtuRead);
        QTRY_COMPARE(other.received(), tcp ? tcpAnswer : rtuAnswer);
        QVERIFY(clock.elapsed() < 1000);
        QVERIFY(!rest.isEmpty());
        QTRY_COMPARE(slow.received(), QByteArray::fromHex("000100000003019003"));
    }

    // Whoever asks keeps its place; the one that was silent longest makes room.
    void idlePeersMakeRoom()
    {
        UpsSimProcess simulator;
        QVERIFY2(simulator.start(), qPrintable(simulator.message()));
        std::vector<std::unique_ptr<Peer>> idle;
        Peer busy(simulator);
        for (int i = 0; i < 15; ++i) {
            idle.push_back(std::make_unique<Peer>(simulator));
            QTRY_VERIFY(idle.back()->isConnected());
        }
        busy.send(tcpRead);
        QTRY_COMPARE(busy.received(), tcpAnswer);
        Peer late(simulator);
        late.send(tcpRead);
        QTRY_COMPARE(late.received(), tcpAnswer);
        QTRY_VERIFY(idle.front()->isGone());
        busy.send(tcpRead);
        QTRY_COMPARE(busy.received(), tcpAnswer + tcpAnswer);
    }

    // The far end tells what it got, and what became of it.
    void tellsWhatItGot()
    {
        UpsSimProcess simulator;
        QVERIFY2(simulator.start(), qPrintable(simulator.message()));
        Peer peer(simulator);
        const auto answerTo = [&peer](const char *pdu) {
            const QByteArray bytes = QByteArray::fromHex(pdu);
            const int before = peer.received().size();
            peer.send(QByteArray::fromHex("0000000000") + char(bytes.size() + 1) + '\x01' + bytes);
            const bool came = QTest::qWaitFor([&] { return peer.received().size() > before; });
            return came ? peer.received().mid(before + 7).toHex() : QByteArray();
        };
        QCOMPARE(simulator.ask("show write"), QByteArray("0"));
        QCOMPARE(simulator.ask("show state"), QByteArray("mode 4 path inverter task none"));
        QCOMPARE(answerTo("0601000000"), QByteArray("0601000000"));
        QCOMPARE(simulator.ask("show write"), QByteArray("1 command 0 accepted"));
        QTRY_COMPARE(simulator.ask("show state"), QByteArray("mode 6 path inverter task test"));
        QVERIFY(simulator.perform("refuse on 1"));
        QCOMPARE(answerTo("0601000004"), QByteArray("8604"));
        QCOMPARE(simulator.ask("show write"), QByteArray("2 command 4 exception 4"));
        QCOMPARE(answerTo("0601000004"), QByteArray("0601000004"));
        QTRY_COMPARE(simulator.ask("show state"), QByteArray("mode 2 path off task none"));
        QCOMPARE(answerTo("0600050063"), QByteArray("8603"));
        QCOMPARE(simulator.ask("show write"), QByteArray("4 setting 3005 99 exception 3"));
        QCOMPARE(answerTo("10000500020400120041"), QByteArray("1000050002"));
        QCOMPARE(simulator.ask("show write"), QByteArray("5 setting 3005 18 65 accepted"));
        QCOMPARE(simulator.ask("show register 3005"), QByteArray("18"));
        QCOMPARE(simulator.ask("show register 3999"), QByteArray());
    }

    // A line that is too long must not run in part, nor be the last one that is read.
    void longLinesAreRefusedWhole()
    {
        UpsSimProcess simulator;
        QVERIFY2(simulator.start(), qPrintable(simulator.message()));
        QVERIFY(!simulator.perform(QByteArray(4096, ' ') + "mains off"));
        QCOMPARE(simulator.message(), QStringLiteral("error line of more than 4096 bytes"));
        QVERIFY(simulator.perform(QByteArray(4095 - 8, ' ') + "mains on"));
    }
};

QTEST_GUILESS_MAIN(tst_UpsSimLines)
#include "tst_upssimlines.moc"
