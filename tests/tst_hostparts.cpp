#include "guardedtest.h"

#include "devicestatus.h"
#include "family.h"
#include "reachcheck.h"
#include "serialports.h"

#include <QTcpServer>

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
};

QTEST_MAIN(tst_Hostparts)
#include "tst_hostparts.moc"
