#include "commands/commandtext.h"
#include "deviceconfig.h"
#include "guardedtest.h"
#include "link/linkstate.h"
#include "lookup.h"
#include "report/flagchanges.h"
#include "tavofont.h"

#include <QTextCodec>

#include <sys/stat.h>

/** The client's rules that need neither driver nor port. */
class tst_ClientRules : public GuardedTest
{
    Q_OBJECT

private slots:
    // The link's history as a line: per query '+' or '-', and what it led to: u restored, l lost,
    // r limit reached, . nothing.
    void link_data()
    {
        const Columns<int, QString, QString> row("retries", "queries", "expected");
        row("answers", 5, "+++", "u..");
        row("never answers", 5, "-------", "....lrr");
        row("scattered failures add up", 3, "+-+-+-+", "u....lu");
        row("counts anew when it is up", 2, "--+-+--", ".lu..lr");
        row("no retries", 0, "-+-", "lul");
        row("negative retries", -7, "--+", "lru");
    }

    void link()
    {
        QFETCH(int, retries);
        QFETCH(QString, queries);
        LinkStep step { HostContract::LinkUnknown, 0, false, false, false };
        QString steps;
        for (const QChar query : queries) {
            step = nextLink(step.state, step.failCount, query == '+', retries);
            QVERIFY(!step.lost || step.limitReached);
            steps += step.restored ? 'u' : step.lost ? 'l' : step.limitReached ? 'r' : '.';
        }
        QTEST(steps, "expected");
    }

    void failuresAreNotCountedForEver()
    {
        const int most = std::numeric_limits<int>::max();
        QCOMPARE(nextLink(HostContract::LinkLost, most, false, 5).failCount, most);
    }

    // Each report gives some flags new values; "type:alarmId=state" for each change expected.
    void flags_data()
    {
        using Reports = QVector<QMap<int, float>>;
        const Columns<Reports, QStringList> row("reports", "changes");
        row("absent flags", Reports { {} }, QStringList { "" });
        row("appears once, stays, disappears", Reports { { { 2005, 1 } }, {}, { { 2005, 0 } }, {} },
            QStringList { "2006:5=1 !", "", "2006:101=0", "" });
        row("other values disappear",
            Reports { { { 2007, 2 } }, { { 2007, 1 } }, { { 2007, -3 } } },
            QStringList { "2006:103=2", "2006:7=1 !", "2006:103=-3" });
        row("in order, special flags last",
            Reports { { { 2095, 1 }, { 2082, 1 }, { 2059, 1 }, { 2000, 1 }, { 2096, 1 } },
                      { { 2059, 0 }, { 2000, 0 } },
                      { { 2059, 2 } } },
            QStringList { "2006:0=1 2006:59=1 2006:82=1 2006:95=1 2010:-1=1 2009:-1=1 !",
                          "2006:96=0 2006:155=0 2010:-1=0", "2006:155=2 2010:-1=2" });
        row("rounded to a whole number",
            Reports { { { 2001, 0.6f }, { 2002, 1.4f }, { 2003, 0.4f } } },
            QStringList { "2006:1=1 2006:2=1 !" });
    }

    void flags()
    {
        using Reports = QVector<QMap<int, float>>;
        QFETCH(Reports, reports);
        QMap<int, QVariant> data;
        FlagChanges found;
        QStringList changes;
        for (const auto &report : reports) {
            for (auto it = report.begin(); it != report.end(); ++it)
                data.insert(it.key(), it.value());
            found = findFlagChanges(data, found.reportedStates, 96, deviceFamily().specialFlags);
            QStringList line;
            for (const FlagChange &change : found.changes)
                line += QString::asprintf("%d:%d=%d", change.type, change.alarmId.value_or(-1),
                                          change.alarmState);
            if (found.appeared)
                line += "!";
            changes += line.join(' ');
        }
        QTEST(changes, "changes");
        QVERIFY(found.reportedStates.contains(0) && found.reportedStates.contains(95));
        QVERIFY(findFlagChanges({ { 2000, 1 } }, {}, 0, {}).reportedStates.isEmpty());
    }

    void commandText_data()
    {
        const QString han = QString(QChar(0x4e2d)).repeated(30); // 3 bytes each in UTF-8, 2 in GBK
        const QString face = QString::fromUcs4(U"\U0001f600").repeated(30); // 4 bytes, 2 QChars
        const Columns<int, QString, QByteArray> row("command", "value", "text");
        row("a file's name", 1045, "/x y.csv", "20,/x y.csv");
        row("passed through", 2016, "1,300", "1,300");
        row("the time, which has no code", 1011, "2026-01-01", "");
        row("unknown number", -1, "x", "");
        row("fits exactly", 1007, QString(47, 'x'), "4," + QByteArray(47, 'x'));
        row("cut", 1001, QString(99, 'x'), "12," + QByteArray(46, 'x'));
        row("cut a byte into a character", 1007, "x" + han, "4,x" + han.left(15).toUtf8());
        row("cut two bytes into a character", 1007, han, "4," + han.left(15).toUtf8());
        row("cut between characters", 2016, "x" + han, "x" + han.left(16).toUtf8());
        row("cut inside a surrogate pair", 2016, face, face.left(24).toUtf8());
        row("local encoding GBK", 2016, han, QByteArray("\xd6\xd0").repeated(24));
        row("ends at a zero", 2016, QString::fromLatin1("1\0002", 3), "1");
    }

    void commandText()
    {
        QFETCH(int, command);
        QFETCH(QString, value);
        QFETCH(QByteArray, text);
        QTextCodec *before = QTextCodec::codecForLocale();
        const bool isGbk = QByteArray(QTest::currentDataTag()).endsWith("GBK");
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(isGbk ? "GBK" : "UTF-8"));
        const CommandText buffer = ::commandText(commandRow(deviceFamily(), command), value);
        QTextCodec::setCodecForLocale(before);
        QCOMPARE(QByteArray(buffer.data(), int(buffer.size())), text.leftJustified(50, '\0'));
    }

    // What readDeviceConfig() finds, and what it complains of.
    void config_data()
    {
        QTest::addColumn<QByteArray>("param");
        QTest::addColumn<QByteArray>("device"); // of "u"
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QStringList>("complaints");
        const auto row = [](const char *name, const QByteArray &device, const QString &found,
                            const QStringList &complaints = {}, const QByteArray &param = {}) {
            QTest::newRow(name) << param << device << found << complaints;
        };
        const QByteArray all = "portName=/dev/ttyS0\naddr=255\nretries=3\nprotocol=9\ninterval=0\n"
                               "commType=1\nipAddr=10.0.0.5\nport=1502\neventChooseList\\2=1\n";
        const QString standard = "1 COM1 1 5 0 5 0 : 502 ()";
        const QString unknown = "nothing about \"u\": the defaults are used, port COM1";
        row("no files", {}, standard, { unknown });
        row("other language", {}, "0 COM1 1 5 0 5 0 : 502 ()", { unknown }, "Language=2\n");
        row("everything", "[u]\n" + all, "1 /dev/ttyS0 255 3 9 0 1 10.0.0.5: 1502 (1)");
        row("of another device", "[u2]\n" + all, standard, { unknown });
        row("no number", "[u]\nportName=a,b\naddr=1,2\n", "1 a,b 0 5 0 5 0 : 502 ()",
            { "u/addr=1,2 is no number", "u/addr=0 is outside of 1 to 247" });
        row("TCP peer itself", "[u]\naddr=0\ncommType=1\n", "1 COM1 0 5 0 5 1 : 502 ()");
        row("negative address", "[u]\naddr=-251\ncommType=1\n", "1 COM1 -251 5 0 5 1 : 502 ()",
            { "u/addr=-251 is outside of 1 to 247" });
        row("lowest", "[u]\nretries=1\nprotocol=0\ninterval=0\ncommType=0\nport=1\n",
            "1 COM1 1 1 0 0 0 : 1 ()");
        row("one too high", "[u]\naddr=248\nretries=1001\ninterval=86401\ncommType=2\nport=65536\n",
            "1 COM1 248 1001 0 86401 2 : 65536 ()",
            { "u/retries=1001 is outside of 1 to 1000", "u/interval=86401 is outside of 0 to 86400",
              "u/commType=2 is outside of 0 to 1", "u/port=65536 is outside of 1 to 65535",
              "u/addr=248 is outside of 1 to 247" });
        row("out of range",
            "[u]\naddr=300\nretries=99999999999\ninterval=-5\nport=70000\ncommType=\n",
            "1 COM1 300 0 0 -5 0 : 70000 ()",
            { "Language=x is no number", "u/retries=99999999999 is no", "u/retries=0 is outside",
              "u/interval=-5 is outside", "u/commType= is no", "u/port=70000 is outside",
              "u/addr=300 is outside" },
            "Language=x\n");
    }

    void config()
    {
        QFETCH(QByteArray, param);
        QFETCH(QByteArray, device);
        QFETCH(QStringList, complaints);
        QVERIFY(param.isEmpty() || writeFile("param.ini", param));
        QVERIFY(device.isEmpty() || writeFile("dev.ini", device));
        const DeviceConfig read = readDeviceConfig(path({}), "u", 192);
        const DeviceSettings &config = read.settings;
        QString found;
        QDebug(&found).noquote() << config.languageFlag << config.portName << config.unit
                                 << config.retries << config.protocol << config.interval
                                 << config.communicationType << config.ipAddress + ':'
                                 << config.tcpPort << config.eventChoice.keys(1);
        found = found.trimmed();
        QTEST(found, "expected");
        QCOMPARE(config.eventChoice.size(), 192);
        QCOMPARE(read.problems.size(), complaints.size());
        for (int i = 0; i < complaints.size(); ++i)
            QVERIFY2(read.problems.at(i).contains(".ini: " + complaints.at(i)),
                     qPrintable(read.problems.at(i)));
    }

    void slashInTheName()
    {
        QVERIFY(writeFile("dev.ini", "[a/b]\naddr=7\n"));
        QCOMPARE(readDeviceConfig(path({}), "a/b", 192).settings.unit, 7);
    }

    void unreadableConfig()
    {
        QVERIFY(QDir().mkdir("dev.ini"));
        QByteArray binary(5000, Qt::Uninitialized);
        for (int i = 0; i < binary.size(); ++i)
            binary[i] = char(i * 37 + i / 256);
        QVERIFY(writeFile("param.ini", binary));
        const DeviceConfig config = readDeviceConfig(path({}), "ups1", 192);
        QCOMPARE(config.settings.portName, QStringLiteral("COM1"));
        QCOMPARE(config.settings.retries, 5);
        const QString problems = config.problems.join('\n');
        QVERIFY2(problems.contains("param.ini: is no proper"), qPrintable(problems));
        QVERIFY2(problems.contains("dev.ini: cannot be read"), qPrintable(problems));
        QVERIFY(QDir().rmdir("dev.ini") && ::mkfifo("dev.ini", 0600) == 0);
        QVERIFY(
            readDeviceConfig(path({}), "ups1", 192)
                .problems.contains(path("dev.ini")
                                   + ": cannot be read, defaults are used: not a regular file"));
    }

    void dataLogRow_data()
    {
        using Data = QMap<int, QVariant>;
        const Columns<Data, int, QString> row("data", "column", "expected");
        row("missing", {}, 0, "0.0");
        row("rounded", { { 4133, 229.96f } }, 0, "230.0");
        row("missing phase", { { 4132, 3.f }, { 4133, 220.f }, { 4134, 221.04f } }, 0,
            "220.0/221.0/0.0");
        row("negative state", { { 4161, -1.f } }, 9, "None");
        row("unknown state", { { 4161, 4.f } }, 9, "None");
        row("coldest", { { 4107, -10.f } }, 13, "-10.0");
        row("no sensor", { { 4107, -11.f } }, 13, "-");
        row("state that is cut", { { 4101, 4.7f } }, 14, "Discharge");
        row("first without a text", { { 4101, 5.f } }, 14, "Disconnect");
        row("state far off", { { 4101, 1e30f } }, 14, "Disconnect");
        const float nan = std::numeric_limits<float>::quiet_NaN();
        row("state that is no number", { { 4101, nan } }, 14, "Disconnect");
    }

    void dataLogRow()
    {
        using Data = QMap<int, QVariant>;
        QFETCH(Data, data);
        QFETCH(int, column);
        const QString text = tavoFont::instance()->changeLogData(data).at(column);
        QTEST(text, "expected");
    }
};

QTEST_GUILESS_MAIN(tst_ClientRules)
#include "tst_clientrules.moc"
