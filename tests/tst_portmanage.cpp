// The port manager on pseudo-terminals: who gets which port, when it closes, who waits for whom.

#include "comm/commio.h"
#include "comm/driverapi.h"
#include "comm/modbusframe.h"
#include "comm/portlock.h"
#include "comm/portmanage.h"
#include "modbusserver.h"
#include "ptypair.h"
#include "warningguard.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <thread>
#include <vector>

using namespace std::chrono_literals;

namespace {

constexpr int threadCount = 4;

void writeIni(const QByteArray &text)
{
    QFile file(QStringLiteral("serial.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(text), text.size());
}

template <typename Function> void inThreads(Function function)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back(function, i);
    for (std::thread &thread : threads)
        thread.join();
}

// One exchange in the pieces that a driver makes of it; others on the line would get in between.
bool exchange(SerialPort &port, int address)
{
    PortDescriptor handle { &port, CommRead, CommWrite };
    unsigned char frame[64] = {};
    auto *bytes = reinterpret_cast<char *>(frame);
    const int length = buildCmd(frame, 1, 3, address, 4);
    if (CommWrite(&handle, bytes, 3) != 3 || CommWrite(&handle, bytes + 3, 5) != 5)
        return false;
    int got = 0;
    for (int part = 1; got < length && part > 0; got += qMax(0, part))
        part = CommRead(&handle, bytes + got, length - got);
    return got == length && checkModbufCRC(frame, got) == 0
        && UINT8_2_to_UINT16(frame + 3) == 3 * address;
}

} // namespace

class tst_PortManage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void oneInstanceInTheMainThread();
    void settingsFile_data();
    void settingsFile();
    void settingsChangeAtReOpen();
    void idlePortsAreClosed();
    void busyPortIsClosedLater();
    void replugged();
    void threadsShareALine();
    void everythingAtOnce();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<WarningGuard> m_guard;
};

void tst_PortManage::initTestCase()
{
    QVERIFY(QDir::setCurrent(m_folder.path()));
}

void tst_PortManage::init()
{
    m_guard = std::make_unique<WarningGuard>();
    QFile::remove(QStringLiteral("serial.ini"));
}

void tst_PortManage::cleanup()
{
    QCOMPARE(m_guard->unexpected(), QStringList());
    m_guard.reset();
}

void tst_PortManage::oneInstanceInTheMainThread()
{
    PortManage *got[threadCount] = {};
    inThreads([&got](int i) { got[i] = PortManage::instance(); });
    for (const PortManage *manager : got)
        QCOMPARE(manager, PortManage::instance());
    QCOMPARE(got[0]->thread(), thread());
    auto *timer = got[0]->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    QTRY_VERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 30'000);
    QCOMPARE(QMetaType::type("QMap<QString,SerialPort*>") != QMetaType::UnknownType, true);

    // It runs there, too: the tick closes a port that another thread opened.
    PtyPair line;
    SerialPort *port = nullptr;
    std::thread([&] { port = got[0]->getPortHandle(line.name()); }).join();
    QVERIFY(port->isOpen());
    timer->start(1);
    QTRY_VERIFY(!port->isOpen());
    timer->start(30'000);
}

void tst_PortManage::settingsFile_data()
{
    QTest::addColumn<QByteArray>("ini"); // NAME stands for the port
    QTest::addColumn<QString>("param");
    QTest::addColumn<int>("tenths");
    QTest::addColumn<QString>("warning");
    const QString usual = QStringLiteral("9600,n,8,1");
    const QString other = QStringLiteral("1200,e,8,2");
    QTest::newRow("no file") << QByteArray() << usual << 10 << QString();
    QTest::newRow("quoted") << QByteArray("[dev]\npts\\NUMBER\\param=\"1200,e,8,2\"\n") << other
                            << 10 << QString();
    QTest::newRow("typed") << QByteArray("[dev]\npts/NUMBER/param=1200,e,8,2\n"
                                         "pts/NUMBER/timeout=500\n")
                           << other << 5 << QString();
    QTest::newRow("typed with slash")
        << QByteArray("NAME/param=1200,e,8,2\nNAME/timeout=700\n") << other << 7 << QString();
    QTest::newRow("section with slash")
        << QByteArray("[NAME]\nparam=\"1200,e,8,2\"\n") << other << 10 << QString();
    QTest::newRow("negative timeout") << QByteArray("[NAME]\ntimeout=-5\n") << usual << 10
                                      << "serial.ini: timeout of NAME is no time: -5";
    QTest::newRow("worded timeout") << QByteArray("[dev]\npts\\NUMBER\\timeout=soon\n") << usual
                                    << 10 << "serial.ini: timeout of NAME is no time: soon";
    QTest::newRow("binary value") << QByteArray("[dev]\npts\\NUMBER\\param=\x01\x02\xff\n") << usual
                                  << 10 << "serial.ini: settings of NAME are no text";
    QTest::newRow("folder") << QByteArray("folder") << usual << 10
                            << "serial.ini: cannot be read, the defaults stand for NAME";
}

void tst_PortManage::settingsFile()
{
    QFETCH(QByteArray, ini);
    QFETCH(QString, warning);
    PtyPair line;
    const QString name = line.name();
    ini.replace("NAME", name.toUtf8()).replace("NUMBER", QFileInfo(name).fileName().toUtf8());
    if (ini == "folder")
        QVERIFY(QDir().mkdir(QStringLiteral("serial.ini")));
    else if (!ini.isEmpty())
        writeIni(ini);
    PortManage manager;
    if (!warning.isEmpty())
        m_guard->expect(QLatin1Char('^')
                        + QRegularExpression::escape(warning.replace(QLatin1String("NAME"), name)));
    SerialPort *port = manager.getPortHandle(name);
    QTEST(port->getPortSettings(), "param");
    QTEST(int(line.settings().c_cc[VTIME]), "tenths");
    manager.ReOpen(name);
    QCOMPARE(m_guard->messages().filter(QStringLiteral("serial.ini")).size(),
             warning.isEmpty() ? 0 : 1); // told once
    QDir().rmdir(QStringLiteral("serial.ini"));
}

void tst_PortManage::settingsChangeAtReOpen()
{
    PtyPair line;
    PortManage manager;
    SerialPort *port = manager.getPortHandle(line.name());
    writeIni("[" + line.name().toUtf8() + "]\nparam=2400,n,8,1\n");
    QCOMPARE(manager.getPortHandle(line.name()), port);
    QCOMPARE(port->getPortSettings(), QStringLiteral("9600,n,8,1"));
    manager.ReOpen(line.name());
    const termios set = line.settings();
    QCOMPARE(cfgetospeed(&set), speed_t(B2400));
    manager.Close(line.name());
    QVERIFY(!port->isOpen());
    QVERIFY(manager.getPortHandle(line.name())->isOpen());
    // A port that does not exist is kept and tried again.
    SerialPort *absent = manager.getPortHandle(QStringLiteral("COM1"));
    QVERIFY(absent && !absent->isOpen());
    QCOMPARE(manager.getPortHandle(QStringLiteral("COM1")), absent);
}

void tst_PortManage::idlePortsAreClosed()
{
    PtyPair line;
    PortManage manager;
    SerialPort *port = manager.getPortHandle(line.name());
    port->inUse = true;
    manager.timerProc();
    QVERIFY(port->isOpen() && !port->inUse);
    manager.timerProc();
    QVERIFY(!port->isOpen());
    manager.getPortHandle(line.name());
    QVERIFY(port->isOpen());
}

void tst_PortManage::busyPortIsClosedLater()
{
    PtyPair line;
    PtyPair other;
    PortManage manager;
    SerialPort *port = manager.getPortHandle(line.name());
    SerialPort *idle = manager.getPortHandle(other.name());
    port->Lock();
    QElapsedTimer clock;
    clock.start();
    manager.timerProc();
    // Nor does a busy port hold up the clients of others.
    std::thread waiting([&] { manager.getPortHandle(line.name()); });
    QVERIFY(!idle->isOpen());
    QVERIFY(manager.getPortHandle(other.name()));
    QVERIFY(clock.elapsed() < 500);
    QVERIFY(port->isOpen());
    port->UnLock();
    waiting.join();
    const int opened = m_guard->messages().size();
    manager.timerProc();
    QVERIFY(!port->isOpen());
    QCOMPARE(m_guard->messages().size(), opened);

    manager.getPortHandle(line.name());
    port->Lock();
    manager.timerProc();
    port->UnLock();
    QTRY_VERIFY(!port->isOpen()); // without anybody asking for it
}

void tst_PortManage::replugged()
{
    PtyPair line(m_folder.filePath(QStringLiteral("ttyUSB7")));
    PortManage manager;
    SerialPort *port = manager.getPortHandle(line.name());
    line.unplug();
    char byte = 0;
    QVERIFY(port->readData(&byte, 1) <= 0);
    QVERIFY(!manager.getPortHandle(line.name())->isOpen());
    line.plug();
    const ModbusServer device(line.master());
    QVERIFY(exchange(*manager.getPortHandle(line.name()), 5));
}

void tst_PortManage::threadsShareALine()
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

// Ticks, reopening and new ports beside exchanges: nothing deadlocks, and the line recovers.
void tst_PortManage::everythingAtOnce()
{
    PtyPair line;
    const ModbusServer device(line.master());
    std::vector<std::unique_ptr<PtyPair>> others(threadCount);
    for (auto &other : others)
        other = std::make_unique<PtyPair>();
    PortManage manager;
    std::atomic<int> working { threadCount };
    std::thread threads([&] {
        inThreads([&](int thread) {
            for (int i = 0; i < 100; ++i) {
                SerialPort *port = manager.getPortHandle(line.name());
                port->getPortSettings();
                {
                    const PortLock lock(*port);
                    if (port->isOpen())
                        exchange(*port, i);
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
    SerialPort *port = manager.getPortHandle(line.name());
    QTRY_VERIFY(PortLock(*port) && (port->isOpen() || port->ReOpen()) && exchange(*port, 9));
}

QTEST_GUILESS_MAIN(tst_PortManage)
#include "tst_portmanage.moc"
