#include "client/commandtable.h"
#include "client/deviceconfig.h"
#include "client/eventtexts.h"
#include "client/flagchanges.h"
#include "client/linkstate.h"
#include "client/tavofont.h"
#include "warningguard.h"

#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

/** The client's rules that need neither driver nor port. */
class tst_ClientRules : public QObject
{
    Q_OBJECT

private slots:
    void link_data();
    void link();
    void flags_data();
    void flags();
    void commandRowsAreSound();
    void commandText_data();
    void commandText();
    void config_data();
    void config();
    void unreadableConfig();
    void eventTexts();
    void dataLogRow_data();
    void dataLogRow();
};

// The link's history as a line: per query '+' or '-', and what it led to.
// clang-format off
void tst_ClientRules::link_data()
{
    QTest::addColumn<int>("retries");
    QTest::addColumn<QString>("queries");
    QTest::addColumn<QString>("steps"); // u restored, l lost, r limit reached, . nothing QTest::newRow("up at once") << 5 << "+++" << "u..";
    QTest::newRow("lost at the fifth, reopened from then on") << 5 << "-------" << "....lrr";
    QTest::newRow("scattered failures add up") << 3 << "+-+-+-+" << "u....lu";
    QTest::newRow("count starts anew when up") << 2 << "--+-+--" << ".lu..lr";
    QTest::newRow("no retries") << 0 << "-+-" << "lul";
    QTest::newRow("negative retries") << -7 << "--+" << "lru";
}
// clang-format on

void tst_ClientRules::link()
{
    QFETCH(int, retries);
    QFETCH(QString, queries);
    LinkStep step { LinkUnknown, 0, false, false, false };
    QString steps;
    for (const QChar query : queries) {
        step = nextLink(step.state, step.failCount, query == '+', retries);
        QVERIFY(!step.lost || step.limitReached);
        steps += step.restored ? 'u' : step.lost ? 'l' : step.limitReached ? 'r' : '.';
    }
    QTEST(steps, "steps");
    const int most = std::numeric_limits<int>::max();
    QCOMPARE(nextLink(LinkLost, most, false, 5).failCount, most);
}

// Each report gives some flags new values; "type:alarmId=state" for each change expected.
void tst_ClientRules::flags_data()
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
        << Reports { { { 2095, 1 },
                       { 2082, 1 },
                       { 2059, 1 },
                       { 2000, 1 },
                       { 2096, 1 },
                       { 1999, 1 } },
                     { { 2059, 0 }, { 2000, 0 } },
                     { { 2059, 2 } } }
        << QStringList { "2006:0=1 2006:59=1 2006:82=1 2006:95=1 2010=1 2009=1 !",
                         "2006:96=0 2006:155=0 2010=0", "2006:155=2 2010=2" };
    QTest::newRow("rounded to a whole number")
        << Reports { { { 2001, 0.6f }, { 2002, 1.4f }, { 2003, 0.4f } } }
        << QStringList { "2006:1=1 2006:2=1 !" };
}

void tst_ClientRules::flags()
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
            line += change.alarmId
                ? QStringLiteral("%1:%2=%3")
                      .arg(change.type)
                      .arg(*change.alarmId)
                      .arg(change.alarmState)
                : QStringLiteral("%1=%2").arg(change.type).arg(change.alarmState);
        if (found.appeared)
            line += "!";
        changes += line.join(' ');
    }
    QTEST(changes, "changes");
    QVERIFY(found.reportedStates.contains(0) && found.reportedStates.contains(95));
    QVERIFY(findFlagChanges({ { 2000, 1 } }, {}, 0).reportedStates.isEmpty());
}

void tst_ClientRules::commandRowsAreSound()
{
    int last = 0;
    for (const CommandRow &row : commandRows) {
        QVERIFY(row.controlId > last);
        last = row.controlId;
        QCOMPARE(*row.text != '\0', row.form == CommandForm::Coded);
        QVERIFY(row.driverCode == 0 || row.form == CommandForm::Coded);
    }
}

void tst_ClientRules::commandText_data()
{
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("text");
    const QString han = QString(QChar(0x4e2d)).repeated(30); // 3 bytes each in UTF-8, 2 in GBK
    const QString face = QString::fromUcs4(U"\U0001f600").repeated(30); // 4 bytes, 2 QChars
    const QByteArray utf8 = "UTF-8";
    QTest::newRow("code, no value") << utf8 << 1003 << "" << QByteArray("0,");
    QTest::newRow("two digits") << utf8 << 1045 << "/x y.csv" << QByteArray("20,/x y.csv");
    QTest::newRow("passed through") << utf8 << 2016 << "1,300" << QByteArray("1,300");
    QTest::newRow("unlisted") << utf8 << 1011 << "2026-01-01" << QByteArray();
    QTest::newRow("negative") << utf8 << -1 << "x" << QByteArray();
    QTest::newRow("fits") << utf8 << 1007 << QString(47, 'x') << "4," + QByteArray(47, 'x');
    QTest::newRow("cut") << utf8 << 1001 << QString(99, 'x') << "12," + QByteArray(46, 'x');
    QTest::newRow("cut, 1 byte over") << utf8 << 1007 << "x" + han << "4,x" + han.left(15).toUtf8();
    QTest::newRow("cut, 2 bytes over") << utf8 << 1007 << han << "4," + han.left(15).toUtf8();
    QTest::newRow("cut, exact") << utf8 << 2016 << "x" + han << "x" + han.left(16).toUtf8();
    QTest::newRow("cut, surrogates") << utf8 << 2016 << face << face.left(24).toUtf8();
    QTest::newRow("cut, GBK") << QByteArray("GBK") << 2016 << han
                              << QByteArray("\xd6\xd0").repeated(24);
    QTest::newRow("zero byte") << utf8 << 2016 << QString::fromLatin1("1\0002", 3)
                               << QByteArray("1");
}

void tst_ClientRules::commandText()
{
    QFETCH(QByteArray, codec);
    QFETCH(int, id);
    QFETCH(QString, value);
    QFETCH(QByteArray, text);
    QTextCodec *before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName(codec));
    const CommandText buffer = ::commandText({ id, value });
    QTextCodec::setCodecForLocale(before);
    const QByteArray rest(50 - text.size(), '\0');
    QCOMPARE(QByteArray(buffer.data(), int(buffer.size())), text + rest);
}

// What readDeviceConfig() finds, and the keys that it complains of.
void tst_ClientRules::config_data()
{
    QTest::addColumn<QByteArray>("param");
    QTest::addColumn<QByteArray>("dev");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("found");
    QTest::addColumn<QStringList>("complaints");
    const QString standard = "1 COM1 1 5 0 5 0 : 502";
    QTest::newRow("no files") << QByteArray() << QByteArray() << "ups1" << standard
                              << QStringList();
    QTest::newRow("language 2") << QByteArray("Language=2\n") << QByteArray() << "u"
                                << "0 COM1 1 5 0 5 0 : 502" << QStringList();
    const QByteArray all = "portName=/dev/ttyS0\naddr=7\nretries=3\nprotocol=9\ninterval=0\n"
                           "commType=1\nipAddr=10.0.0.5\nport=1502\neventChooseList\\2=1\n";
    const QString read = "1 /dev/ttyS0 7 3 9 0 1 10.0.0.5: 1502 [1]";
    QTest::newRow("all keys") << QByteArray() << "[ups1]\n" + all << "ups1" << read
                              << QStringList();
    QTest::newRow("other device") << QByteArray() << "[ups2]\n" + all << "ups1" << standard
                                  << QStringList();
    QTest::newRow("slash in the name")
        << QByteArray() << "[a/b]\n" + all << "a/b" << read << QStringList();
    QTest::newRow("commas without quotes")
        << QByteArray() << QByteArray("[u]\nportName=a,b\naddr=1,2\n") << "u"
        << "1 a,b 0 5 0 5 0 : 502" << QStringList { "u/addr=1,2 is no number" };
    QTest::newRow("no numbers, too large ones")
        << QByteArray("Language=x\n")
        << QByteArray("[u]\naddr=300\nretries=99999999999\n"
                      "interval=-5\nport=70000\ncommType=\n")
        << "u"
        << "1 COM1 300 0 0 -5 0 : 70000"
        << QStringList { "Language=x is no number",     "u/addr=300 is outside",
                         "u/retries=99999999999 is no", "u/retries=0 is outside",
                         "u/interval=-5 is outside",    "u/commType= is no",
                         "u/port=70000 is outside" };
}

void tst_ClientRules::config()
{
    QFETCH(QByteArray, param);
    QFETCH(QByteArray, dev);
    QFETCH(QString, device);
    QFETCH(QStringList, complaints);
    const QTemporaryDir directory;
    for (const auto &file : { qMakePair(QString("param.ini"), param), { "dev.ini", dev } }) {
        QFile ini(directory.filePath(file.first));
        if (!file.second.isEmpty())
            QVERIFY(ini.open(QIODevice::WriteOnly) && ini.write(file.second) > 0);
    }
    const DeviceConfig config = readDeviceConfig(directory.path(), device, 192);
    QString found = QStringLiteral("%1 %2 %3 %4 %5 %6 ")
                        .arg(config.languageFlag, config.portName)
                        .arg(config.address)
                        .arg(config.retries)
                        .arg(config.protocol)
                        .arg(config.interval);
    found += QStringLiteral("%1 %2: %3")
                 .arg(config.communicationType)
                 .arg(config.ipAddress)
                 .arg(config.tcpPort);
    for (const int chosen : config.eventChoice.keys(1))
        found += QStringLiteral(" [%1]").arg(chosen);
    QTEST(found, "found");
    QCOMPARE(config.eventChoice.size(), 192);
    QCOMPARE(config.problems.size(), complaints.size());
    for (int i = 0; i < complaints.size(); ++i)
        QVERIFY2(config.problems.at(i).contains(".ini: " + complaints.at(i)),
                 qPrintable(config.problems.at(i)));
}

void tst_ClientRules::unreadableConfig()
{
    const QTemporaryDir directory;
    QVERIFY(QDir(directory.path()).mkdir("dev.ini"));
    QFile binary(directory.filePath("param.ini"));
    QVERIFY(binary.open(QIODevice::WriteOnly));
    for (int i = 0; i < 5000; ++i)
        binary.putChar(char(i * 37 + i / 256));
    binary.close();
    const DeviceConfig config = readDeviceConfig(directory.path(), "ups1", 192);
    QCOMPARE(config.portName, QStringLiteral("COM1"));
    QCOMPARE(config.retries, 5);
    const QString problems = config.problems.join('\n');
    QVERIFY2(problems.contains("param.ini: is no proper"), qPrintable(problems));
    QVERIFY2(problems.contains("dev.ini: cannot be read"), qPrintable(problems));
}

void tst_ClientRules::eventTexts()
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

// clang-format off
void tst_ClientRules::dataLogRow_data()
{
    using Data = QMap<int, QVariant>;
    QTest::addColumn<Data>("data");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    const float nan = std::numeric_limits<float>::quiet_NaN();
    QTest::newRow("missing") << Data() << 0 << "0.0";
    QTest::newRow("rounded") << Data { { 4133, 229.96f } } << 0 << "230.0";
    QTest::newRow("one phase") << Data { { 4132, 1.f }, { 4133, 1.f }, { 4134, 2.f } } << 0 << "1.0";
    QTest::newRow("three phases") << Data {
        { 4132, 3.f }, { 4133, 220.f }, { 4134, 221.04f }, { 4135, 219.96f } } << 0 << "220.0/221.0/220.0";
    QTest::newRow("load, three phases") << Data { { 4163, 3.f }, { 4173, 1.f }, { 4175, 3.f } } << 7 << "1.0/0.0/3.0";
    QTest::newRow("mode") << Data { { 4161, 2.f } } << 9 << "Load on inverter";
    QTest::newRow("mode below") << Data { { 4161, -1.f } } << 9 << "None";
    QTest::newRow("mode above") << Data { { 4161, 4.f } } << 9 << "None";
    QTest::newRow("temperature") << Data { { 4107, -10.f } } << 13 << "-10.0";
    QTest::newRow("no temperature") << Data { { 4107, -11.f } } << 13 << "-";
    QTest::newRow("state truncated") << Data { { 4101, 4.7f } } << 14 << "Discharge";
    QTest::newRow("state above") << Data { { 4101, 7.f } } << 14 << "Disconnect";
    QTest::newRow("state huge") << Data { { 4101, 1e30f } } << 14 << "Disconnect";
    QTest::newRow("state not a number") << Data { { 4101, nan } } << 14 << "Disconnect";
}
// clang-format on

void tst_ClientRules::dataLogRow()
{
    using Data = QMap<int, QVariant>;
    QFETCH(Data, data);
    QFETCH(int, column);
    const QList<QString> titles = tavoFont::instance()->getDataLogDesc();
    const QList<QString> row = tavoFont::instance()->changeLogData(data);
    QCOMPARE(titles.size(), 15);
    QCOMPARE(titles.first() + titles.last(), QStringLiteral("Input voltage(V)Battery state"));
    QCOMPARE(row.size(), titles.size());
    QTEST(row.at(column), "text");
}

QTEST_GUILESS_MAIN(tst_ClientRules)
#include "tst_clientrules.moc"
