#include "support/guardedtest.h"
#include "support/hostprocess.h"

#include "tools/devhost/hostcommand.h"

#include <QSettings>

namespace {

QString fixture(const char *name)
{
    return qEnvironmentVariable("FIXTURES") + '/' + name + ".so";
}

const QString SerialDevice = QStringLiteral("name=s,port=/dev/ttyNone,addr=7");
const QString TcpDevice = QStringLiteral("name=t,tcp=[::1]:1502");

} // namespace

/** The host program with plug-ins made for it: refusals, files, output, commands. */
class tst_Devhost : public GuardedTest
{
    Q_OBJECT

private slots:
    void commands();
    void refusals_data();
    void refusals();
    void configurationReachesTheClients();
    void serialSettingsAreMerged();
    void commandsAndEvents();
    void logs();
    void closedOutput();
};

void tst_Devhost::commands()
{
    const struct
    {
        const char *line;
        const char *expected; // delay|device|number|value, or nothing for a wrong one
    } rows[] = { { "ups1 1003", "0|ups1|1003|" },
                 { "ups1 1045 a b.csv", "0|ups1|1045|a b.csv" },
                 { "@1.5s ups1 1003", "1.5|ups1|1003|" },
                 { "5 ups1 1003", "5|ups1|1003|" },
                 { "7 1003 x", "0|7|1003|x" }, // a device named like a delay
                 { "ups1 left 1003", "0|ups1 left|1003|" },
                 { "ups9 1003", "" },
                 { "ups1 start", "" } };
    for (const auto &row : rows) {
        const HostCommand command = parseCommand(row.line, { "ups1", "7", "ups1 left" });
        const bool right = command.kind == HostCommand::Kind::Control;
        QCOMPARE(right, command.error.isEmpty());
        const auto found = QStringLiteral("%1|%2|%3|%4")
                               .arg(command.delay)
                               .arg(command.device)
                               .arg(command.id)
                               .arg(command.value);
        QCOMPARE(right ? found : QString(), QString(row.expected));
    }
}

void tst_Devhost::refusals_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QStringList &arguments, int code,
                        const char *message) {
        QTest::newRow(name) << arguments << code << QString(message);
    };
    const QStringList device { "--device", SerialDevice };
    const QString good = fixture("fakeclient");
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
    row("no device", QStringList { "--plugin", good }, 2, "no device");
    row("same name twice", device + device, 2, "two devices are named \"s\"");
    row("address 0", QStringList { "--device", "name=a,port=p,addr=0" }, 2, "addr=0 is not usable");
    row("interval", device + QStringList { "--interval", "x" }, 2, "--interval: \"x\"");
    row("command", plugin(good, { "--send", "nobody 1" }), 2, "no device of that name");
    row("driver directory", plugin(good, { "--driver-dir", "/nowhere" }), 5,
        "no driver directory /nowhere");
    row("log with other columns", plugin(good, { "--data-log", good }), 9, "holds other columns");
    row("full disk", plugin(good, { "--event-log", "/dev/full" }), 9, "/dev/full");
}

void tst_Devhost::refusals()
{
    QFETCH(QStringList, arguments);
    HostProcess host;
    host.startHost({}, arguments);
    QTRY_VERIFY(host.state() != QProcess::Starting);
    QTEST(host.exitCodeOf(), "code");
    QFETCH(QString, message);
    const QString errors = host.errors();
    QVERIFY2(errors.contains(message), qPrintable(errors));
    QCOMPARE(host.lines(), QStringList());
}

void tst_Devhost::configurationReachesTheClients()
{
    HostProcess host;
    host.startHost(fixture("fakeclient"),
                   { "--device", SerialDevice, "--device", TcpDevice, "--interval", "3",
                     "--retries", "4", "--require-online" });
    QVERIFY2(host.waitForEvents("t", 2001) && host.waitForEvents("s", 2001),
             qPrintable(host.errors()));
    QCOMPARE(host.events("s", 1040).first()["desc"].toString(),
             QStringLiteral("/dev/ttyNone|7|4|3|0||502|1|"));
    QCOMPARE(host.events("t", 1040).first()["desc"].toString(),
             QStringLiteral("|1|4|3|1|::1|1502|1|"));
    QCOMPARE(host.terminateAndWait(), 0);
    QCOMPARE(host.errors(), QString());
}

void tst_Devhost::serialSettingsAreMerged()
{
    QVERIFY(writeFile("serial.ini",
                      "[dev]\nother\\param=\"1200,e,7,2\"\nttyNone\\param=\"300,n,8,1\"\n"));
    HostProcess host;
    host.startHost(fixture("fakeclient"),
                   { "--device", SerialDevice + ",settings=9600,n,8,1,timeout=700" });
    QVERIFY(host.waitForEvents("s", 1040));
    QCOMPARE(host.terminateAndWait(), 0);
    const QSettings after("serial.ini", QSettings::IniFormat);
    QCOMPARE(after.value("/dev/other/param").toString(), QStringLiteral("1200,e,7,2"));
    QCOMPARE(after.value("/dev/ttyNone/param").toString(), QStringLiteral("9600,n,8,1"));
    QCOMPARE(after.value("/dev/ttyNone/timeout").toInt(), 700);
    QVERIFY(host.errors().contains("changed from 300,n,8,1 to 9600,n,8,1"));
}

void tst_Devhost::commandsAndEvents()
{
    HostProcess host;
    host.startHost(
        fixture("fakeclient"),
        { "--device", SerialDevice, "--send", "s 1045 first.csv", "--send", "0.2 s 3 4105=0.1" });
    QVERIFY(host.waitForEvents("s", 1042));
    QVERIFY(host.waitForEvents("s", 2007));
    QCOMPARE(host.events("s", 2007).first()["data"].toObject(), (QJsonObject { { "4105", 0.1 } }));
    host.write("s 1041\nnobody 1\n\ns 2016 3005,18\n");
    QVERIFY(host.waitForEvents("s", 1042, 3));
    const QList<QJsonObject> results = host.events("s", 1042);
    QCOMPARE(results.at(0)["desc"].toString(), QStringLiteral("1045 first.csv"));
    QCOMPARE(results.at(2)["desc"].toString(), QStringLiteral("2016 3005,18"));
    QCOMPARE(host.objects("command", 2016).size(), 1);
    host.write("quit"); // the last line may lack its end
    host.closeWriteChannel();
    QCOMPARE(host.exitCodeOf(), 0);
    QCOMPARE(host.errors(), QString("\"nobody 1\": no device of that name\n"));
}

void tst_Devhost::logs()
{
    for (int run = 0; run < 2; ++run) { // the second run appends
        HostProcess host;
        host.startHost(fixture("fakeclient"),
                       { "--device", SerialDevice, "--event-log", "events.csv", "--data-log",
                         "data.csv", "--send", "s 2 5,1", "--send", "s 2 5,0", "--send",
                         "s 3 4105=270.5", "--send", "s 1 1041" });
        QVERIFY(host.waitForEvents("s", 1041));
        QCOMPARE(host.terminateAndWait(), 0);
    }
    const auto fileLines = [](const char *name) {
        return fileContents(name).trimmed().split('\n');
    };
    const QList<QByteArray> data = fileLines("data.csv");
    QCOMPARE(data.size(), 3);
    QCOMPARE(data.first(), QByteArray("Time,Device,Voltage,\"Three, \"\"phases\"\"\""));
    QCOMPARE(data.last(), QByteArray("2026-01-02 03:04:05,s,270.5,\"1,2,3\""));
    QList<QByteArray> events = fileLines("events.csv");
    QCOMPARE(events.size(), 9);
    QCOMPARE(events.takeFirst(), QByteArray("Time,Device,Type,State,Event"));
    for (const char *line :
         { "s,2006,appear,5 here", "s,2006,disappear,5 gone", "s,1041,lost,communication lost",
           "s,1040,restored,communication restored" })
        QCOMPARE(events.count(QByteArray("2026-01-02 03:04:05,") + line), 2);
}

void tst_Devhost::closedOutput()
{
    HostProcess host;
    host.setStandardOutputFile("/dev/full");
    host.startHost(fixture("fakeclient"), { "--device", SerialDevice });
    QCOMPARE(host.exitCodeOf(), 10);
    QCOMPARE(host.errors(), QString("devhost: standard output cannot be written\n"));
}

QTEST_GUILESS_MAIN(tst_Devhost)
#include "tst_devhost.moc"
