// The serial port on a pseudo-terminal, whose driver tells what it was asked for.

#include "comm/portlock.h"
#include "comm/serialport.h"
#include "ptypair.h"
#include "warningguard.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <dlfcn.h>

static termios asked; // what the port asked for last

// Pseudo-terminals always have eight bits and no parity, so this is looked at on the way.
extern "C" int tcsetattr(int descriptor, int action, const termios *settings) noexcept
{
    static const auto real = reinterpret_cast<decltype(&tcsetattr)>(dlsym(RTLD_NEXT, "tcsetattr"));
    asked = *settings;
    return action == TCSAFLUSH ? real(descriptor, action, settings) : -1;
}

namespace {

constexpr tcflag_t frameFlags = CSIZE | PARENB | PARODD | CSTOPB;
constexpr int noticeable = 150; // ms; much less than any timeout used here

QByteArray contents(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const QString plain = QStringLiteral("9600,n,8,1");

} // namespace

class tst_SerialPort : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void settings_data();
    void settings();
    void refusedSettings_data();
    void refusedSettings();
    void rates_data();
    void rates();
    void conflictingSettings();
    void onlyTerminalsAreOpened();
    void readsWhatIsThere();
    void timeouts();
    void trafficLog();
    void rotation();
    void unplugAndReplug();
    void locks();
    void closedPort();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<WarningGuard> m_guard;
};

void tst_SerialPort::initTestCase()
{
    QVERIFY(QDir::setCurrent(m_folder.path()));
}

void tst_SerialPort::init()
{
    m_guard = std::make_unique<WarningGuard>();
}

void tst_SerialPort::cleanup()
{
    QCOMPARE(m_guard->unexpected(), QStringList());
    m_guard.reset();
}

void tst_SerialPort::settings_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("speed");
    QTest::addColumn<int>("flags"); // of size, parity and stop bits
    QTest::newRow("usual") << plain << int(B9600) << int(CS8);
    QTest::newRow("numbers") << "12#3#0#0" << int(B9600) << int(CS8);
    QTest::newRow("even, two stops") << "19200,E,7,2" << int(B19200) << int(CS7 | PARENB | CSTOPB);
    QTest::newRow("numbers, odd") << "10#2#1#1" << int(B2400)
                                  << int(CS7 | PARENB | PARODD | CSTOPB);
    QTest::newRow("odd") << "57600,o,5,1" << int(B57600) << int(CS5 | PARENB | PARODD);
    QTest::newRow("space is a data bit") << "115200,s,7,1" << int(B115200) << int(CS8);
    QTest::newRow("unknown rate") << "9601,n,8,1" << int(B50) << int(CS8);
}

void tst_SerialPort::settings()
{
    QFETCH(QString, text);
    m_guard->expect(QStringLiteral("does not support 50 baud operation\\.$"));
    PtyPair line;
    SerialPort port;
    QVERIFY(port.CommOpen(line.name(), text, 700));
    QCOMPARE(port.getPortSettings(), text);
    for (int opened = 0; opened < 2; ++opened) {
        const termios set = line.settings();
        QTEST(int(cfgetospeed(&set)), "speed");
        QTEST(int(asked.c_cflag & frameFlags), "flags");
        QCOMPARE(set.c_cflag & (CREAD | CLOCAL | CRTSCTS), tcflag_t(CREAD | CLOCAL));
        QCOMPARE(set.c_iflag & (ICRNL | ISTRIP | IXON | IXOFF | IXANY), tcflag_t(0));
        QCOMPARE(set.c_lflag & (ICANON | ECHO | ISIG), tcflag_t(0));
        QCOMPARE(set.c_oflag & OPOST, tcflag_t(0));
        QCOMPARE(int(set.c_cc[VMIN]), 0);
        QCOMPARE(int(set.c_cc[VTIME]), 7);
        QVERIFY(port.ReOpen());
    }
}

void tst_SerialPort::refusedSettings_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    QTest::newRow("parity") << "9600,x,8,1"
                            << "parity error! \"x\"";
    QTest::newRow("data bits") << "9600,n,9,1"
                               << "dataBits error! \"9\"";
    QTest::newRow("stop bits") << "9600,n,8,3"
                               << "stopBits error! \"3\"";
    QTest::newRow("three parts") << "9600,n,8"
                                 << "CommOpen    error settings 9600,n,8";
    QTest::newRow("not ASCII") << QStringLiteral("µ")
                               << QStringLiteral("CommOpen    error settings µ");
    QTest::newRow("no such rate") << "99#3#0#0"
                                  << "CommOpen    error settings 99#3#0#0";
    QTest::newRow("empty") << ""
                           << "CommOpen    serial settings is null";
}

void tst_SerialPort::refusedSettings()
{
    QFETCH(QString, text);
    QFETCH(QString, message);
    PtyPair line;
    SerialPort port;
    QVERIFY(!port.CommOpen(line.name(), text, 700));
    QVERIFY(!port.isOpen());
    QCOMPARE(m_guard->messages().mid(0, 1).join(QString()).trimmed(), message);
}

void tst_SerialPort::rates_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("speed");
    QTest::addColumn<QStringList>("ends"); // of the warnings
    QTest::newRow("134.5") << int(Baud134) << int(B134) << QStringList { "134.5 baud operation." };
    QTest::newRow("1800") << int(Baud1800) << int(B1800)
                          << QStringList { "Windows and IRIX do not support 1800 baud operation." };
    QTest::newRow("14400") << int(Baud14400) << int(B9600)
                           << QStringList { "14400 baud operation.  Switching to 9600 baud." };
    QTest::newRow("56000 changes nothing") << int(Baud56000) << int(B300) << QStringList {};
    QTest::newRow("76800") << int(Baud76800) << int(B57600)
                           << QStringList { "do not support 76800 baud operation.",
                                            "76800 baud support.  Switching to 57600 baud." };
    QTest::newRow("256000") << int(Baud256000) << int(B115200)
                            << QStringList { "256000 baud operation.  Switching to 115200 baud." };
    QTest::newRow("no rate") << 22 << int(B300) << QStringList {};
}

void tst_SerialPort::rates()
{
    QFETCH(int, rate);
    QFETCH(QStringList, ends);
    m_guard->expect(QStringLiteral("^Posix_QextSerialPort"));
    PtyPair line;
    SerialPort port;
    QVERIFY(port.CommOpen(line.name(), QStringLiteral("300,n,8,1"), 100));
    const int before = m_guard->messages().size();
    port.setBaudRate(BaudRateType(rate));
    const QStringList said = m_guard->messages().mid(before);
    QCOMPARE(said.size(), ends.size());
    for (int i = 0; i < said.size(); ++i)
        QVERIFY2(said.at(i).endsWith(ends.at(i)), qPrintable(said.at(i)));
    const termios set = line.settings();
    QTEST(int(cfgetospeed(&set)), "speed");
}

void tst_SerialPort::conflictingSettings()
{
    m_guard->expect(QStringLiteral("^Posix_QextSerialPort"));
    PtyPair line;
    SerialPort port;
    QVERIFY(port.CommOpen(line.name(), QStringLiteral("9600,e,8,2"), 100));
    const tcflag_t before = asked.c_cflag;
    port.setDataBits(Data5);
    port.setParity(ParitySpace);
    port.setParity(ParityMark);
    port.setStopBits(Stop1_5);
    port.setDataBits(Data6);
    QCOMPARE(asked.c_cflag, before);
    port.setStopBits(Stop1);
    port.setDataBits(Data5);
    port.setStopBits(Stop2);
    QCOMPARE(asked.c_cflag & frameFlags, tcflag_t(CS5 | PARENB));
    const QStringList said = m_guard->messages().mid(1);
    QCOMPARE(said.size(), 6);
    QCOMPARE(said.at(1),
             QStringLiteral("Posix_QextSerialPort:  Space parity is only supported in "
                            "POSIX with 7 or fewer data bits"));
    QCOMPARE(
        said.at(4),
        QStringLiteral("Posix_QextSerialPort: 6 Data bits cannot be used with 1.5 stop bits."));
}

void tst_SerialPort::onlyTerminalsAreOpened()
{
    QFile file(QStringLiteral("letter"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("dear") == 4);
    file.close();
    SerialPort port;
    for (const char *name : { "letter", ".", "absent", "" }) {
        QVERIFY(!port.CommOpen(QString::fromLatin1(name), plain, 100));
        QVERIFY(!port.isOpen());
        QCOMPARE(m_guard->messages().constLast(),
                 QStringLiteral("[CommOpen]    open serial error!"));
    }
    QCOMPARE(contents(QStringLiteral("letter")), QByteArray("dear"));
}

void tst_SerialPort::readsWhatIsThere()
{
    PtyPair line;
    SerialPort port;
    QVERIFY(port.CommOpen(line.name(), plain, 2000));
    // Every byte value passes, those that mean something to a terminal included.
    QByteArray all(256, Qt::Uninitialized);
    std::iota(all.begin(), all.end(), char(0));
    line.send(all);
    QTRY_COMPARE(port.size(), 256);
    QCOMPARE(port.bytesAvailable(), 256);
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(port.readData(4096), all);
    QVERIFY(clock.elapsed() < noticeable);
    QCOMPARE(port.writeData(all.constData(), all.size()), 256);
    QCOMPARE(line.receive(256), all);
}

void tst_SerialPort::timeouts()
{
    PtyPair line;
    SerialPort port;
    QVERIFY(port.CommOpen(line.name(), plain, 390));
    char byte = 0;
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(port.readData(&byte, 1), 0);
    QVERIFY(clock.elapsed() >= 290 && clock.elapsed() < 1500);
    clock.restart();
    QCOMPARE(port.bytesAvailable(), -1); // 390 microseconds
    QVERIFY(clock.elapsed() < noticeable);
    QCOMPARE(port.lastError(), ulong(SerialPort::TimedOut));
    port.setTimeout(30000);
    QCOMPARE(int(line.settings().c_cc[VTIME]), 44);
}

void tst_SerialPort::trafficLog()
{
    const QString link = m_folder.filePath(QStringLiteral("ttyLOG"));
    PtyPair line(link);
    SerialPort port;
    QVERIFY(port.CommOpen(link, plain, 1000));
    const QString log = QStringLiteral("log_ttyLOG.log");
    QVERIFY(port.writeData("\x01\xff", 2) == 2);
    line.send(QByteArray("\x00\x7f", 2));
    QCOMPARE(port.readData(10).size(), 2);
    const QRegularExpression lines(
        QStringLiteral("^(\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}) send: 01 ff \n\\S+ "
                       "\\S+ recv: 00 7f \n$"));
    const auto match = lines.match(QString::fromUtf8(contents(log)));
    QVERIFY2(match.hasMatch(), contents(log).constData());
    const auto format = QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz");
    const auto time = QDateTime::fromString(match.captured(1), format);
    QVERIFY(qAbs(time.msecsTo(QDateTime::currentDateTime())) < 60'000);

    // A log that cannot be written is told once; the port works on.
    m_guard->expect(QStringLiteral("^TrafficLog: cannot write gone/gone/log_ttyLOG.log"));
    port.logDir = QStringLiteral("gone/");
    QVERIFY(port.CommOpen(link, plain, 1000));
    const int before = m_guard->messages().size();
    QVERIFY(port.writeData("a", 1) == 1 && port.writeData("b", 1) == 1);
    QCOMPARE(m_guard->messages().size(), before + 1);
}

void tst_SerialPort::rotation()
{
    const QString link = m_folder.filePath(QStringLiteral("ttyROT"));
    PtyPair line(link);
    SerialPort port;
    QVERIFY(port.CommOpen(link, plain, 1000));
    const QString log = QStringLiteral("log_ttyROT.log");
    const QString backup = log + QStringLiteral(".bak.log");
    const int lineLength = 34;
    for (const bool first : { true, false }) {
        QFile(log).open(QIODevice::WriteOnly);
        QVERIFY(QFile::resize(log, 5'242'880 - lineLength));
        QVERIFY(port.writeData("c", 1) == 1);
        QCOMPARE(QFileInfo(log).size(), 5'242'880); // not above the limit yet
        QVERIFY(port.writeData(first ? "d" : "e", 1) == 1);
        QVERIFY(!QFile::exists(log));
        QVERIFY(contents(backup).endsWith("send: 64 \n")); // the first one stays
    }
    QCOMPARE(m_guard->messages().constLast(), QStringLiteral("\"Destination file exists\""));
}

void tst_SerialPort::unplugAndReplug()
{
    PtyPair line(m_folder.filePath(QStringLiteral("ttyUSB0")));
    SerialPort port;
    QVERIFY(port.CommOpen(line.name(), plain, 2000));
    line.unplug();
    char byte = 0;
    QElapsedTimer clock;
    clock.start();
    QVERIFY(port.readData(&byte, 1) <= 0);
    QVERIFY(port.isHungUp());
    QCOMPARE(port.writeData(&byte, 1), -1);
    QCOMPARE(port.lastError(), ulong(SerialPort::WriteFailed));
    QVERIFY(clock.elapsed() < noticeable);
    QVERIFY(!port.ReOpen());
    QCOMPARE(port.readData(&byte, 1), -1);
    line.plug();
    QVERIFY(port.ReOpen());
    QVERIFY(!port.isHungUp());
    line.send("x");
    QCOMPARE(port.readData(1), QByteArray("x"));
}

void tst_SerialPort::locks()
{
    SerialPort port;
    port.Lock();
    QVERIFY(!port.mutex->tryLock());
    port.UnLock();
    {
        const PortLock lock(port);
        QVERIFY(lock && !port.mutex->tryLock());
    }
    port.UnLock(); // of a free port leaves it locked
    QVERIFY(!port.mutex->tryLock());
    port.UnLock();
}

void tst_SerialPort::closedPort()
{
    m_guard->expect(QStringLiteral("event driven mechanism|ungetChar"));
    SerialPort port(QStringLiteral("absent"), SerialPort::EventDriven);
    char byte = 0;
    QCOMPARE(port.readData(&byte, 1) + port.writeData(&byte, 1), -2);
    QCOMPARE(port.readData(10), QByteArray());
    QCOMPARE(port.size(), 0);
    QCOMPARE(port.lineStatus(), 0UL);
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QCOMPARE(port.translateError(EBADF), ulong(SerialPort::BadDescriptor));
    QCOMPARE(port.translateError(EPERM), ulong(EPERM));
    port.ungetChar('a');
    QCOMPARE(m_guard->messages().size(), 2);
}

QTEST_GUILESS_MAIN(tst_SerialPort)
#include "tst_serialport.moc"
