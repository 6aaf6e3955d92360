// The traffic log of a serial port: what it holds, and how it makes room.

#include "guardedtest.h"
#include "ptypair.h"
#include "serial/serialport.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

static bool isOldFileSystem = false;

extern "C" int renameat2(int, const char *from, int, const char *to, unsigned flags) noexcept
{
    if (!isOldFileSystem)
        return int(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, flags));
    errno = EINVAL;
    return -1;
}

namespace {

const QString plain = QStringLiteral("9600,n,8,1");

} // namespace

class tst_TrafficLog : public GuardedTest
{
    Q_OBJECT

private slots:
    void trafficLog()
    {
        PtyPair line(path("ttyLOG"));
        SerialPort port;
        QVERIFY(port.CommOpen(line.name(), plain, 1000));
        const QDateTime before = QDateTime::currentDateTime();
        QCOMPARE(port.writeData("\x01\xff", 2), 2);
        const QDateTime after = QDateTime::currentDateTime();
        line.send(QByteArray("\x00\x7f", 2));
        QCOMPARE(port.readData(10).size(), 2);
        const QRegularExpression lines(
            QStringLiteral("^(\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}) send: 01 ff \n"
                           "\\S+ \\S+ recv: 00 7f \n$"));
        const QByteArray log = fileContents(QStringLiteral("log_ttyLOG.log"));
        const auto match = lines.match(QString::fromUtf8(log));
        QVERIFY2(match.hasMatch(), log.constData());
        const auto format = QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz");
        const auto time = QDateTime::fromString(match.captured(1), format);
        QVERIFY(time >= before && time <= after);
        // Whoever moves the log away finds the next line in a new one.
        QVERIFY(QFile::rename("log_ttyLOG.log", "moved.log"));
        QCOMPARE(port.writeData("m", 1), 1);
        QVERIFY(fileContents("log_ttyLOG.log").endsWith("send: 6d \n"));
        QCOMPARE(fileContents("moved.log"), log);

        // No half line on a disk that is full in the middle of it.
        const QByteArray whole = fileContents("log_ttyLOG.log");
        signal(SIGXFSZ, SIG_IGN);
        rlimit room = {};
        getrlimit(RLIMIT_FSIZE, &room);
        const rlimit little = { rlim_t(whole.size()) + 9, room.rlim_max };
        setrlimit(RLIMIT_FSIZE, &little);
        m_guard->expect(QStringLiteral("^TrafficLog: cannot write"));
        port.writeData("n", 1);
        setrlimit(RLIMIT_FSIZE, &room);
        QCOMPARE(fileContents("log_ttyLOG.log"), whole);
        QVERIFY(QFile::remove("log_ttyLOG.log") && QDir().mkdir("log_ttyLOG.log"));
        QCOMPARE(port.writeData("o", 1), 1);
        QCOMPARE(m_guard->messages().filter(QStringLiteral("TrafficLog")).size(), 1);
    }

    void fifoInThePlaceOfTheLog_data()
    {
        const Columns<bool> row("isRead");
        row("nobody reads it", false);
        row("somebody reads it", true);
    }

    void fifoInThePlaceOfTheLog()
    {
        QFETCH(bool, isRead);
        PtyPair line(path("ttyFIFO"));
        SerialPort port;
        QVERIFY(port.CommOpen(line.name(), plain, 1000));
        QCOMPARE(mkfifo("log_ttyFIFO.log", 0600), 0);
        const int reader = isRead ? ::open("log_ttyFIFO.log", O_RDONLY | O_NONBLOCK) : -1;
        m_guard->expect(QStringLiteral("cannot write log_ttyFIFO.log: not a regular file$"));
        const int endless = 5; // s
        alarm(endless);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(port.writeData("c", 1), 1);
        alarm(0);
        QCOMPARE(m_guard->messages().filter(QStringLiteral("cannot write")).size(), 1);
        ::close(reader);
    }

    // However large it is, it keeps its place on the disk.
    void largeLogIsMoved_data()
    {
        const Columns<bool> row("isOld");
        row("renamed", false);
        row("linked", true);
    }

    void largeLogIsMoved()
    {
        QFETCH(bool, isOld);
        isOldFileSystem = isOld;
        PtyPair line(path("ttyBIG"));
        SerialPort port;
        QVERIFY(port.CommOpen(line.name(), plain, 1000));
        QVERIFY(writeFile("log_ttyBIG.log", "x") && QFile::resize("log_ttyBIG.log", 200'000'000));
        struct stat before = {};
        struct stat after = {};
        stat("log_ttyBIG.log", &before);
        const int told = m_guard->messages().size();
        QCOMPARE(port.writeData("c", 1), 1);
        isOldFileSystem = false;
        QCOMPARE(m_guard->messages().size(), told);
        QVERIFY(!QFile::exists("log_ttyBIG.log"));
        stat("log_ttyBIG.log.bak.log", &after);
        QCOMPARE(after.st_ino, before.st_ino);
    }

    void rotation()
    {
        PtyPair line(path("ttyROT"));
        SerialPort port;
        QVERIFY(port.CommOpen(line.name(), plain, 1000));
        const QString log = QStringLiteral("log_ttyROT.log");
        const int lineLength = 34;
        for (const char *last : { "d", "e" }) {
            QFile(log).open(QIODevice::WriteOnly);
            QVERIFY(QFile::resize(log, 5'242'880 - lineLength));
            QVERIFY(port.writeData("c", 1) == 1);
            QCOMPARE(QFileInfo(log).size(), 5'242'880); // not above the limit yet
            QVERIFY(port.writeData(last, 1) == 1);
            QVERIFY(!QFile::exists(log));
            // The first one stays.
            QVERIFY(fileContents(log + QStringLiteral(".bak.log")).endsWith("send: 64 \n"));
        }
        QCOMPARE(m_guard->messages().constLast(), QStringLiteral("\"Destination file exists\""));
    }
};

QTEST_GUILESS_MAIN(tst_TrafficLog)
#include "tst_trafficlog.moc"
