// The port manager on pseudo-terminals: who gets which port, when it closes, who waits for whom.

#include "comm/portlock.h"
#include "comm/portmanage.h"
#include "comm/serialini.h"
#include "guardedtest.h"
#include "modbusserver.h"
#include "ptypair.h"
#include "registerread.h"

#include <thread>
#include <vector>

using namespace std::chrono_literals;

namespace {

constexpr int threadCount = 4;
const QString iniName = QStringLiteral("serial.ini");

template <typename Function> void inThreads(Function function)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back(function, i);
    for (std::thread &thread : threads)
        thread.join();
}

bool exchange(SerialPort &port, int address)
{
    PortDescriptor handle { &port, CommRead, CommWrite };
    return readRegisters(handle, address, 4);
}

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

    void settingsFile()
    {
        const struct
        {
            QByteArray ini; // NAME stands for the port
            const char *param;
            int tenths;
            const char *warning;
        } rows[] = {
            // clang-format off
            { "",                                                             "9600,n,8,1", 10, "" },
            { "[dev]\npts\\NUMBER\\param=\"1200,e,8,2\"\n",                    "1200,e,8,2", 10, "" },
            { "[dev]\npts/NUMBER/param=1200,e,8,2\npts/NUMBER/timeout=500\n", "1200,e,8,2",  5, "" },
            { "NAME/param=1200,e,8,2\nNAME/timeout=700\n",                    "1200,e,8,2",  7, "" },
            { "[NAME]\nparam=\"1200,e,8,2\"\n",                               "1200,e,8,2", 10, "" },
            { "[NAME]\ntimeout=-5\n",                                         "9600,n,8,1", 10, "timeout of NAME is no time: -5" },
            { "[dev]\npts\\NUMBER\\timeout=soon\n",                           "9600,n,8,1", 10, "timeout of NAME is no time: soon" },
            { "[dev]\npts\\NUMBER\\param=\x01\x02\xff\n",                     "9600,n,8,1", 10, "settings of NAME are no text" },
            { "[broken\n[dev]\npts\\NUMBER\\param=\"1200,e,8,2\"\n",            "1200,e,8,2", 10, "has lines that are no settings" },
            { "folder",                                                       "9600,n,8,1", 10, "cannot be read, the defaults stand for NAME" },
            // clang-format on
        };
        for (const auto &row : rows) {
            m_guard.emplace();
            PtyPair line;
            const QByteArray name = line.name().toUtf8();
            const QByteArray number = name.mid(name.lastIndexOf('/') + 1);
            if (row.ini == "folder")
                QVERIFY(QFile::remove(iniName) && QDir().mkdir(iniName));
            else
                QVERIFY(writeFile(
                    iniName, QByteArray(row.ini).replace("NAME", name).replace("NUMBER", number)));
            const QByteArray warning = QByteArray(row.warning).replace("NAME", name);
            m_guard->expect(QLatin1String("^serial.ini: ") + QString::fromUtf8(warning));
            PortManage manager;
            const SerialPort *port = manager.getPortHandle(line.name());
            QCOMPARE(port->getPortSettings(), QString::fromLatin1(row.param));
            QCOMPARE(int(line.settings().c_cc[VTIME]), row.tenths);
            manager.ReOpen(line.name());
            QCOMPARE(m_guard->messages().filter(iniName).size(),
                     warning.isEmpty() ? 0 : 1); // told once
            QCOMPARE(m_guard->unexpected(), QStringList());
        }
        QVERIFY(QDir().rmdir(iniName) && writeFile(iniName, "[a]\ntimeout=x\n[b]\ntimeout=y\n"));
        m_guard->expect(QStringLiteral("no time: [xy]$"));
        for (const char *port : { "a", "b", "a", "b" })
            QCOMPARE(readSerialIni(QString::fromLatin1(port)).timeout, 1000);
        QCOMPARE(m_guard->messages().filter(QStringLiteral("no time: ")).size(), 2); // one a port
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
        QCOMPARE(port->lastError(), ulong(SerialPort::WriteFailed));
        QVERIFY(clock.elapsed() < 150); // much less than the timeout
        QVERIFY(!manager.getPortHandle(line.name())->isOpen());
        QCOMPARE(port->readData(&byte, 1) + port->writeData(&byte, 1), -2);
        line.plug();
        const ModbusServer device(line.master());
        QVERIFY(exchange(*manager.getPortHandle(line.name()), 5));
    }

    void threadsShareALine()
    {
        constexpr int exchanges = 10'000;
        PtyPair line;
        const ModbusServer device(line.master());
        PortManage manager;
        std::atomic<int> failures { 0 };
        inThreads([&](int thread) {
            for (int i = 0; i < exchanges / threadCount; ++i) {
                SerialPort *port = manager.getPortHandle(line.name());
                const PortLock lock(*port);
                if (!exchange(*port, thread * 200 + i % 190))
                    ++failures;
            }
        });
        QCOMPARE(failures.load(), 0);
    }

    // Ticks, reopening and new ports beside exchanges: nothing deadlocks, no exchange fails.
    void everythingAtOnce()
    {
        PtyPair line;
        const ModbusServer device(line.master());
        std::vector<std::unique_ptr<PtyPair>> others(threadCount);
        for (auto &other : others)
            other = std::make_unique<PtyPair>();
        PortManage manager;
        std::atomic<int> working { threadCount };
        std::atomic<int> failures { 0 };
        std::thread threads([&] {
            inThreads([&](int thread) {
                for (int i = 0; i < 100; ++i) {
                    manager.getPortHandle(line.name())->getPortSettings();
                    {
                        SerialPort *port = manager.getLockedPort(line.name());
                        const PortLock lock(*port, std::adopt_lock);
                        if (!exchange(*port, i))
                            ++failures;
                    }
                    manager.getPortHandle(others[size_t(i) % threadCount]->name());
                    if (i % 10 == thread)
                        manager.ReOpen(line.name());
                    if (i % 10 == 5)
                        manager.Close(others[size_t(thread)]->name());
                }
                --working;
            });
        });
        while (working > 0) {
            manager.timerProc();
            QTest::qWait(1);
        }
        threads.join();
        QCOMPARE(failures.load(), 0);
    }
};

QTEST_GUILESS_MAIN(tst_PortManage)
#include "tst_portmanage.moc"
