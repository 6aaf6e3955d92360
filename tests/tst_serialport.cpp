// The serial port on a pseudo-terminal, whose driver tells what it was asked for.

#include "guardedtest.h"
#include "portmanage.h"
#include "ptypair.h"
#include "serial/serialport.h"

#include <csignal>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

static termios asked;     // what the port asked for last
static int unsent = 0;    // bytes that the line does not take
static int sending = 0;   // bytes of them that it takes between two looks at it
static int flushed = 0;   // that were thrown away
static bool hung = false; // setting the line had to wait for them
static int modem = 0;     // lines, which pseudo-terminals do not have

// Pseudo-terminals always have eight bits and no parity, so this is looked at on the way.
extern "C" int tcsetattr(int descriptor, int action, const termios *settings) noexcept
{
    static const auto real = reinterpret_cast<decltype(&tcsetattr)>(dlsym(RTLD_NEXT, "tcsetattr"));
    asked = *settings;
    hung |= unsent > 0;
    return action == TCSAFLUSH ? real(descriptor, action, settings) : -1;
}

extern "C" int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    static const auto real = reinterpret_cast<decltype(&ioctl)>(dlsym(RTLD_NEXT, "ioctl"));
    va_list list;
    va_start(list, request);
    void *argument = va_arg(list, void *);
    va_end(list);
    unsent -= qMin(unsent, request == TIOCOUTQ ? sending : 0);
    if (request == TIOCMSET)
        modem = *static_cast<int *>(argument);
    else if (request == TIOCOUTQ || request == TIOCMGET)
        *static_cast<int *>(argument) = request == TIOCOUTQ ? unsent : modem;
    else
        return real(descriptor, request, argument);
    return 0;
}

extern "C" int tcflush(int, int) noexcept
{
    flushed += std::exchange(unsent, 0);
    return 0;
}

namespace {

constexpr tcflag_t frameFlags = CSIZE | PARENB | PARODD | CSTOPB | CMSPAR;
constexpr int noticeable = 150; // ms; much less than any timeout used here
const QString plain = QStringLiteral("9600,n,8,1");

} // namespace

class tst_SerialPort : public GuardedTest
{
    Q_OBJECT

private slots:
    void settings()
    {
        const struct
        {
            const char *text;
            speed_t speed;
            tcflag_t flags;
        } rows[] = { { "9600,n,8,1", B9600, CS8 },
                     { "12#3#0#0", B9600, CS8 },
                     { "10#2#1#1", B2400, CS7 | PARENB | PARODD | CSTOPB },
                     { "19200,E,7,2", B19200, CS7 | PARENB | CSTOPB },
                     { "115200,s,7,1", B115200, CS8 }, // the space is a data bit
                     { "300,O,6,1", B300, CS6 | PARENB | PARODD },
                     { "9601,n,5,1", B50, CS5 } };
        m_guard->expect(QStringLiteral("does not support 50 baud operation\\.$"));
        for (const auto &row : rows) {
            PtyPair line;
            termios left = line.settings();
            left.c_cflag |= CMSPAR;
            left.c_iflag |= BRKINT;
            QCOMPARE(tcsetattr(line.master(), TCSAFLUSH, &left), 0);
            SerialPort port;
            QVERIFY(port.CommOpen(line.name(), QString::fromLatin1(row.text), 700));
            QCOMPARE(port.getPortSettings(), QString::fromLatin1(row.text));
            for (int opened = 0; opened < 2; ++opened) {
                const termios set = line.settings();
                QCOMPARE(cfgetospeed(&set), row.speed);
                QCOMPARE(asked.c_cflag & frameFlags, row.flags);
                QCOMPARE(set.c_cflag & (CREAD | CLOCAL | CRTSCTS), tcflag_t(CREAD | CLOCAL));
                QCOMPARE(set.c_iflag & (ICRNL | ISTRIP | IXON | IXOFF | IXANY | BRKINT),
                         tcflag_t(0));
                QCOMPARE(set.c_lflag & (ICANON | ECHO | ISIG), tcflag_t(0));
                QCOMPARE(set.c_oflag & OPOST, tcflag_t(0));
                QCOMPARE(set.c_cc[VMIN] * 256 + set.c_cc[VTIME], 7);
                QVERIFY(port.ReOpen());
            }
        }
    }

    // By the word of the system's own tool.
    void everyRate()
    {
        m_guard->expect(QStringLiteral("Portability Warning"));
        for (const int rate : { 50, 75, 110, 134, 150, 200, 300, 600, 1200, 1800, 2400, 4800, 9600,
                                19200, 38400, 57600, 115200 }) {
            const PtyPair line;
            SerialPort port;
            const QString settings = QStringLiteral("%1,n,8,1").arg(rate);
            QVERIFY(port.CommOpen(line.name(), settings, 100));
            QCOMPARE(remarkOnSettings(settings), QString());
            QProcess stty;
            stty.start("stty", { "-F", line.name(), "speed" });
            QVERIFY(stty.waitForFinished());
            QCOMPARE(stty.readAllStandardOutput().trimmed(), QByteArray::number(rate));
        }
        for (const int rate : { 14400, 56000, 76800, 128000, 256000 })
            QVERIFY(remarkOnSettings(QString("%1,n,8,1").arg(rate)).startsWith("another rate"));
        QCOMPARE(s_UnixBaudList[22].rate, 0); // where a search for a rate ends
    }

    void refusedSettings_data()
    {
        const Columns<QString, QString> row("text", "message");
        row("parity", "9600,x,8,1", "parity error! \"x\"");
        row("data bits", "9600,n,9,1", "dataBits error! \"9\"");
        row("stop bits", "9600,n,8,3", "stopBits error! \"3\"");
        row("cut short", "9600,n,8", "CommOpen    error settings 9600,n,8");
        row("no settings", "\xc2\xb5", "CommOpen    error settings \xc2\xb5");
        row("number of no rate", "99#3#0#0", "CommOpen    error settings 99#3#0#0");
        row("nothing", "", "CommOpen    serial settings is null");
    }

    void refusedSettings()
    {
        QFETCH(QString, text);
        QFETCH(QString, message);
        const PtyPair line;
        SerialPort port;
        QVERIFY(!port.CommOpen(line.name(), text, 700) && !port.isOpen());
        QCOMPARE(m_guard->messages().constLast().trimmed(), message);
    }

    void unLockOfAFreePortLocksIt()
    {
        SerialPort port;
        port.Lock();
        port.UnLock();
        port.UnLock();
        QVERIFY(!port.mutex->tryLock());
        port.UnLock();
    }

    // Substituted and conflicting settings, one after the other on an open port.
    void setters()
    {
        const struct
        {
            void (*call)(SerialPort &port);
            speed_t speed;
            tcflag_t flags;
            int warnings;
            const char *end; // of the last warning
        } rows[] = {
            // clang-format off
            { [](SerialPort &p) { p.setBaudRate(Baud56000); },   B300,    CS8 | PARENB | CSTOPB, 0, "" },
            { [](SerialPort &p) { p.setBaudRate(Baud76800); },   B57600,  CS8 | PARENB | CSTOPB, 2, "76800 baud support.  Switching to 57600 baud." },
            { [](SerialPort &p) { p.setDataBits(Data5); },       B57600, CS8 | PARENB | CSTOPB, 1, ": 5 Data bits cannot be used with 2 stop bits." },
            { [](SerialPort &p) { p.setParity(ParitySpace); },   B57600, CS8 | PARENB | CSTOPB, 1, ":  Space parity is only supported in POSIX with 7 or fewer data bits" },
            { [](SerialPort &p) { p.setParity(ParityMark); },    B57600, CS8 | PARENB | CSTOPB, 1, ": Mark parity is not supported by POSIX." },
            { [](SerialPort &p) { p.setStopBits(Stop1_5); },     B57600, CS8 | PARENB | CSTOPB, 1, ": 1.5 stop bit operation is not supported by POSIX." },
            { [](SerialPort &p) { p.setDataBits(Data6); },       B57600, CS8 | PARENB | CSTOPB, 1, ": 6 Data bits cannot be used with 1.5 stop bits." },
            { [](SerialPort &p) { p.setStopBits(Stop1); },       B57600, CS8 | PARENB,          0, "" },
            { [](SerialPort &p) { p.setDataBits(Data5); },       B57600, CS5 | PARENB,          0, "" },
            { [](SerialPort &p) { p.setStopBits(Stop2); },       B57600, CS5 | PARENB,          1, ": 2 stop bits cannot be used with 5 data bits" },
            // clang-format on
        };
        m_guard->expect(QStringLiteral("^Posix_QextSerialPort"));
        PtyPair line;
        SerialPort port;
        QVERIFY(port.CommOpen(line.name(), QStringLiteral("300,e,8,2"), 100));
        for (const auto &row : rows) {
            const int before = m_guard->messages().size();
            row.call(port);
            QCOMPARE(m_guard->messages().size(), before + row.warnings);
            QVERIFY2(m_guard->messages().constLast().endsWith(QString::fromLatin1(row.end)),
                     row.end);
            QCOMPARE(cfgetospeed(&asked), row.speed);
            QCOMPARE(asked.c_cflag & frameFlags, row.flags);
        }
    }

    void onlyTerminalsAreOpened()
    {
        QVERIFY(writeFile("letter", {}));
        for (const char *name : { "letter", ".", "absent", "" }) {
            SerialPort port;
            QVERIFY(!port.CommOpen(QString::fromLatin1(name), plain, 100) && !port.isOpen());
            QCOMPARE(m_guard->messages().constLast(),
                     QStringLiteral("[CommOpen]    open serial error!"));
            QVERIFY(!port.ReOpen());
            QCOMPARE(port.lastError(), ulong(PortError::NoError)); // which is for transfers
        }
        QCOMPARE(m_guard->messages().filter(QStringLiteral(" does not open: ")).size(), 4);
        QVERIFY(m_guard->messages().contains(
            QStringLiteral("[CommOpen]    absent does not open: No such file or directory")));
    }

    void openedAsMade()
    {
        PtyPair line;
        SerialPort port(line.name(), { Baud19200, Data7, ParityOdd, Stop2, FlowHardware, 900 },
                        SerialPort::Polling);
        port.setParity(ParityEven);
        QVERIFY(port.open(QIODevice::ReadWrite));
        QCOMPARE(cfgetospeed(&asked), speed_t(B19200));
        QCOMPARE(asked.c_cflag & (frameFlags | CRTSCTS), CS7 | PARENB | CSTOPB | CRTSCTS);
        QCOMPARE(int(asked.c_cc[VTIME]), 9);
        modem = TIOCM_RTS | TIOCM_CTS;
        port.setDtr(true);
        port.setRts(false);
        QCOMPARE(port.lineStatus(), 1ul + 32);
    }

    void stuckLine()
    {
        PtyPair line;
        SerialPort port;
        unsent = 100; // of another program
        QVERIFY(port.CommOpen(line.name(), plain, 20) && !hung);
        port.writeData("c", 1);
        unsent = 100;
        Stopwatch clock;
        port.close();
        QVERIFY(unsent == 0 && clock.elapsed() >= 900 && clock.elapsed() < 5000);
        // A slow line gets the time that it needs: with 1200 baud 2.8 s, and here 2.
        QVERIFY(port.CommOpen(line.name(), QStringLiteral("1200,n,8,1"), 20));
        port.writeData(QByteArray(300, 'd'), 300);
        unsent = 300;
        sending = 3;
        flushed = 0;
        port.close();
        sending = 0;
        QCOMPARE(flushed, 0);
        QVERIFY(port.CommOpen(line.name(), plain, 20));
        unsent = 100; // of another program, which has the line now
        port.close();
        QCOMPARE(std::exchange(unsent, 0), 100);
    }

    // Neither a closing nor a request waits in the host's thread for what is being sent.
    void sendingBesideTheHost()
    {
        PtyPair line;
        PortManage manager;
        SerialPort *port = manager.getPortHandle(line.name());
        port->Lock();
        port->writeData("c", 1);
        port->UnLock();
        unsent = 100;
        Stopwatch clock;
        manager.Close(line.name());
        QVERIFY(manager.getPortHandle(line.name())->isOpen());
        QVERIFY(clock.elapsed() < 500);
        unsent = 0;
        QTRY_VERIFY(!port->isOpen());
    }

    void readsWhatIsThere()
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
        Stopwatch clock;
        QCOMPARE(port.readData(4096), all);
        QVERIFY(clock.elapsed() < noticeable);
        QCOMPARE(port.writeData(all.constData(), all.size()), 256);
        QCOMPARE(line.receive(256), all);
    }

    void timeouts()
    {
        PtyPair line;
        SerialPort port;
        QVERIFY(port.CommOpen(line.name(), plain, 390));
        char byte = 0;
        Stopwatch clock;
        QCOMPARE(port.readData(&byte, 1), 0);
        QVERIFY(clock.elapsed() >= 290 && clock.elapsed() < 1500);
        clock.restart();
        QCOMPARE(port.bytesAvailable(), -1); // 390 microseconds
        QVERIFY(clock.elapsed() < noticeable);
        QCOMPARE(port.lastError(), ulong(PortError::TimedOut));
        port.setTimeout(30000);
        QCOMPARE(int(line.settings().c_cc[VTIME]), 44);
    }
};

QTEST_GUILESS_MAIN(tst_SerialPort)
#include "tst_serialport.moc"
