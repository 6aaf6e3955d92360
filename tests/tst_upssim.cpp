// The simulated UPS: its behaviour in time, its scripts, and what its peers see of it: requests in
// any pieces, slow and idle peers, long lines.

#include "guardedtest.h"
#include "requestreader.h"
#include "simulator.h"
#include "upssimprocess.h"

#include <QFile>
#include <QTcpSocket>
#include <QTimer>

#include <fcntl.h>
#include <unistd.h>

using namespace registermap;
using namespace upssim;

namespace {

using Contents = QVector<int>; // history contents, negative for "disappeared"

constexpr int appeared(int event)
{
    return upscontent::FirstEvent + event;
}
constexpr int over(int event)
{
    return -appeared(event);
}

void run(Simulator &simulator, double seconds)
{
    for (int i = 0; i < qRound(seconds * 10); ++i)
        simulator.advance(0.1);
}

// Whether `expected` occurs in `all` in that order, with anything in between.
bool isSubsequence(const Contents &expected, const Contents &all)
{
    int found = 0;
    for (const int content : all) {
        if (found < expected.size() && content == expected[found])
            ++found;
    }
    return found == expected.size();
}

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

class tst_UpsSim : public GuardedTest
{
    Q_OBJECT

private slots:
    void scenarios_data()
    {
        using namespace upscontent;
        using namespace upsevent;
        // mode: at the end
        const Columns<int, int, Contents> row("seconds", "mode", "expected");

        // clang-format off
        row("normal", 60, 4, Contents { Started, OutputFromInverter });
        row("mains-failure", 60, 4, Contents {
            appeared(AbnormalInput), InputFromBattery, appeared(BatteryLow), over(BatteryLow), over(AbnormalInput), InputFromMains });
        row("battery-discharge", 90, 4, Contents {
            appeared(BatteryLow), appeared(EndOfDischarge), OutputOff, over(EndOfDischarge), InputFromMains, OutputFromInverter });
        row("overload", 40, 4, Contents {
            appeared(OverloadAlarm), appeared(Overload), OutputFromBypass, over(OverloadAlarm), FaultCleared, OutputFromInverter });
        row("bypass", 20, 3, Contents { ManualBypass, OutputFromBypass });
        row("fan-fault", 90, 4, Contents {
            appeared(FanFault), appeared(OverTemperature), OutputFromBypass, over(FanFault), FaultCleared, OutputFromInverter });
        row("stopped", 10, 2, Contents { ManualShutDown, OutputOff });
        // clang-format on
    }

    void scenarios()
    {
        QFETCH(int, seconds);
        QFETCH(Contents, expected);
        Simulator simulator(1, 0);
        simulator.play(*scenario(QString::fromLatin1(QTest::currentDataTag())));
        run(simulator, seconds);
        Contents all;
        for (const HistoryRecord &record : simulator.model().history())
            all.append(record.status ? record.content : -record.content);
        QVERIFY2(isSubsequence(expected, all), QTest::toString(all));
        QTEST(int(simulator.model().measurement(4241)), "mode");
    }

    void batteryTestTakesTwentySeconds()
    {
        Simulator simulator(1, 0);
        UpsModel &model = simulator.model();
        run(simulator, 0.1);
        QCOMPARE(model.command(BatteryTest), UpsModel::Answer::Accepted);
        run(simulator, 10);
        QCOMPARE(model.command(BatteryTest), UpsModel::Answer::Accepted); // and does not begin anew
        run(simulator, 9.5);
        QCOMPARE(model.workingMode(), 6);
        QVERIFY(model.event(upsevent::TestMode));
        run(simulator, 1);
        QCOMPARE(model.workingMode(), 4);
        QVERIFY(model.event(upsevent::TestSuccess));
        QCOMPARE(model.command(ClearFault), UpsModel::Answer::Accepted);
        run(simulator, 0.1);
        QVERIFY(!model.event(upsevent::TestSuccess));
    }

    void badScripts_data()
    {
        const Columns<QString, QString> row("script", "reason");
        row("no such action", "0 mains", "line 1: unknown action");
        row("no number", "0 load", "line 1: expected \"load PERCENT\"");
        row("not a number", "0 load 10\n1 load nan",
            "line 2: \"nan\" is not a number from 0 to 200");
        row("no such flag", "0 set flag 96 1", "from 0 to 95");
        row("no time", "# a script\n\nmains off", "line 3: no time");
        row("a time alone", "5", "line 1: unknown action");
        row("back in time", "5 mains off\n4 mains on", "line 2");
        row("no number for a time", "nan mains off", "line 1");
        row("a program", "\x7f\x45LF\x01\x02\n\n", "line 1");
    }

    void badScripts()
    {
        QFETCH(QString, script);
        QFETCH(QString, reason);
        const QString error = parseScript(script).error();
        QVERIFY2(error.contains(reason), qPrintable(error));
    }

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

QTEST_GUILESS_MAIN(tst_UpsSim)
#include "tst_upssim.moc"
