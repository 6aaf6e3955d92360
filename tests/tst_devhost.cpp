#include "support/hostprocess.h"

#include "tools/devhost/hostcommand.h"

#include <QSettings>
#include <QtTest>

namespace {

QString fixture(const char *name)
{
    return qEnvironmentVariable("FIXTURES") + QLatin1Char('/') + QLatin1String(name)
        + QLatin1String(".so");
}

QList<QByteArray> fileLines(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().split('\n')
                                          : QList<QByteArray>();
}

const QString SerialDevice = QStringLiteral("name=s,port=/dev/ttyNone,addr=7");
const QString TcpDevice = QStringLiteral("name=t,tcp=[::1]:1502");

} // namespace

/** The host program with plug-ins made for it: refusals, files, output, commands. */
class tst_Devhost : public QObject
{
    Q_OBJECT

private slots:
    void commands_data();
    void commands();
    void refusals_data();
    void refusals();
    void configurationReachesTheClients_data();
    void configurationReachesTheClients();
    void serialSettingsAreMerged();
    void commandsAndEvents();
    void logs();
    void closedOutput();
    void leavesNothingBehind();
};

void tst_Devhost::commands_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected"); // delay|device|number|value, or the kind

    QTest::newRow("plain") << "ups1 1003"
                           << "0|ups1|1003|";
    QTest::newRow("value with blanks") << "ups1 1045 a b.csv"
                                       << "0|ups1|1045|a b.csv";
    QTest::newRow("delay") << "@1.5s ups1 1003"
                           << "1.5|ups1|1003|";
    QTest::newRow("plain delay") << "5 ups1 1003"
                                 << "5|ups1|1003|";
    QTest::newRow("a device named like a delay") << "7 1003 x"
                                                 << "0|7|1003|x";
    QTest::newRow("the longer name") << "ups1 left 1003"
                                     << "0|ups1 left|1003|";
    QTest::newRow("unknown device") << "ups9 1003"
                                    << "wrong";
    QTest::newRow("no number") << "ups1 start"
                               << "wrong";
    QTest::newRow("quit") << " quit "
                          << "quit";
}

void tst_Devhost::commands()
{
    QFETCH(QString, line);
    const HostCommand command = parseCommand(line, { "ups1", "7", "ups1 left" });
    QString result;
    if (command.kind == HostCommand::Kind::Control)
        result = QStringLiteral("%1|%2|%3|%4")
                     .arg(command.delay)
                     .arg(command.device)
                     .arg(command.id)
                     .arg(command.value);
    else if (command.kind == HostCommand::Kind::Quit)
        result = QStringLiteral("quit");
    else
        result = command.error.isEmpty() ? QStringLiteral("nothing") : QStringLiteral("wrong");
    QTEST(result, "expected");
}

void tst_Devhost::refusals_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("message");

    const QStringList device { "--device", SerialDevice };
    const QString good = fixture("fakeclient");
    const auto plugin = [&](const QString &file) {
        return QStringList { "--plugin", file } + device;
    };
    QTest::newRow("no such file") << plugin("/nowhere.so") << 3
                                  << "/nowhere.so refused: there is no such file";
    QTest::newRow("no plug-in") << plugin("/proc/self/exe") << 3 << "it is not a plug-in";
    QTest::newRow("interface") << plugin(fixture("wrongiid")) << 3
                               << "\"com.example.Other\", not \"com.orva.Qt.ProInterface\"";
    QTest::newRow("class") << plugin(fixture("wrongclass")) << 3
                           << "its class is \"otherClient\", not \"tavoClient\"";
    QTest::newRow("unresolved symbol")
        << plugin(fixture("unresolved")) << 3 << "symbolThatNobodyDefines";
    QTest::newRow("no device") << QStringList { "--plugin", good } << 2 << "no device";
    QTest::newRow("same name twice") << device + device << 2 << "two devices are named \"s\"";
    QTest::newRow("no name") << QStringList { "--device", "port=p" } << 2 << "it has no name";
    QTest::newRow("two lines") << QStringList { "--device", "name=a,port=p,tcp=h" } << 2
                               << "it needs either port= or tcp=";
    QTest::newRow("address 0") << QStringList { "--device", "name=a,port=p,addr=0" } << 2
                               << "addr=0 is not usable";
    QTest::newRow("log with other columns")
        << (plugin(good) + QStringList { "--data-log", good }) << 9 << "holds other columns";
    QTest::newRow("full disk") << (plugin(good) + QStringList { "--event-log", "/dev/full" }) << 9
                               << "/dev/full";
    QTest::newRow("interval") << device + QStringList { "--interval", "x" } << 2
                              << "--interval: \"x\"";
    QTest::newRow("option") << QStringList { "--bogus" } << 2 << "bogus";
    QTest::newRow("command") << plugin(good) + QStringList { "--send", "nobody 1" } << 2
                             << "no device of that name";
    QTest::newRow("driver directory") << plugin(good) + QStringList { "--driver-dir", "/nowhere" }
                                      << 5 << "no driver directory /nowhere";
    QTest::newRow("log file") << plugin(good) + QStringList { "--event-log", "/nowhere/x" } << 9
                              << "/nowhere/x";
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

void tst_Devhost::configurationReachesTheClients_data()
{
    QTest::addColumn<QStringList>("drive");
    QTest::newRow("threads") << QStringList();
    QTest::newRow("poll()") << QStringList { "--poll" };
}

void tst_Devhost::configurationReachesTheClients()
{
    QFETCH(QStringList, drive);
    HostProcess host;
    host.startHost(fixture("fakeclient"),
                   drive
                       + QStringList { "--device", SerialDevice, "--device", TcpDevice,
                                       "--interval", "3", "--retries", "4", "--require-online" });
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
    QFile::remove("serial.ini");
    {
        QSettings before("serial.ini", QSettings::IniFormat);
        before.setValue("/dev/other/param", "1200,e,7,2");
        before.setValue("/dev/ttyNone/param", "300,n,8,1");
    }
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
    QFile::remove("serial.ini");
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
    QFile::remove("events.csv");
    QFile::remove("data.csv");
    for (int run = 0; run < 2; ++run) { // the second run appends
        HostProcess host;
        host.startHost(fixture("fakeclient"),
                       { "--device", SerialDevice, "--event-log", "events.csv", "--data-log",
                         "data.csv", "--send", "s 2 5,1", "--send", "s 2 5,0", "--send",
                         "s 3 4105=270.5", "--send", "s 1 1041" });
        QVERIFY(host.waitForEvents("s", 1041));
        QCOMPARE(host.terminateAndWait(), 0);
    }
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

void tst_Devhost::leavesNothingBehind()
{
    QTemporaryDir temporary;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TMPDIR", temporary.path());
    HostProcess first;
    HostProcess second;
    for (HostProcess *host : { &first, &second }) {
        host->setProcessEnvironment(environment);
        host->startHost(fixture("fakeclient"), { "--device", SerialDevice });
        QVERIFY(host->waitForEvents("s", 1040));
    }
    QCOMPARE(QDir(temporary.path()).entryList({ "devhost-*" }).size(), 2);
    QCOMPARE(first.terminateAndWait(), 0);
    QCOMPARE(second.terminateAndWait(), 0);
    QCOMPARE(QDir(temporary.path()).entryList({ "devhost-*" }), QStringList());
}

QTEST_GUILESS_MAIN(tst_Devhost)
#include "tst_devhost.moc"
