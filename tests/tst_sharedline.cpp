// Clients of one line on pseudo-terminals: who waits for whom, and who does not.

#include "guardedtest.h"
#include "inthreads.h"
#include "linepause.h"
#include "modbusserver.h"
#include "portmanage.h"
#include "ptypair.h"
#include "registerread.h"
#include "serial/portlock.h"
#include "stopsource.h"

#include <functional>
#include <thread>
#include <vector>

using namespace std::chrono_literals;

namespace {

const QString iniName = QStringLiteral("serial.ini");

} // namespace

Q_DECLARE_METATYPE(std::function<void(PortManage &, SerialPort &)>)

class tst_SharedLine : public GuardedTest
{
    Q_OBJECT

private slots:
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
                if (!exchanged(*port, thread * 200 + i % 190))
                    ++failures;
            }
        });
        QCOMPARE(failures.load(), 0);
    }

    // However soon somebody asks again: everybody who asked before comes first.
    void everyoneInTurn()
    {
        PtyPair line;
        PortManage manager;
        manager.getPortHandle(line.name());
        const StopSource goesOn;
        std::atomic<int> calls { 0 };
        std::atomic<int> longest { 0 }; // calls of others between asking and getting the line
        inThreads([&](int thread) {
            const StopSource::Scope scope(goesOn);
            for (int i = 0; i < 8; ++i) {
                const int asked = calls;
                SerialPort *port = manager.getLockedPort(line.name());
                const PortLock lock(*port, std::adopt_lock);
                longest = std::max(longest.load(), calls - asked);
                std::this_thread::sleep_for(thread == 0 ? 1ms : 10ms);
                ++calls;
            }
        });
        QVERIFY2(longest <= threadCount,
                 qPrintable(QString::number(longest))); // and one on the way
    }

    // By lock object, by Lock() and UnLock(), by the bare mutex, by name: one at a time.
    void everyWayToLockExcludesTheOthers()
    {
        PtyPair line;
        PortManage manager;
        SerialPort *port = manager.getPortHandle(line.name());
        std::atomic<int> inside { 0 };
        std::atomic<bool> alone { true };
        const auto use = [&] {
            alone = alone && ++inside == 1;
            std::this_thread::yield();
            --inside;
        };
        inThreads([&](int thread) {
            for (int i = 0; i < 2000; ++i) {
                if (thread == 0) {
                    const PortLock lock(*port);
                    use();
                } else if (thread == 1) {
                    port->Lock();
                    use();
                    port->UnLock();
                } else if (thread == 2) {
                    port->mutex->lock();
                    use();
                    port->mutex->unlock();
                } else {
                    const PortLock lock(*manager.getLockedPort(line.name()), std::adopt_lock);
                    use();
                }
            }
        });
        QVERIFY(alone);
    }

    void hostDoesNotWaitForABusyLine_data()
    {
        const Columns<bool> row("asked");
        row("the next user opens it anew", true);
        row("nobody uses it", false);
    }

    void hostDoesNotWaitForABusyLine()
    {
        QFETCH(bool, asked);
        PtyPair line;
        PortManage manager;
        SerialPort *port = manager.getPortHandle(line.name());
        QVERIFY(writeFile(iniName, "[" + line.name().toUtf8() + "]\nparam=2400,n,8,1\n"));
        QSemaphore locked;
        std::thread user([&] {
            const PortLock lock(*port);
            locked.release();
            std::this_thread::sleep_for(500ms);
        });
        locked.acquire();
        Stopwatch clock;
        QCOMPARE(manager.getPortHandle(line.name()), port);
        manager.ReOpen(line.name());
        const qint64 took = clock.elapsed(); // as a host that configures a client
        manager.Close(line.name());          // which does not make it forget the new settings
        user.join();
        QVERIFY2(took < 120, qPrintable(QString::number(took)));
        QCOMPARE(port->getPortSettings(), QStringLiteral("9600,n,8,1"));
        if (asked)
            PortLock(*manager.getLockedPort(line.name()), std::adopt_lock);
        QTRY_COMPARE(port->getPortSettings(), QStringLiteral("2400,n,8,1"));
        QVERIFY(port->isOpen());
    }

    void nothingIsReopenedInAPause_data()
    {
        using Act = std::function<void(PortManage &, SerialPort &)>;
        const Columns<Act, bool> row("act", "staysDue");
        row("asked for",
            Act([](PortManage &m, SerialPort &p) { m.getPortHandle(p.getPortName()); }), false);
        row("asked for, locked", Act([](PortManage &m, SerialPort &p) {
                PortLock(*m.getLockedPort(p.getPortName()), std::adopt_lock);
            }),
            false);
        row("closed", Act([](PortManage &m, SerialPort &p) { m.Close(p.getPortName()); }), false);
        row("reopened by hand", Act([](PortManage &, SerialPort &p) {
                const PortLock lock(p);
                p.ReOpen();
            }),
            false);
        row("reopened", Act([](PortManage &m, SerialPort &p) { m.ReOpen(p.getPortName()); }), true);
        row("reopened while in use", Act([](PortManage &m, SerialPort &p) {
                p.Lock();
                m.ReOpen(p.getPortName());
                p.UnLock();
            }),
            true);
    }

    // Another program has the line meanwhile.
    void nothingIsReopenedInAPause()
    {
        QFETCH(std::function<void(PortManage &, SerialPort &)>, act);
        QFETCH(bool, staysDue);
        PtyPair line;
        PortManage manager;
        SerialPort *port = manager.getPortHandle(line.name());
        const auto isOpen = [port] {
            const PortLock lock(*port);
            return port->isOpen();
        };
        auto pause = std::make_unique<LinePause>(line.name());
        QVERIFY(!pause->isQuiet());
        manager.Close(line.name());
        QVERIFY(pause->isQuiet());
        QSignalSpy opened(port, &QIODevice::aboutToClose); // which each open one tells in the end
        act(manager, *port);
        QTest::qWait(150); // in which the manager would have tried
        QVERIFY(!isOpen());
        QCOMPARE(opened.count(), 0);
        pause.reset();
        if (!staysDue)
            manager.getPortHandle(line.name());
        QTRY_VERIFY(isOpen());
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
                        if (!exchanged(*port, i))
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

    // At random, and often while the threads have only begun.
    void exitWhileBusy()
    {
        QVERIFY(writeFile(iniName, "[absent]\ntimeout=never\n"));
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
        // A second of waiting each otherwise.
        environment.insert(QStringLiteral("TSAN_OPTIONS"),
                           environment.value(QStringLiteral("TSAN_OPTIONS"))
                               + QStringLiteral(":atexit_sleep_ms=0"));
        auto *const random = QRandomGenerator::global();
        for (int run = 0; run < 150; ++run) {
            QProcess process;
            process.setProcessEnvironment(environment);
            process.setProcessChannelMode(QProcess::MergedChannels);
            process.start(QStringLiteral(BUSY_EXIT),
                          { QString::number(random->bounded(run % 2 ? 40'000 : 1'500)) });
            QVERIFY(process.waitForFinished(60'000));
            const QByteArray output = process.readAll();
            QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
                     output.constData());
        }
    }
};

QTEST_GUILESS_MAIN(tst_SharedLine)
#include "tst_sharedline.moc"
