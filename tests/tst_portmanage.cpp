// The port manager on pseudo-terminals: who gets which port, when it closes, who waits for whom.

#include "guardedtest.h"
#include "inthreads.h"
#include "modbusserver.h"
#include "portmanage.h"
#include "ptypair.h"
#include "registerread.h"
#include "serial/serialini.h"
#include "stopsource.h"

#include <sys/stat.h>
#include <thread>

using namespace std::chrono_literals;

namespace {

const QString iniName = QStringLiteral("serial.ini");

} // namespace

class tst_PortManage : public GuardedTest
{
    Q_OBJECT

private slots:
    void oneInstanceInTheMainThread()
    {
        PortManage *got[threadCount] = {};
        inThreads([&got](int i) { got[i] = PortManage::instance(); });
        for (const PortManage *manager : got)
            QCOMPARE(manager, PortManage::instance());
        QCOMPARE(got[0]->thread(), thread());
        auto *timer = got[0]->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
        QTRY_VERIFY(timer->isActive());
        QCOMPARE(timer->interval(), 30'000);
        QVERIFY(QMetaType::type("QMap<QString,SerialPort*>") != QMetaType::UnknownType);

        // It runs there, too: the tick closes a port that another thread opened.
        PtyPair line;
        SerialPort *port = nullptr;
        std::thread([&] { port = got[0]->getPortHandle(line.name()); }).join();
        QVERIFY(port->isOpen());
        timer->start(1);
        QTRY_VERIFY(!port->isOpen());
        timer->start(30'000);
    }

    void settingsFile_data()
    {
        QTest::addColumn<QByteArray>("ini"); // NAME stands for the port
        QTest::addColumn<QString>("param");
        QTest::addColumn<int>("tenths");
        QTest::addColumn<QByteArray>("warning");
        const auto row = [](const char *name, const char *ini, const char *param, int tenths,
                            const char *warning = "") {
            QTest::newRow(name) << QByteArray(ini) << QString(param) << tenths
                                << QByteArray(warning);
        };
        // clang-format off
        row("none", "", "9600,n,8,1", 10);
        row("fifo", "fifo", "9600,n,8,1", 10, "cannot be read, the defaults stand for NAME: not a regular file");
        row("group of the folder", "[dev]\npts\\NUMBER\\param=\"1200,e,8,2\"\n", "1200,e,8,2", 10);
        row("group, unquoted", "[dev]\npts/NUMBER/param=1200,e,8,2\npts/NUMBER/timeout=500\n", "1200,e,8,2", 5);
        row("whole name", "NAME/param=1200,e,8,2\nNAME/timeout=700\n", "1200,e,8,2", 7);
        row("section", "[NAME]\nparam=\"1200,e,8,2\"\n", "1200,e,8,2", 10);
        row("negative time", "[NAME]\ntimeout=-5\n", "9600,n,8,1", 10, "timeout of NAME is no time: -5");
        row("time in words", "[dev]\npts\\NUMBER\\timeout=soon\n", "9600,n,8,1", 10, "timeout of NAME is no time: soon");
        row("settings of no text", "[dev]\npts\\NUMBER\\param=\x01\x02\xff\n", "9600,n,8,1", 10, "settings of NAME are no text");
        row("broken section", "[broken\n[dev]\npts\\NUMBER\\param=\"1200,e,8,2\"\n", "1200,e,8,2", 10, "has lines that are no settings");
        row("before another section", "NAME/param=4800,n,8,1\n[other]\nparam=1\n", "4800,n,8,1", 10);
        row("no wait at all", "[NAME]\ntimeout=25600\n", "9600,n,8,1", 0, "timeout of NAME is no time: 25600 .* 0 ms stand for it");
        row("time that wraps", "[NAME]\ntimeout=30000\n", "9600,n,8,1", 44, "timeout of NAME is no time: 30000 .* 4400 ms stand for it");
        row("time too long", "[dev]\npts\\NUMBER\\timeout=99999999999\n", "9600,n,8,1", 255, "timeout of NAME is no time: 99999999999 .*25500 ms stand for it");
        row("folder", "folder", "9600,n,8,1", 10, "cannot be read, the defaults stand for NAME");
        // clang-format on
    }

    void settingsFile()
    {
        QFETCH(QByteArray, ini);
        QFETCH(QByteArray, warning);
        PtyPair line;
        const QByteArray name = line.name().toUtf8();
        const QByteArray number = name.mid(name.lastIndexOf('/') + 1);
        if (ini == "folder")
            QVERIFY(QDir().mkdir(iniName));
        else if (ini == "fifo")
            QCOMPARE(mkfifo("serial.ini", 0600), 0);
        else
            QVERIFY(writeFile(iniName, ini.replace("NAME", name).replace("NUMBER", number)));
        warning.replace("NAME", name);
        m_guard->expect(QLatin1String("^serial.ini: ") + QString::fromUtf8(warning));
        PortManage manager;
        const SerialPort *port = manager.getPortHandle(line.name());
        QTEST(port->getPortSettings(), "param");
        QTEST(int(line.settings().c_cc[VTIME]), "tenths");
        manager.ReOpen(line.name());
        QCOMPARE(m_guard->messages().filter(iniName).size(), warning.isEmpty() ? 0 : 1); // once
    }

    void warningForEachPort()
    {
        QVERIFY(writeFile(iniName, "[a]\ntimeout=x\n[b]\ntimeout=y\n"));
        m_guard->expect(QStringLiteral("no time: [xy] "));
        for (const char *port : { "a", "b", "a", "b" })
            QCOMPARE(readSerialIni(QString::fromLatin1(port)).timeout, 1000);
        QCOMPARE(m_guard->messages().filter(QStringLiteral("no time: ")).size(), 2);
    }

    // Once a cause, however often the port is tried, and with all that helps to mend it.
    void settingsThatCannotBeSet_data()
    {
        const Columns<QString, QString> row("param", "remark");
        row("none", "hello", "not taken; allowed are .* as in 9600,n,8,1");
        row("empty", "", "not taken");
        row("parity", "9600,x,8,1", "not taken");
        row("odd rate", "9601,n,8,1", "50 baud is set");
        row("rate of other systems", "14400,n,8,1", "another rate is set");
        row("mark parity", "9600,m,8,1", "mark parity is not available");
        row("space parity", "9600,s,8,1", "needs 7 data bits");
        row("stop bits and a half", "12#3#0#2", "1.5 are not available");
        row("two stop bits", "9600,n,5,2", "5 data bits go with 1");
        row("all right", "9600,n,8,1", "");
    }

    void settingsThatCannotBeSet()
    {
        QFETCH(QString, param);
        QFETCH(QString, remark);
        PtyPair line(path("tty" + QString::fromLatin1(QTest::currentDataTag())));
        QVERIFY(writeFile(iniName,
                          "[General]\n\"ignored\"=1\n" + line.name().toUtf8().replace(' ', "%20")
                              + "\\param=\"" + param.toUtf8() + "\"\n"));
        m_guard->expect(QStringLiteral("Posix_QextSerialPort"));
        m_guard->expect("^serial.ini: settings of " + line.name() + " are " + param + ": .*"
                        + remark);
        PortManage manager;
        manager.getPortHandle(line.name());
        for (int i = 0; i < 3; ++i)
            manager.ReOpen(line.name());
        QCOMPARE(m_guard->messages().filter(QStringLiteral("serial.ini: ")).size(),
                 remark.isEmpty() ? 0 : 1);
    }

    void openAndClosed()
    {
        PtyPair line;
        PortManage manager;
        SerialPort *port = manager.getPortHandle(line.name());
        QVERIFY(writeFile(iniName, "[" + line.name().toUtf8() + "]\nparam=2400,n,8,1\n"));
        port->inUse = true;
        manager.timerProc();
        QVERIFY(port->isOpen() && !port->inUse);
        manager.timerProc();
        QVERIFY(!port->isOpen());
        QCOMPARE(manager.getPortHandle(line.name()), port);
        QCOMPARE(port->getPortSettings(), QStringLiteral("9600,n,8,1"));
        manager.ReOpen(line.name());
        const termios set = line.settings();
        QCOMPARE(cfgetospeed(&set), speed_t(B2400));
        manager.Close(line.name());
        QVERIFY(!port->isOpen());
        // A port that does not exist is kept.
        SerialPort *absent = manager.getPortHandle(QStringLiteral("COM1"));
        QVERIFY(absent && !absent->isOpen()
                && manager.getPortHandle(QStringLiteral("COM1")) == absent);
    }

    void busyPortIsClosedLater()
    {
        PtyPair line;
        PtyPair other;
        PortManage manager;
        SerialPort *port = manager.getPortHandle(line.name());
        SerialPort *idle = manager.getPortHandle(other.name());
        port->Lock();
        Stopwatch clock;
        manager.timerProc();
        // Nor does a busy port hold up the clients of others.
        std::thread waiting([&] { manager.getPortHandle(line.name()); });
        QVERIFY(port->isOpen() && !idle->isOpen());
        QVERIFY(manager.getPortHandle(other.name()));
        QVERIFY(clock.elapsed() < 500);
        port->UnLock();
        waiting.join();
        port->Lock();
        manager.timerProc();
        StopSource stopped;
        stopped.request();
        {
            const StopSource::Scope scope(stopped);
            QVERIFY(!manager.getPortHandle(line.name()));
        }
        QTest::qWait(100); // the tick is tried again meanwhile
        port->UnLock();
        QTRY_VERIFY(!port->isOpen()); // without anybody asking for it
    }

    void replugged()
    {
        PtyPair line(path("ttyUSB7"));
        PortManage manager;
        SerialPort *port = manager.getPortHandle(line.name());
        line.unplug();
        char byte = 0;
        Stopwatch clock;
        QVERIFY(port->readData(&byte, 1) <= 0);
        QVERIFY(port->isHungUp());
        QCOMPARE(port->writeData(&byte, 1), -1);
        QCOMPARE(port->lastError(), ulong(PortError::WriteFailed));
        QVERIFY(clock.elapsed() < 150); // much less than the timeout
        QVERIFY(!manager.getPortHandle(line.name())->isOpen());
        QCOMPARE(port->readData(&byte, 1) + port->writeData(&byte, 1), -2);
        line.plug();
        const ModbusServer device(line.master());
        QVERIFY(exchanged(*manager.getPortHandle(line.name()), 5));
    }
};

QTEST_GUILESS_MAIN(tst_PortManage)
#include "tst_portmanage.moc"
