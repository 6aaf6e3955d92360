#include "guardedtest.h"
#include "hostprocess.h"
#include "upssimprocess.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int retries = 3;
const QString serialDevice = QStringLiteral("name=s,port=/dev/ttyNone,addr=7");

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
        const Columns<QStringList, int, QString> row("arguments", "code", "message");
        const QStringList device { "--device", serialDevice };
        const QString good = qEnvironmentVariable("PLUGIN");
        const auto one = [](const char *spec) { return QStringList { "--device", spec }; };
        const auto plugin = [&](const QString &file, const QStringList &more = {}) {
            return QStringList { "--plugin", file } + device + more;
        };
        // clang-format off
        row("no such file", plugin("/nowhere.so"), 3, "/nowhere.so refused: there is no such file");
        row("no plug-in", plugin("/proc/self/exe"), 3, "it is not a plug-in");
        row("interface", plugin(fixture("wrongiid")), 3, "\"com.example.Other\", not \"com.orva.Qt.ProInterface\"");
        row("class", plugin(fixture("wrongclass")), 3, "its class is \"otherClient\", not \"tavoClient\"");
        row("unresolved symbol", plugin(fixture("unresolved")), 3, "symbolThatNobodyDefines");
        row("missing library", plugin(fixture("missing")), 3, "libdevhost_nowhere.so: cannot open shared object file");
        row("same name twice", device + device, 2, "two devices are named \"s\"");
        row("address 0", one("name=a,port=p,addr=0"), 2, "--device name=a,port=p,addr=0: addr=0 is not usable: it takes a unit from 1 to 247");
        row("unit 250", one("name=a,tcp=h,addr=250"), 2, "addr=250 is not usable: it takes a unit from 1 to 247, over TCP also 0 and 255");
        row("one name in the files", QStringList { "--device", "name=a/b,port=p", "--device", "name=/a//b,port=q" }, 2, "\"a/b\" and \"/a//b\" are one name");
        row("rate that no line has", one("name=a,port=p,settings=14400,n,8,1"), 2, "settings=14400,n,8,1 is not usable: it takes RATE,PARITY,DATA,STOP such as 9600,n,8,1; rate 50 75");
        row("settings cut short", one("name=a,port=p,settings=9600,n,8"), 2, "is not usable");
        row("timeout", one("name=a,port=p,timeout=25501"), 2, "timeout=25501 is not usable: it takes milliseconds from 1 to 25500");
        row("peer", one("name=a,tcp=h:70000"), 2, "tcp=h:70000 is not usable: it takes HOST, HOST:PORT");
        row("interval", device + QStringList { "--interval", "0" }, 2, "--interval: \"0\" is no number from 1 to 86400");
        row("overflow", device + QStringList { "--retries", "99999999999" }, 2, "--retries: \"99999999999\" is no number from 1 to 1000");
        row("two settings of a port", QStringList { "--device", "name=a,port=p,settings=9600,n,8,1", "--device", "name=b,port=p,settings=2400,n,8,1" }, 2, "a and b ask for different settings of p");
        row("no device", plugin(good).mid(0, 2), 2, "give at least one --device");
        row("Qt's -plugin", QStringList { "-plugin", good } + device, 2, "is Qt's own option");
        row("command", plugin(good, { "--send", "nobody 1" }), 2, "\"nobody 1\": no device of that name; there is s");
        row("driver directory", plugin(good, { "--driver-dir", "/nowhere" }), 5, "--driver-dir: there is no directory /nowhere");
        row("no driver", plugin(good, { "--driver-dir", "/dev" }), 5, "--driver-dir: there is no driver in /dev, such as libkx300_g4_6-20k.so");
        row("log with other columns", plugin(good, { "--data-log", good }), 9, "holds other columns");
        row("unknown command", plugin(good, { "--send", "s 4711" }), 2, "4711 is no command");
        row("FIFO without a reader", plugin(good, { "--event-log", "fifo" }), 9, "nobody reads from it");
        const QStringList upssim { "upssim", "--tcp" };
        row("simulator's line", upssim.mid(0, 1), 1, "give --tcp, --pty or both");
        row("simulator's port", upssim + QStringList { "127.0.0.1:65536" }, 1, "--tcp: \"127.0.0.1:65536\" is no address with a port from 0 to 65535");
        row("simulator's link", QStringList { "upssim", "--pty", "/proc/self/exe/x" }, 1, "cannot make the link /proc/self/exe/x: Not a directory");
        row("simulator's host", upssim + QStringList { "192.0.2.1:1" }, 1, "cannot listen on 192.0.2.1:1: ");
        row("simulator's address", upssim + QStringList { ":0", "--address", "248" }, 1, "--address: \"248\" is no whole number from 1 to 247");
        row("simulator's seed", upssim + QStringList { ":0", "--seed", "4294967296" }, 1, "--seed: \"4294967296\" is no whole number from 0 to 4294967295");
        row("simulator's script", upssim + QStringList { ":0", "--script", "/nowhere" }, 1, "/nowhere: No such file");
        row("simulator's scenario", upssim + QStringList { ":0", "--scenario", "x" }, 1, "overload");
        row("full disk", plugin(good, { "--event-log", "/dev/full" }), 9, "/dev/full");
        // clang-format on
    }

    void refusals()
    {
        QFETCH(QStringList, arguments);
        QCOMPARE(::mkfifo("fifo", 0600), 0);
        HostProcess host;
        if (arguments.first() == "upssim")
            host.start(UPSSIM_FILE, arguments.mid(1));
        else
            host.startHost({}, arguments);
        QTRY_VERIFY(host.state() != QProcess::Starting);
        QTEST(host.exitCodeOf(), "code");
        QFETCH(QString, message);
        const QString errors = host.errors();
        QVERIFY2(errors.contains(message), qPrintable(errors));
        QVERIFY(host.objects().isEmpty() && host.readAll().isEmpty());
    }

    void help()
    {
        const struct
        {
            QString program;
            const char *option;
            QStringList texts;
        } rows[] = {
            { qEnvironmentVariable("DEVHOST"),
              "--help",
              { "  1007  shut down: THE OUTPUT STOPS", "--event-log", " 7  --require-online",
                "Default: 5." } },
            { qEnvironmentVariable("DEVHOST"), "--version", { "kx300-devhost " PROJECT_VERSION } },
            { UPSSIM_FILE, "--help", { "--seed", "mains-failure", "Default: normal." } },
            { UPSSIM_FILE, "--version", { "kx300-upssim " PROJECT_VERSION } },
        };
        for (const auto &row : rows) {
            HostProcess host;
            host.start(row.program, { row.option });
            QCOMPARE(host.exitCodeOf(), 0);
            const QString text = QString::fromUtf8(host.readAllStandardOutput());
            for (const QString &part : row.texts)
                QVERIFY2(text.contains(part), qPrintable(text));
            QCOMPARE(host.errors(), QString());
        }
    }

    void longLine()
    {
        HostProcess host;
        host.startHost(qEnvironmentVariable("PLUGIN"), { "--device", serialDevice, "--quiet" });
        // The end of a line that does not fit is no command.
        host.write(QByteArray(69632, 'x') + "s 1007\n" + "nobody 1\ns 4711\n@0.1 s 1010\n");
        QTRY_VERIFY_WITH_TIMEOUT(host.answers().size() >= 5, 20000);
        const QList<QJsonObject> answers = host.answers();
        QVERIFY(answers[0]["error"].toString().contains("longer than any command"));
        QVERIFY(answers[1]["error"].toString().contains("no device of that name"));
        QVERIFY(answers[2]["error"].toString().contains("4711 is no command"));
        QCOMPARE(answers[3]["delay"].toDouble(), 0.1);
        QCOMPARE(answers[4]["command"].toInt(), 1010);
        QVERIFY(answers[4]["accepted"].toBool());
        QCOMPARE(host.terminateAndWait(), 0);
    }

    /** Neither a reader that stands still nor one that is slow keeps the host from its work. */
    void outputsThatNobodyReads()
    {
        for (const char *name : { "stdout", "events" })
            QCOMPARE(::mkfifo(name, 0600), 0);
        const int stalled = ::open("stdout", O_RDWR | O_NONBLOCK);
        while (::write(stalled, "x", 1) == 1) { }
        QFile events("events");
        QVERIFY(events.open(::open("events", O_RDONLY | O_NONBLOCK), QIODevice::ReadOnly,
                            QFileDevice::AutoCloseHandle));
        HostProcess host;
        host.setStandardOutputFile("stdout", QIODevice::Append);
        host.startHost(qEnvironmentVariable("PLUGIN"),
                       { "--device", serialDevice, "--quiet", "--event-log", "events" });
        QByteArray lines;
        const auto isLogged = [&] { return (lines += events.readAll()).contains("lost"); };
        QTRY_VERIFY_WITH_TIMEOUT(isLogged(), 30000);
        const Stopwatch timer;
        QCOMPARE(host.terminateAndWait(), 0);
        QVERIFY2(timer.elapsed() < 4000, "the end took too long");
        ::close(stalled);
    }

    /** What somebody else's variable names is not this run's to remove. */
    void runDirectory()
    {
        QVERIFY(QDir().mkpath("inst/bin"));
        QVERIFY(QFile::copy(qEnvironmentVariable("DEVHOST"), "inst/bin/kx300-devhost"));
        QVERIFY(writeFile("inst/precious", "1"));
        QVERIFY(QDir().mkpath("inst/bin/upgrade") && writeFile("inst/bin/upgrade/program", "1"));
        qputenv("DEVHOST_RUN_DIRECTORY", QFile::encodeName(path("inst")));
        QProcess host;
        host.start("inst/bin/kx300-devhost",
                   { "--headless", "--quiet", "--plugin", qEnvironmentVariable("PLUGIN"),
                     "--device", serialDevice });
        qunsetenv("DEVHOST_RUN_DIRECTORY");
        const QString process = QStringLiteral("/proc/%1/exe").arg(host.processId());
        const auto bin = [&] { return QFileInfo(QFile::symLinkTarget(process)).path(); };
        QTRY_COMPARE_WITH_TIMEOUT(fileContents(bin() + "/KOVA/../upgrade/program"), "1", 20000);
        const QString run = bin();
        host.terminate();
        QVERIFY(host.waitForFinished(30000));
        QCOMPARE(host.exitCode(), 0);
        QVERIFY(!QFile::exists(run) && QFile::exists("inst/bin/upgrade/program"));
        QVERIFY(QFile::exists("inst/bin/kx300-devhost") && QFile::exists("inst/precious"));
        QVERIFY(!QFile::exists("inst/bin/KOVA"));
    }

    void lossAndReturn_data()
    {
        const Columns<bool, QStringList> row("tcp", "drive");
        row("serial, thread", false, QStringList());
        row("serial, poll()", false, QStringList { "--poll" });
        row("TCP, thread", true, QStringList());
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
                                           QString::number(retries), "--quiet", "--event-log",
                                           "events.csv", "--data-log", "data.csv" });
        QVERIFY2(host.waitForEvents(name, 2007, 3), qPrintable(host.errors()));
        QCOMPARE(host.events(name, 1040).size(), 1);
        QCOMPARE(host.events(name, 2001).size(), 1);

        simulator.terminate();
        QVERIFY2(host.waitForEvents(name, 1041), qPrintable(host.errors()));
        QVERIFY(host.waitForEvents(name, 2001, 2));
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

    // Its report has no values, which would read as zeros.
    void neverReached()
    {
        QProcess host;
        host.start(qEnvironmentVariable("DEVHOST"),
                   { "--headless", "--quiet", "--plugin", qEnvironmentVariable("PLUGIN"),
                     "--device", "name=s,port=/none", "--retries", "1000", "--data-log",
                     "never.csv" });
        host.write("devices\n");
        QByteArray output;
        QTRY_VERIFY_WITH_TIMEOUT((output += host.readAllStandardOutput()).count('\n') > 1, 30000);
        host.terminate();
        QVERIFY(host.waitForFinished(30000));
        QVERIFY2(output.contains("s not connected yet\n"), output);
        QVERIFY2(output.contains("0 values, not connected yet\n"), output);
        QVERIFY2(!output.contains("Disconnect"), output);
        QCOMPARE(fileContents("never.csv").count('\n'), 1);
    }

    void historyOverBothLines()
    {
        QVERIFY(writeFile("serial.ini", "; by hand\n[dev]\nother\\timeout=123\n"));
        UpsSimProcess simulator;
        QVERIFY2(simulator.start(), qPrintable(simulator.message()));
        HostProcess host;
        host.startHost(qEnvironmentVariable("PLUGIN"),
                       { "--device", deviceOption(simulator, false), "--device",
                         deviceOption(simulator, true), "--quiet", "--event-log", "events.csv" });
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
        // The plug-in calls it a success; the host looks at the file.
        host.write("tcp 1045 /nowhere/x.csv\n");
        QVERIFY(host.waitForEvents("tcp", 1042, 2));
        QTRY_VERIFY(fileContents("events.csv").contains("\"\"/nowhere/x.csv\"\" holds no records"));
        QCOMPARE(QFileInfo("history.txt").size(), 0);
        QVERIFY(fileContents("serial.ini").startsWith("; by hand\n[dev]\nother\\timeout=123\n"));
        QVERIFY(fileContents("serial.ini").contains("timeout=300"));
        QCOMPARE(host.terminateAndWait(), 0);
    }

    void endsInEveryState()
    {
        // 192.0.2.1 is an address that nobody has; its first connection is tried after 5 s.
        const QString tcp = QStringLiteral("name=d,tcp=192.0.2.1:502");
        QVERIFY(QDir().mkpath("brokendriver"));
        QVERIFY(writeFile("brokendriver/libkx300_g4_6-20k.so", "no library"));
        for (const QStringList &options :
             { QStringList { tcp, "--duration", "6", "--poll" },
               { serialDevice, "--duration", "1", "--driver-dir", "brokendriver" } }) {
            HostProcess host;
            host.startHost(qEnvironmentVariable("PLUGIN"),
                           QStringList { "--require-online", "--quiet", "--device" } + options);
            Stopwatch timer;
            QCOMPARE(host.exitCodeOf(), 7);
            QVERIFY2(timer.elapsed() < 9000, "the end took too long");
            const QString errors = host.errors();
            QCOMPARE(errors.contains("no driver, so that no device can be reached"),
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
