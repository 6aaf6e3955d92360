#include "client/commandtable.h"
#include "client/deviceconfig.h"
#include "client/eventtexts.h"
#include "client/flagchanges.h"
#include "client/linkstate.h"
#include "client/tavofont.h"
#include "client/upgrade.h"
#include "guardedtest.h"

#include <QTextCodec>

/** The client's rules that need neither driver nor port. */
class tst_ClientRules : public GuardedTest
{
    Q_OBJECT

private slots:
    // The link's history as a line: per query '+' or '-', and what it led to.
    void link()
    {
        const struct
        {
            int retries;
            const char *queries;
            const char *steps; // u restored, l lost, r limit reached, . nothing
        } rows[] = { { 5, "+++", "u.." },         { 5, "-------", "....lrr" },
                     { 3, "+-+-+-+", "u....lu" }, // scattered failures add up
                     { 2, "--+-+--", ".lu..lr" }, // the count starts anew when up
                     { 0, "-+-", "lul" },         { -7, "--+", "lru" } };
        for (const auto &row : rows) {
            LinkStep step { LinkUnknown, 0, false, false, false };
            QString steps;
            for (const QChar query : QString(row.queries)) {
                step = nextLink(step.state, step.failCount, query == '+', row.retries);
                QVERIFY(!step.lost || step.limitReached);
                steps += step.restored ? 'u' : step.lost ? 'l' : step.limitReached ? 'r' : '.';
            }
            QCOMPARE(steps, QString(row.steps));
        }
        const int most = std::numeric_limits<int>::max();
        QCOMPARE(nextLink(LinkLost, most, false, 5).failCount, most);
    }

    // Each report gives some flags new values; "type:alarmId=state" for each change expected.
    void flags_data()
    {
        using Reports = QVector<QMap<int, float>>;
        QTest::addColumn<Reports>("reports");
        QTest::addColumn<QStringList>("changes");
        QTest::newRow("absent flags") << Reports { {} } << QStringList { "" };
        QTest::newRow("appears once, stays, disappears")
            << Reports { { { 2005, 1 } }, {}, { { 2005, 0 } }, {} }
            << QStringList { "2006:5=1 !", "", "2006:101=0", "" };
        QTest::newRow("other values disappear")
            << Reports { { { 2007, 2 } }, { { 2007, 1 } }, { { 2007, -3 } } }
            << QStringList { "2006:103=2", "2006:7=1 !", "2006:103=-3" };
        QTest::newRow("in order, special flags last")
            << Reports { { { 2095, 1 }, { 2082, 1 }, { 2059, 1 }, { 2000, 1 }, { 2096, 1 } },
                         { { 2059, 0 }, { 2000, 0 } },
                         { { 2059, 2 } } }
            << QStringList { "2006:0=1 2006:59=1 2006:82=1 2006:95=1 2010:-1=1 2009:-1=1 !",
                             "2006:96=0 2006:155=0 2010:-1=0", "2006:155=2 2010:-1=2" };
        QTest::newRow("rounded to a whole number")
            << Reports { { { 2001, 0.6f }, { 2002, 1.4f }, { 2003, 0.4f } } }
            << QStringList { "2006:1=1 2006:2=1 !" };
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
            found = findFlagChanges(data, found.reportedStates, 96);
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
        QVERIFY(findFlagChanges({ { 2000, 1 } }, {}, 0).reportedStates.isEmpty());
    }

    void commandText()
    {
        const QString han = QString(QChar(0x4e2d)).repeated(30); // 3 bytes each in UTF-8, 2 in GBK
        const QString face = QString::fromUcs4(U"\U0001f600").repeated(30); // 4 bytes, 2 QChars
        const struct
        {
            int id;
            QString value;
            QByteArray text;
            const char *codec = "UTF-8";
        } rows[] = { { 1003, "", "0," },
                     { 1045, "/x y.csv", "20,/x y.csv" },
                     { 2016, "1,300", "1,300" },
                     { 1011, "2026-01-01", "" }, // unlisted
                     { -1, "x", "" },
                     { 1007, QString(47, 'x'), "4," + QByteArray(47, 'x') },
                     { 1001, QString(99, 'x'), "12," + QByteArray(46, 'x') },
                     { 1007, "x" + han, "4,x" + han.left(15).toUtf8() }, // a byte over
                     { 1007, han, "4," + han.left(15).toUtf8() },
                     { 2016, "x" + han, "x" + han.left(16).toUtf8() },
                     { 2016, face, face.left(24).toUtf8() },
                     { 2016, han, QByteArray("\xd6\xd0").repeated(24), "GBK" },
                     { 2016, QString::fromLatin1("1\0002", 3), "1" } };
        QTextCodec *before = QTextCodec::codecForLocale();
        for (const auto &row : rows) {
            QTextCodec::setCodecForLocale(QTextCodec::codecForName(row.codec));
            const CommandText buffer = ::commandText({ row.id, row.value });
            QTextCodec::setCodecForLocale(before);
            const QByteArray rest(50 - row.text.size(), '\0');
            QCOMPARE(QByteArray(buffer.data(), int(buffer.size())), row.text + rest);
        }
    }

    // What readDeviceConfig() finds, and the keys that it complains of.
    void config()
    {
        const QString standard = "1 COM1 1 5 0 5 0 : 502 ()";
        const QByteArray all = "portName=/dev/ttyS0\naddr=7\nretries=3\nprotocol=9\ninterval=0\n"
                               "commType=1\nipAddr=10.0.0.5\nport=1502\neventChooseList\\2=1\n";
        const QString read = "1 /dev/ttyS0 7 3 9 0 1 10.0.0.5: 1502 (1)";
        const struct
        {
            QByteArray param;
            QByteArray dev;
            QString device;
            QString found;
            QStringList complaints;
        } rows[] = { { {}, {}, "ups1", standard, {} },
                     { "Language=2\n", {}, "u", "0 COM1 1 5 0 5 0 : 502 ()", {} },
                     { {}, "[ups1]\n" + all, "ups1", read, {} },
                     { {}, "[ups2]\n" + all, "ups1", standard, {} },
                     { {}, "[a/b]\n" + all, "a/b", read, {} },
                     { {},
                       "[u]\nportName=a,b\naddr=1,2\ncommType=2\n",
                       "u",
                       "1 a,b 0 5 0 5 2 : 502 ()",
                       { "u/addr=1,2 is no number", "u/commType=2 is outside of 0 to 1" } },
                     { "Language=x\n",
                       "[u]\naddr=300\nretries=99999999999\ninterval=-5\nport=70000\ncommType=\n",
                       "u",
                       "1 COM1 300 0 0 -5 0 : 70000 ()",
                       { "Language=x is no number", "u/addr=300 is outside",
                         "u/retries=99999999999 is no", "u/retries=0 is outside",
                         "u/interval=-5 is outside", "u/commType= is no",
                         "u/port=70000 is outside" } } };
        for (const auto &row : rows) {
            const QTemporaryDir directory;
            QVERIFY(row.param.isEmpty() || writeFile(directory.filePath("param.ini"), row.param));
            QVERIFY(row.dev.isEmpty() || writeFile(directory.filePath("dev.ini"), row.dev));
            const DeviceConfig config = readDeviceConfig(directory.path(), row.device, 192);
            QString found;
            QDebug(&found).noquote()
                << config.languageFlag << config.portName << config.address << config.retries
                << config.protocol << config.interval << config.communicationType
                << config.ipAddress + ':' << config.tcpPort << config.eventChoice.keys(1);
            QCOMPARE(found.trimmed(), row.found);
            QCOMPARE(config.eventChoice.size(), 192);
            QCOMPARE(config.problems.size(), row.complaints.size());
            for (int i = 0; i < row.complaints.size(); ++i)
                QVERIFY2(config.problems.at(i).contains(".ini: " + row.complaints.at(i)),
                         qPrintable(config.problems.at(i)));
        }
    }

    void unreadableConfig()
    {
        QVERIFY(QDir().mkdir("dev.ini"));
        QByteArray binary(5000, Qt::Uninitialized);
        for (int i = 0; i < binary.size(); ++i)
            binary[i] = char(i * 37 + i / 256);
        QVERIFY(writeFile("param.ini", binary));
        const DeviceConfig config = readDeviceConfig(path({}), "ups1", 192);
        QCOMPARE(config.portName, QStringLiteral("COM1"));
        QCOMPARE(config.retries, 5);
        const QString problems = config.problems.join('\n');
        QVERIFY2(problems.contains("param.ini: is no proper"), qPrintable(problems));
        QVERIFY2(problems.contains("dev.ini: cannot be read"), qPrintable(problems));
    }

    void upgradePlan()
    {
        const QString file = configurationDirectory() + "/db/param.ini";
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        CycleSettings settings;
        settings.portName = QStringLiteral("/dev/ttyS1");
        settings.ipAddress = QStringLiteral("::1");
        settings.tcpPort = 502;
        const struct
        {
            QByteArray param; // of different sizes: Qt's settings are cached by size and time
            QStringList arguments;
        } rows[] = { { "Language=0", { "/dev/ttyS1", "1" } },
                     { "Language=1\n", { "::1:502", "0" } } };
        for (const auto &row : rows) {
            QVERIFY(writeFile(file, row.param));
            const UpgradePlan plan = planUpgrade(settings);
            QVERIFY(plan.program.endsWith("/upgrade/KX300P6_20KG4Software.exe"));
            QCOMPARE(plan.arguments, row.arguments);
            settings.communicationType = tcpCommunication;
        }
        QVERIFY(QFile::remove(file));
    }

    void eventTexts()
    {
        const QList<QString> texts = tavoFont::instance()->getEventLogDesc();
        QCOMPARE(texts.size(), 192);
        for (int k = 0; k < eventCount; ++k) {
            QString expected = texts.at(k).trimmed() + " disappear";
            if (k >= 32 && k < 48) {
                QVERIFY(texts.at(k).isEmpty());
                expected = QStringLiteral("Reserved %1 disappear").arg(k);
            }
            if (k == 12) // the one event that is spelt in two ways
                expected.replace(0, 1, 'S');
            QCOMPARE(texts.at(eventCount + k), expected);
        }
    }

    void dataLogRow()
    {
        const float nan = std::numeric_limits<float>::quiet_NaN();
        const struct
        {
            QMap<int, QVariant> data;
            int column;
            const char *text;
        } rows[] = {
            { {}, 0, "0.0" },
            { { { 4133, 229.96f } }, 0, "230.0" },
            { { { 4132, 1.f }, { 4133, 1.f }, { 4134, 2.f } }, 0, "1.0" },
            { { { 4132, 3.f }, { 4133, 220.f }, { 4134, 221.04f } }, 0, "220.0/221.0/0.0" },
            { { { 4163, 3.f }, { 4173, 1.f }, { 4175, 3.f } }, 7, "1.0/0.0/3.0" },
            { { { 4161, 2.f } }, 9, "Load on inverter" },
            { { { 4161, -1.f } }, 9, "None" },
            { { { 4161, 4.f } }, 9, "None" },
            { { { 4107, -10.f } }, 13, "-10.0" },
            { { { 4107, -11.f } }, 13, "-" },
            { { { 4101, 4.7f } }, 14, "Discharge" },
            { { { 4101, 7.f } }, 14, "Disconnect" },
            { { { 4101, 1e30f } }, 14, "Disconnect" },
            { { { 4101, nan } }, 14, "Disconnect" },
        };
        const QList<QString> titles = tavoFont::instance()->getDataLogDesc();
        QCOMPARE(titles.size(), 15);
        QCOMPARE(titles.first() + titles.last(), QStringLiteral("Input voltage(V)Battery state"));
        for (const auto &row : rows) {
            const QList<QString> texts = tavoFont::instance()->changeLogData(row.data);
            QCOMPARE(texts.size(), titles.size());
            QCOMPARE(texts.at(row.column), QString(row.text));
        }
    }
};

QTEST_GUILESS_MAIN(tst_ClientRules)
#include "tst_clientrules.moc"
