#include "family.h"
#include "guardedtest.h"
#include "tavoclient.h"

#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

static QString word(Rows<HistoryTextRow> rows, const QString &code)
{
    for (const HistoryTextRow &row : rows) {
        if (row.code == code.toLongLong())
            return QString::fromUtf8(row.text);
    }
    return {};
}

/** The history export against a plain conversion of whole lines, written for this test. */
class tst_HistoryExport : public GuardedTest
{
    Q_OBJECT

private slots:
    void againstReference_data();

    void againstReference()
    {
        QFETCH(QByteArray, source);
        QCOMPARE(exported(source), reference(source));
    }

    void randomBytes()
    {
        auto *random = QRandomGenerator::global();
        const QByteArray usual = "0123456789    \n\n-+\r\t";
        for (int round = 0; round < 50; ++round) {
            QByteArray source;
            while (source.size() < 20000) {
                const bool odd = random->bounded(50) == 0;
                source +=
                    odd ? char(random->bounded(256)) : usual.at(random->bounded(usual.size()));
            }
            const QByteArray expected = reference(source);
            QVERIFY2(exported(source) == expected, source.toHex());
        }
    }

    void targets()
    {
        m_client.exportHistoryInfo("out.csv"); // there is no source
        QCOMPARE(fileContents("out.csv"), reference({}));
        const QByteArray source = "26 112 1 3 3725 0 4\n";
        QVERIFY(QDir().mkdir("directory"));
        m_guard->expect("exportHistoryInfo \"(directory|missing/out.csv)\" not written: ");
        for (const QString path : { "", "directory", "missing/out.csv" }) {
            QVERIFY(writeFile("history.txt", source));
            m_client.exportHistoryInfo(path);
            QVERIFY2(fileContents("history.txt").isEmpty(), qPrintable(path));
        }
        QVERIFY(writeFile("history.txt", source));
        m_client.exportHistoryInfo("history.txt"); // as somebody may type in the dialog
        QCOMPARE(fileContents("history.txt"), reference(source));
        QCOMPARE(m_guard->unexpected(), QStringList());

        // A disk that is full, at the end or in the middle: the old target stays, the log tells.
        m_guard->expect("exportHistoryInfo.*out.csv");
        rlimit before {};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
        const auto handler = signal(SIGXFSZ, SIG_IGN);
        for (const int records : { 1, 100000 }) {
            const int told = m_guard->messages().filter("out.csv").size();
            QVERIFY(writeFile("history.txt", source.repeated(records)));
            QVERIFY(writeFile("out.csv", "old"));
            const rlimit small { rlim_t(records), before.rlim_max };
            QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
            m_client.exportHistoryInfo("out.csv");
            QCOMPARE(setrlimit(RLIMIT_FSIZE, &before), 0);
            QCOMPARE(fileContents("out.csv"), QByteArray("old"));
            QVERIFY(fileContents("history.txt").isEmpty());
            QVERIFY(m_guard->messages().filter("out.csv").size() > told);
        }
        signal(SIGXFSZ, handler);
        QCOMPARE(QDir().entryList(QDir::Files).size(), 2); // nothing half-written is left over
    }

    // What somebody else holds, or has put there, stays that file.
    void writtenInPlace_data()
    {
        const Columns<QString> row("kind");
        for (const char *kind : { "hard link", "pipe", "device", "mounted file" })
            row(kind, kind);
    }

    void writtenInPlace()
    {
        QFETCH(QString, kind);
        const QByteArray source = "26 112 1 3 3725 0 4\n";
        QVERIFY(writeFile("history.txt", source) && writeFile("out.csv", QByteArray(900, 'x')));
        QByteArray written;
        if (kind == "hard link") {
            QCOMPARE(link("out.csv", "other.csv"), 0);
        } else if (kind == "pipe") {
            QVERIFY(QFile::remove("out.csv") && mkfifo("out.csv", 0600) == 0);
            QFile pipe("out.csv");
            QVERIFY(pipe.open(::open("out.csv", O_RDONLY | O_NONBLOCK), QIODevice::ReadOnly));
            m_client.exportHistoryInfo("out.csv");
            char bytes[1000];
            written = QByteArray(bytes, int(std::max<qint64>(0, pipe.read(bytes, sizeof bytes))));
        } else if (kind == "device") {
            QVERIFY(QFile::remove("out.csv") && QFile::link("/dev/null", "out.csv"));
        } else {
            if (unshare(CLONE_NEWNS) != 0
                || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
                QSKIP("needs the right to mount");
            QVERIFY(writeFile("other.csv", {}));
            QCOMPARE(mount("other.csv", "out.csv", nullptr, MS_BIND, nullptr), 0);
        }
        const struct stat before = node("out.csv");
        if (kind != "pipe")
            m_client.exportHistoryInfo("out.csv");
        const struct stat after = node("out.csv");
        QCOMPARE(after.st_ino, before.st_ino);
        QCOMPARE(after.st_mode, before.st_mode);
        if (kind == "mounted file" || kind == "hard link")
            written = fileContents("other.csv");
        if (kind == "mounted file")
            umount("out.csv");
        QCOMPARE(written, kind == "device" ? QByteArray() : reference(source));
        QVERIFY(fileContents("history.txt").isEmpty());
        const QString log = m_guard->messages().join('\n');
        QVERIFY2(log.contains("exportHistoryInfo 1 records in \"out.csv\""), qPrintable(log));
    }

    // Neither a target nor a source that waits for its other end holds the client up.
    void pipesWithoutOtherEnd()
    {
        m_guard->expect("exportHistoryInfo .*(not written: No such device|is no regular file)");
        m_guard->expect("exportHistoryInfo .*cannot be emptied");
        QVERIFY(mkfifo("out.csv", 0600) == 0 && mkfifo("history.txt", 0600) == 0);
        m_client.exportHistoryInfo("out.csv");
        QVERIFY(QFile::remove("out.csv"));
        m_client.exportHistoryInfo("out.csv");
        QCOMPARE(fileContents("out.csv"), reference({}));
    }

    // Which would end the process by a signal.
    void readerGoes()
    {
        m_guard->expect("exportHistoryInfo .*not written: Broken pipe");
        QVERIFY(mkfifo("out.csv", 0600) == 0);
        QVERIFY(writeFile("history.txt", QByteArray("26 112 1 3 3725 0 4\n").repeated(20'000)));
        const int reader = ::open("out.csv", O_RDONLY | O_NONBLOCK);
        std::thread other([reader] {
            char byte = 0;
            while (::read(reader, &byte, 1) != 1)
                std::this_thread::yield();
            ::close(reader);
        });
        m_client.exportHistoryInfo("out.csv");
        other.join();
        QVERIFY(fileContents("history.txt").isEmpty());
    }

    void millionRecords()
    {
        const QByteArray piece = QByteArray("26 112 1 3 3725 0 4\n").repeated(1000);
        QFile source("history.txt");
        QVERIFY(source.open(QIODevice::WriteOnly));
        for (int i = 0; i < 1000; ++i)
            QCOMPARE(source.write(piece), piece.size());
        source.close();
        rusage before {};
        rusage after {};
        getrusage(RUSAGE_SELF, &before);
        // Another client's driver moves its file into place meanwhile, which must not be emptied.
        std::atomic<bool> done { false };
        std::thread other([&done] {
            writeFile("other", "1 16 1 1 1 1 1\n");
            while (!done && !isOpen("history.txt"))
                std::this_thread::yield();
            rename("other", "history.txt");
        });
        m_client.exportHistoryInfo("out.csv");
        done = true;
        other.join();
        getrusage(RUSAGE_SELF, &after);
        QVERIFY(!fileContents("history.txt").isEmpty());
        const QByteArray line = "1a,The Start Time,Appear,3:01:02:05,grid mode,\n";
        const qint64 header = reference({}).size();
        QCOMPARE(QFileInfo("out.csv").size(), header + 1000000 * qint64(line.size()));
#ifndef __SANITIZE_ADDRESS__ // which keeps freed memory
        // The peak, in KiB, hardly moves: the 60 MB of text are never in memory.
        QVERIFY2(after.ru_maxrss - before.ru_maxrss < 8 * 1024,
                 qPrintable(QString::number(after.ru_maxrss - before.ru_maxrss)));
#endif
    }

private:
    static struct stat node(const char *name)
    {
        struct stat result = {};
        stat(name, &result);
        return result;
    }

    static bool isOpen(const QString &name)
    {
        const QFileInfoList opened = QDir("/proc/self/fd").entryInfoList(QDir::Files);
        return std::any_of(opened.begin(), opened.end(), [&](const QFileInfo &file) {
            return file.symLinkTarget() == QFileInfo(name).absoluteFilePath();
        });
    }

    static QByteArray reference(QByteArray source)
    {
        QString out = QStringLiteral("ID,Content,Status,Time,History mode,\n");
        const HistoryTables history = deviceFamily().history;
        QBuffer buffer(&source);
        buffer.open(QIODevice::ReadOnly | QIODevice::Text);
        while (!buffer.atEnd()) {
            const QByteArray line = buffer.readLine();
            const QStringList f = QString::fromLatin1(line.constData()).split(QLatin1Char(' '));
            if (f.size() < 7)
                continue;
            const quint32 seconds = quint32(f[5].toUShort()) << 16 | f[4].toUShort();
            const QTime clock = QTime(0, 0).addSecs(int(seconds % 86400));
            out += QString::number(f[0].toLongLong(), 16) + ',' + word(history.contents, f[1]) + ','
                + word(history.statuses, f[2]) + ',' + QString::number(f[3].toLongLong()) + ':'
                + clock.toString(QStringLiteral("hh:mm:ss")) + ',' + word(history.modes, f[6])
                + ",\n";
        }
        return out.toLocal8Bit();
    }

    // Exports `source` and returns the target; checks that the source was emptied.
    QByteArray exported(const QByteArray &source)
    {
        if (!writeFile("history.txt", source) || !writeFile("out.csv", {}))
            return "(cannot be written)";
        m_client.exportHistoryInfo("out.csv");
        return fileContents("history.txt").isEmpty() ? fileContents("out.csv")
                                                     : "(source not emptied)";
    }

    tavoClient m_client;
};

// clang-format off
void tst_HistoryExport::againstReference_data()
{
    QTest::addColumn<QByteArray>("source");
    const QByteArray good = "26 112 1 3 3725 0 4\n";
    QByteArray codes;
    for (int code = 0; code < 200; ++code)
        codes += QByteArray("1 # # 0 0 0 #\n").replace('#', QByteArray::number(code));
    QTest::newRow("every code") << codes;
    QTest::newRow("example") << good;
    QTest::newRow("wraps at midnight") << QByteArray("1 16 0 0 24464 1 1\n");
    QTest::newRow("latest time") << QByteArray("1 16 0 0 65535 65535 1\n");
    QTest::newRow("no last line end") << good + good.chopped(1);
    QTest::newRow("carriage returns") << QByteArray("26 112 1 3 3725 0 4\r\n2\r7 99 0 0 0 0 5\r\n");
    QTest::newRow("six fields") << QByteArray("1 2 3 4 5 6\n\n \n") + good;
    QTest::newRow("eight fields") << QByteArray("1 64 1 2 3 4 5 6 7\n");
    QTest::newRow("empty fields") << QByteArray("1  1 2  0 5\n      \n");
    QTest::newRow("no numbers") << QByteArray("x 1x x1 0x10 1.5 1e3 -\n");
    QTest::newRow("signs and spaces") << QByteArray("-26 +112 1\t \v3 -5 +7 \xa0" "4\x85\n+ - +-1 1- 0 0 0\n");
    QTest::newRow("past 16 bits") << QByteArray("1 16 1 1 65536 99999 1\n");
    QTest::newRow("past 32 bits") << QByteArray( "4294967322 4294967312 4294967297 3000000000 1 1 4294967297\n");
    QTest::newRow("edge of 64 bits") << QByteArray("9223372036854775807 1 1 -9223372036854775808 1 1 1\n" "9223372036854775808 1 1 -9223372036854775809 1 1 1\n");
    QTest::newRow("past 64 bits") << QByteArray( "99999999999999999999 1 18446744073709551617 1 1 1 1\n");
    QTest::newRow("leading zeros") << QByteArray(5000, '0') + good;
    QTest::newRow("zero byte") << QByteArray("1 16 1 1 1 1 1\0 2 2\n", 20) + good;
    QTest::newRow("zero byte too early") << QByteArray("1 16 1 1\0 1 1 1\n", 17) + good;
    QTest::newRow("megabyte without end") << QByteArray(1 << 20, '7');
    QTest::newRow("megabyte of blanks") << QByteArray(1 << 20, ' ') + '\n' + good;
    QTest::newRow("megabyte in the eighth field") << "1 16 1 1 1 1 1 " + QByteArray(1 << 20, 'x') + '\n' + good;
}
// clang-format on

QTEST_GUILESS_MAIN(tst_HistoryExport)
#include "tst_historyexport.moc"
