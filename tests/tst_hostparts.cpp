#include "guardedtest.h"

#include "configfiles.h"
#include "devicestatus.h"
#include "family.h"
#include "inilines.h"
#include "reachcheck.h"
#include "serialports.h"

#include <QTcpServer>
#include <sys/stat.h>

namespace {

using Level = DeviceStatus::Level;

constexpr int outputId = 4161;
constexpr int loadId = 4176;
constexpr int modeId = 4241;

void link(const QString &target, const QString &name)
{
    QVERIFY(QDir().mkpath(QFileInfo(name).path()));
    QVERIFY(QFile::link(target, name));
}

} // namespace

Q_DECLARE_METATYPE(DeviceStatus::Level)
Q_DECLARE_METATYPE(Severity)

/** What the window works out before it draws anything. */
class tst_Hostparts : public GuardedTest
{
    Q_OBJECT

private slots:
    // The log beside a view shows the same mark for an event as the view does.
    void severitiesAreTheFamilys()
    {
        const Rows<EventRow> events = deviceFamily().events;
        for (int i = 0; i < events.size(); ++i) {
            if (events[i].use == EventUse::Plain)
                QVERIFY2(int(Severities::ofFlag(i)) == int(events[i].severity), events[i].text);
        }
    }

    void status_data()
    {
        const Columns<int, int, int, Severity, Level> row("link", "mode", "output", "alarm",
                                                          "level");
        constexpr auto none = Severity::Information;
        row("nothing heard yet", -1, -1, -1, none, Level::Waiting);
        row("on line", 0, 4, 2, none, Level::Normal);
        row("battery test", 0, 6, 2, none, Level::Attention);
        row("on battery", 0, 5, 2, none, Level::Critical);
        row("on bypass", 0, 3, 1, none, Level::Attention);
        row("bypass of another mode", 0, 11, 1, none, Level::Attention);
        row("ECO feeds by the bypass", 0, 9, 1, none, Level::Normal);
        row("output stopped", 0, 4, 0, none, Level::Critical);
        row("warning", 0, 4, 2, Severity::Warning, Level::Attention);
        row("critical on bypass", 0, 3, 1, Severity::Critical, Level::Critical);
        row("lost outranks its alarms", 1, 4, 2, Severity::Warning, Level::Lost);
        row("mode that nobody knows", 0, 99, 2, none, Level::Normal);
    }

    void status()
    {
        QFETCH(int, link);
        QFETCH(int, mode);
        QFETCH(int, output);
        QFETCH(Severity, alarm);
        DeviceStatus::Facts facts;
        facts.link = link;
        facts.worstAlarm = alarm;
        if (mode >= 0)
            facts.data = { { modeId, float(mode) },
                           { outputId, float(output) },
                           { loadId, 54.6F } };
        const DeviceStatus status = DeviceStatus::of(facts);
        QTEST(status.level, "level");
        QCOMPARE(status.isLive, link == 0);
        QCOMPARE(status.load.has_value(), mode >= 0);
        QVERIFY(!status.charge && !status.autonomy); // never reported
        QCOMPARE(status.mode.isEmpty(), mode < 0 || mode > 11);
        QVERIFY(!status.state.isEmpty() && !DeviceStatus::mark(status.level).isEmpty());
    }

    void hostileNumbers()
    {
        DeviceStatus::Facts facts;
        facts.link = 0;
        facts.data = { { modeId, qQNaN() }, { loadId, qInf() }, { 4103, 1e30 } };
        const DeviceStatus status = DeviceStatus::of(facts);
        QVERIFY(!status.load && !status.autonomy && status.mode.isEmpty());
    }

    /** A copy of what the kernel shows: an adapter, a built-in port, an empty place, a console. */
    void portsOfTheMachine()
    {
        const QString usb = path("sys/devices/usb1/1-2");
        QVERIFY(QDir().mkpath(usb + "/1-2:1.0/ttyUSB0"));
        QVERIFY(writeFile(usb + "/product", "USB-RS485\n"));
        QVERIFY(writeFile(usb + "/manufacturer", "Example\n"));
        QVERIFY(QDir().mkpath(path("sys/devices/pnp/00:01")));
        for (const char *driver : { "usbserial", "serial" })
            QVERIFY(QDir().mkpath(path("sys/drivers/") + driver));
        link(path("sys/drivers/usbserial"), usb + "/1-2:1.0/ttyUSB0/driver");
        link(path("sys/drivers/serial"), path("sys/devices/pnp/00:01/driver"));
        link(usb + "/1-2:1.0/ttyUSB0", path("sys/class/tty/ttyUSB0/device"));
        link(path("sys/devices/pnp/00:01"), path("sys/class/tty/ttyS0/device"));
        link(path("sys/devices/pnp/00:01"), path("sys/class/tty/ttyS1/device"));
        QVERIFY(writeFile(path("sys/class/tty/ttyS0/type"), "4\n"));
        QVERIFY(writeFile(path("sys/class/tty/ttyS1/type"), "0\n"));
        QVERIFY(QDir().mkpath(path("sys/class/tty/tty1")));
        QStringList texts;
        for (const SerialPortInfo &port : serialPorts(path("sys")))
            texts << port.node + ": " + port.description;
        QCOMPARE(texts, QStringList({ "/dev/ttyS0: serial", "/dev/ttyUSB0: Example USB-RS485" }));
    }

    void wayToADevice_data()
    {
        const Columns<QString, QString> row("device", "text");
        row("no port", "port=/dev/ttyNone", "there is no such port");
        row("a file", "port=file", "that is no port");
        row("silent port", "port=/dev/ptmx,addr=7", "nobody answers at address 7");
        row("refused", "tcp=127.0.0.1:1", "the connection is refused");
        row("silent peer", "tcp=127.0.0.1:%1,addr=255", "unit 255 does not answer");
    }

    void wayToADevice()
    {
        QFETCH(QString, device);
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        QVERIFY(writeFile("file", ""));
        const QString place = device.contains("%1") ? device.arg(server.serverPort()) : device;
        ReachCheck check;
        QString answer;
        connect(&check, &ReachCheck::finished, this,
                [&](bool, const QString &text) { answer = text; });
        check.start(*parseDevice("name=a," + place).device);
        QFETCH(QString, text);
        QTRY_VERIFY2(answer.contains(text), qPrintable(answer));
    }

    // The configuration files that the host writes for the plug-in and shares with people.
    void changedLine_data()
    {
        const Columns<QByteArray, QByteArray> row("before", "after");
        row("empty", "", "[dev]\nttyS0\\param=\"9600,n,8,1\"\n");
        row("comments and strangers stay", "# lines\nnonsense\n[x]\na = b\n",
            "# lines\nnonsense\n[x]\na = b\n[dev]\nttyS0\\param=\"9600,n,8,1\"\n");
        row("section is there", "[dev]\nttyS1\\timeout=5\n",
            "[dev]\nttyS0\\param=\"9600,n,8,1\"\nttyS1\\timeout=5\n");
        row("written by a program", "[dev]\nttyS0\\param=\"2400,e,7,2\"\n\n",
            "[dev]\nttyS0\\param=\"9600,n,8,1\"\n\n");
        row("written by hand", "/dev/ttyS0/param=2400,e,7,2\r\n[z]\n",
            "/dev/ttyS0/param=\"9600,n,8,1\"\r\n[z]\n");
        row("commented out", "[dev]\n;ttyS0\\param=1\n",
            "[dev]\nttyS0\\param=\"9600,n,8,1\"\n;ttyS0\\param=1\n");
        row("no end of the line", "[dev]\nttyS0\\param=1", "[dev]\nttyS0\\param=\"9600,n,8,1\"");
    }

    void changedLine()
    {
        QFETCH(QByteArray, before);
        QVERIFY(writeFile("serial.ini", before));
        const ParsedDevice device = parseDevice("name=a,port=/dev/ttyS0,settings=9600,N,8,1");
        QVERIFY2(device.device, qPrintable(device.error));
        const SerialSettings result = writeSerialSettings({ *device.device });
        QCOMPARE(result.outcome.error, QString());
        QTEST(fileContents("serial.ini"), "after");
        QCOMPARE(result.notes.size(), before.contains("2400") || before.endsWith("=1") ? 1 : 0);
        // As the plug-in reads it.
        const QSettings settings("serial.ini", QSettings::IniFormat);
        if (!before.startsWith('/'))
            QCOMPARE(settings.value("/dev/ttyS0/param").toString(), QString("9600,n,8,1"));
    }

    void keysOfAllLetters()
    {
        const QString port = QString::fromUtf8("/tmp/線 1%/a=b;[c]");
        IniLines lines("");
        lines.setValue(port + "/timeout", "7");
        QVERIFY(writeFile("x.ini", lines.bytes()));
        QCOMPARE(QSettings("x.ini", QSettings::IniFormat).value(port + "/timeout").toInt(), 7);
        QCOMPARE(lines.value(port + "/timeout").value_or(QString()), QString("7"));
    }

    void fifoInItsPlace()
    {
        QVERIFY(QDir().mkpath("KOVA/TesselView/db"));
        for (const char *name : { "serial.ini", "KOVA/TesselView/db/dev.ini" })
            QCOMPARE(::mkfifo(name, 0600), 0);
        QVERIFY(writeConfiguration(".", {}).error.contains("dev.ini: it is no file"));
        const ParsedDevice device = parseDevice("name=a,port=/dev/ttyS0,timeout=100");
        QVERIFY(
            writeSerialSettings({ *device.device }).outcome.error.contains("no file of settings"));
    }

    void textOfADevice_data()
    {
        const Columns<QString> row("text");
        for (const char *text :
             { "name=a,port=/dev/ttyS0,addr=1", "name=b c,tcp=[::1]:1502,addr=247",
               "name=d,port=p,addr=7,settings=9600,n,8,1,timeout=300" })
            row(text, text);
    }

    void textOfADevice()
    {
        QFETCH(QString, text);
        QCOMPARE(parseDevice(text).device.value_or(DeviceSpec()).text(), text);
    }
};

QTEST_MAIN(tst_Hostparts)
#include "tst_hostparts.moc"
