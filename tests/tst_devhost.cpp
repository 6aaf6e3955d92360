#include "support/guardedtest.h"
#include "support/hostprocess.h"
#include "support/upssimprocess.h"

namespace {

constexpr int Retries = 3;
const QString SerialDevice = QStringLiteral("name=s,port=/dev/ttyNone,addr=7");

QString fixture(const char *name)
{
    return qEnvironmentVariable("FIXTURES") + '/' + name + ".so";
}

} // namespace

/** The host program: what it refuses, and the plug-in and driver on simulated devices. */
class tst_Devhost : public GuardedTest
{
    Q_OBJECT

private slots:
    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, const QStringList &arguments, int code,
                            const char *message) {
            QTest::newRow(name) << arguments << code << QString(message);
        };
        const QStringList device { "--device", SerialDevice };
        const QString good = qEnvironmentVariable("PLUGIN");
        const auto plugin = [&](const QString &file, const QStringList &more = {}) {
            return QStringList { "--plugin", file } + device + more;
        };
        row("no such file", plugin("/nowhere.so"), 3, "/nowhere.so refused: there is no such file");
        row("no plug-in", plugin("/proc/self/exe"), 3, "it is not a plug-in");
        row("interface", plugin(fixture("wrongiid")), 3,
            "\"com.example.Other\", not \"com.orva.Qt.ProInterface\"");
        row("class", plugin(fixture("wrongclass")), 3,
            "its class is \"otherClient\", not \"tavoClient\"");
        row("unresolved symbol", plugin(fixture("unresolved")), 3, "symbolThatNobodyDefines");
        row("same name twice", device + device, 2, "two devices are named \"s\"");
        row("address 0", QStringList { "--device", "name=a,port=p,addr=0" }, 2,
            "addr=0 is not usable");
        row("command", plugin(good, { "--send", "nobody 1" }), 2, "no device of that name");
        row("driver directory", plugin(good, { "--driver-dir", "/nowhere" }), 5,
            "no driver directory /nowhere");
        row("log with other columns", plugin(good, { "--data-log", good }), 9,
            "holds other columns");
        row("full disk", plugin(good, { "--event-log", "/dev/full" }), 9, "/dev/full");
    }

    void refusals()
    {
        QFETCH(QStringList, arguments);
        HostProcess host;
        host.startHost({}, arguments);
        QTRY_VERIFY(host.state() != QProcess::Starting);
        QTEST(host.exitCodeOf(), "code");
        QFETCH(QString, message);
        const QString errors = host.errors();
        QVERIFY2(errors.contains(message), qPrintable(errors));
        QVERIFY(host.objects().isEmpty() && host.readAll().isEmpty());
    }

    void lossAndReturn_data()
    {
        QTest::addColumn<bool>("tcp");
        QTest::addColumn<QStringList>("drive");
        QTest::newRow("serial, thread") << false << QStringList();
        QTest::newRow("serial, poll()") << false << QStringList { "--poll" };
        QTest::newRow("TCP, thread") << true << QStringList();
    }

    void lossAndReturn()
    {
        QFETCH(bool, tcp);
        QFETCH(QStringList, drive);
        const QString name = tcp ? "tcp" : "serial";
        UpsSimProcess simulator;
        QVERIFY2(simulator.start(), qPrintable(simulator.message()));
        const QString peer = QStringLiteral("127.0.0.1:%1").arg(simulator.tcpPort());
        HostProcess host;
        host.startHost(qEnvironmentVariable("PLUGIN"),
                       drive
                           + QStringList { "--device", deviceOption(simulator, tcp), "--retries",
                                           QString::number(Retries), "--quiet", "--event-log",
                                           "events.csv", "--data-log", "data.csv" });
        QVERIFY2(host.waitForEvents(name, 2007, 3), qPrintable(host.errors()));
        QCOMPARE(host.events(name, 1040).size(), 1);
        QCOMPARE(host.events(name, 2001).size(), 1);

        simulator.terminate();
        QVERIFY2(host.waitForEvents(name, 1041), qPrintable(host.errors()));
        QVERIFY(host.waitForEvents(name, 2001, 2));
        // Failed cycles report what the last good one read: its report and those of the failed cycles
        // before the loss are the same, and the simulator's values never stand still that long.
        int same = 0;
        QJsonValue data;
        for (const QJsonObject &event : host.objects()) {
            if (event["type"] == 1041)
                break;
            if (event["type"] != 2007)
                continue;
            same = event["data"] == data ? same + 1 : 1;
            data = event["data"];
        }
        QCOMPARE(same, Retries);
        QCOMPARE(host.events(name, 1041).first()["lost"].toInt(), 1);

        QVERIFY2(simulator.start({ "--tcp", peer }), qPrintable(simulator.message()));
        QVERIFY2(host.waitForEvents(name, 1040, 2), qPrintable(host.errors()));
        QVERIFY(host.waitForEvents(name, 2001, 3));
        QCOMPARE(host.events(name, 2001).last()["state"].toInt(-1), 0);
        QCOMPARE(host.events(name, 1041).size(), 1);
        QCOMPARE(host.terminateAndWait(), 0);
        const QByteArray events = fileContents("events.csv");
        QVERIFY(events.startsWith("Time,Device,Type,State,Event\n"));
        QCOMPARE(events.count("1041,lost,communication lost\n"), 1);
        QCOMPARE(events.count("1040,restored,communication restored\n"), 2);
        QVERIFY(fileContents("data.csv").count('\n') > 3);
    }

    void historyOverBothLines()
    {
        QVERIFY(writeFile("serial.ini", "[dev]\nother\\timeout=123\n"));
        UpsSimProcess simulator;
        QVERIFY2(simulator.start(), qPrintable(simulator.message()));
        HostProcess host;
        host.startHost(qEnvironmentVariable("PLUGIN"),
                       { "--device", deviceOption(simulator, false), "--device",
                         deviceOption(simulator, true), "--quiet" });
        QVERIFY(host.waitForEvents("serial", 2007) && host.waitForEvents("tcp", 2007));
        QByteArray files[2];
        int next = 0;
        for (const char *name : { "serial", "tcp" }) {
            const QString file = QStringLiteral("history-%1.csv").arg(QLatin1String(name));
            host.write(QByteArray(name) + " 1045 " + file.toUtf8() + '\n');
            QVERIFY(host.waitForEvents(name, 1042));
            const QString outcome = host.events(name, 1042).first()["desc"].toString();
            QVERIFY2(outcome.endsWith("successful"), qPrintable(outcome));
            files[next++] = fileContents(file);
        }
        QVERIFY(files[0].count('\n') > 1);
        QCOMPARE(files[0], files[1]);
        QCOMPARE(QFileInfo("history.txt").size(), 0);
        QVERIFY(fileContents("serial.ini").contains("other\\timeout=123")); // settings are merged
        QCOMPARE(host.terminateAndWait(), 0);
    }

    void endsInEveryState()
    {
        // 192.0.2.1 is an address that nobody has; its first connection is tried after 5 s.
        const QString tcp = QStringLiteral("name=d,tcp=192.0.2.1:502");
        for (const QStringList &options :
             { QStringList { tcp, "--duration", "6", "--poll" },
               { SerialDevice, "--duration", "1", "--driver-dir", "." } }) {
            HostProcess host;
            host.startHost(qEnvironmentVariable("PLUGIN"),
                           QStringList { "--require-online", "--device" } + options);
            Stopwatch timer;
            QCOMPARE(host.exitCodeOf(), 7);
            QVERIFY2(timer.elapsed() < 9000, "the end took too long");
            const QString errors = host.errors();
            QCOMPARE(errors.contains("Cannot load library libkx300_g4_6-20k"),
                     options.contains("--driver-dir"));
            for (const char *complaint : { "QThread", "QSocketNotifier", "QObject", "did not end" })
                QVERIFY2(!errors.contains(QLatin1String(complaint)), qPrintable(errors));
        }
    }

private:
    QString deviceOption(const UpsSimProcess &simulator, bool tcp) const
    {
        return tcp
            ? QStringLiteral("name=tcp,tcp=127.0.0.1:%1").arg(simulator.tcpPort())
            : QStringLiteral("name=serial,port=%1,timeout=300").arg(simulator.terminalName());
    }
};

QTEST_GUILESS_MAIN(tst_Devhost)
#include "tst_devhost.moc"
