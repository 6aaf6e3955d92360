#include "support/guardedtest.h"
#include "support/hostprocess.h"
#include "support/upssimprocess.h"

namespace {

constexpr int Retries = 3;
const QString SerialDevice = QStringLiteral("name=d,port=/dev/ttyNone");

} // namespace

/** The host with the real plug-in and driver on simulated devices. */
class tst_Devhostlive : public GuardedTest
{
    Q_OBJECT

private slots:
    void lossAndReturn_data();
    void lossAndReturn();
    void historyOverBothLines();
    void endsInEveryState_data();
    void endsInEveryState();

private:
    QString deviceOption(const UpsSimProcess &simulator, bool tcp) const
    {
        return tcp
            ? QStringLiteral("name=tcp,tcp=127.0.0.1:%1").arg(simulator.tcpPort())
            : QStringLiteral("name=serial,port=%1,timeout=300").arg(simulator.terminalName());
    }
};

void tst_Devhostlive::lossAndReturn_data()
{
    QTest::addColumn<bool>("tcp");
    QTest::addColumn<QStringList>("drive");
    QTest::newRow("serial, thread") << false << QStringList();
    QTest::newRow("serial, poll()") << false << QStringList { "--poll" };
    QTest::newRow("TCP, thread") << true << QStringList();
}

void tst_Devhostlive::lossAndReturn()
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
                                       QString::number(Retries), "--quiet" });
    QVERIFY2(host.waitForEvents(name, 2007, 3), qPrintable(host.errors()));
    QCOMPARE(host.events(name, 1040).size(), 1);
    QCOMPARE(host.events(name, 2001).size(), 1);

    simulator.terminate();
    QVERIFY2(host.waitForEvents(name, 1041), qPrintable(host.errors()));
    QVERIFY(host.waitForEvents(name, 2001, 2));
    // Failed cycles report what the last good one read: its report and those of the failed cycles
    // before the loss are the same, and the simulator's values never stand still that long.
    const QList<QJsonObject> all = host.objects("name", name);
    int same = 0;
    QJsonValue data;
    for (const QJsonObject &event : all) {
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
}

void tst_Devhostlive::historyOverBothLines()
{
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
    QCOMPARE(host.terminateAndWait(), 0);
}

void tst_Devhostlive::endsInEveryState_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QStringList>("options");
    // 192.0.2.1 is an address that nobody has; its first connection is tried after 5 s.
    const QString tcp = "name=d,tcp=192.0.2.1:502";
    QTest::newRow("silent TCP peer, poll()") << tcp << QStringList { "--duration", "6", "--poll" };
    QTest::newRow("no such port") << SerialDevice << QStringList { "--duration", "1" };
    QTest::newRow("no driver") << SerialDevice
                               << QStringList { "--duration", "1", "--driver-dir", "." };
}

void tst_Devhostlive::endsInEveryState()
{
    QFETCH(QString, device);
    QFETCH(QStringList, options);
    HostProcess host;
    host.startHost(qEnvironmentVariable("PLUGIN"),
                   options + QStringList { "--device", device, "--require-online" });
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(host.exitCodeOf(), 7);
    QVERIFY2(timer.elapsed() < 9000, "the end took too long");
    const QString errors = host.errors();
    QCOMPARE(errors.contains("Cannot load library libkx300_g4_6-20k"),
             options.contains("--driver-dir"));
    for (const char *complaint : { "QThread", "QSocketNotifier", "QObject", "did not end" })
        QVERIFY2(!errors.contains(QLatin1String(complaint)), qPrintable(errors));
}

QTEST_GUILESS_MAIN(tst_Devhostlive)
#include "tst_devhostlive.moc"
