// The simulated UPS by itself: its behaviour in time, its scripts and its registers.

#include "tools/measurementrows.h"
#include "tools/settingrows.h"
#include "tools/upssim/simulator.h"

#include <QSet>
#include <QTest>

using namespace registermap;

namespace {

using Contents = QVector<int>; // history contents, negative for "disappeared"

constexpr int appeared(int event)
{
    return upscontent::FirstEvent + event;
}
constexpr int over(int event)
{
    return -appeared(event);
}

void run(Simulator &simulator, double seconds)
{
    for (int i = 0; i < qRound(seconds * 10); ++i)
        simulator.advance(0.1);
}

bool perform(Simulator &simulator, const char *text, QString *error)
{
    const auto action = parseAction(QString::fromLatin1(text), error);
    return action && simulator.perform(*action, error);
}

Contents contents(const UpsModel &model)
{
    Contents result;
    for (const HistoryRecord &record : model.history())
        result.append(record.status ? record.content : -record.content);
    return result;
}

// Whether `expected` occurs in `all` in that order, with anything in between.
bool isSubsequence(const Contents &expected, const Contents &all)
{
    int found = 0;
    for (const int content : all) {
        if (found < expected.size() && content == expected[found])
            ++found;
    }
    return found == expected.size();
}

} // namespace

class tst_UpsSim : public QObject
{
    Q_OBJECT

private slots:
    void tablesAreSound();
    void scenarios_data();
    void scenarios();
    void commandsAct();
    void batteryTestTakesTwentySeconds();
    void historyIsBounded();
    void requests();
    void badScripts();
};

void tst_UpsSim::tablesAreSound()
{
    QVector<RegisterRow> rows;
    for (const SettingRow &row : settingRows) {
        rows.append(row.registers);
        if (row.registers.format != Format::Character)
            QVERIFY2(row.factory >= row.min && row.factory <= row.max, row.registers.meaning);
        QVERIFY2(noValue(row.registers.format) < 0 || row.max < noValue(row.registers.format),
                 row.registers.meaning);
    }
    QVERIFY(rows.last().id + rows.last().count <= firstSetting + settingCount);
    rows += QVector<RegisterRow>(std::begin(measurementRows), std::end(measurementRows));
    for (int i = 1; i < rows.size(); ++i)
        QVERIFY2(rows[i].id >= rows[i - 1].id + rows[i - 1].count, rows[i].meaning);
    QCOMPARE(rows.last().id + rows.last().count, firstMeasurement + measurementCount);

    QSet<int> lengths { historyPage * historyFields };
    int covered = 0;
    for (const Block &block : blocks) {
        QVERIFY(block.count <= 125);
        QVERIFY2(!lengths.contains(block.count), "late replies are told apart by their length");
        lengths.insert(block.count);
        covered += block.count;
    }
    QCOMPARE(covered, eventCount + settingCount + measurementCount);
}

void tst_UpsSim::scenarios_data()
{
    using namespace upscontent;
    using namespace upsevent;
    QTest::addColumn<int>("seconds");
    QTest::addColumn<int>("mode"); // at the end
    QTest::addColumn<Contents>("expected");

    // clang-format off
    QTest::newRow("normal") << 60 << 4 << Contents { Started, OutputFromInverter };
    QTest::newRow("mains-failure") << 60 << 4 << Contents {
        appeared(AbnormalInput), InputFromBattery, appeared(BatteryLow), over(BatteryLow), over(AbnormalInput), InputFromMains };
    QTest::newRow("battery-discharge") << 90 << 4 << Contents {
        appeared(BatteryLow), appeared(EndOfDischarge), OutputOff, over(EndOfDischarge), InputFromMains, OutputFromInverter };
    QTest::newRow("overload") << 40 << 4 << Contents {
        appeared(OverloadAlarm), appeared(Overload), OutputFromBypass, over(OverloadAlarm), FaultCleared, OutputFromInverter };
    QTest::newRow("bypass") << 20 << 3 << Contents { ManualBypass, OutputFromBypass };
    QTest::newRow("fan-fault") << 90 << 4 << Contents {
        appeared(FanFault), appeared(OverTemperature), OutputFromBypass, over(FanFault), FaultCleared, OutputFromInverter };
    QTest::newRow("stopped") << 10 << 2 << Contents { ManualShutDown, OutputOff };
    // clang-format on
}

void tst_UpsSim::scenarios()
{
    QFETCH(int, seconds);
    QFETCH(Contents, expected);
    Simulator simulator(1, 0);
    simulator.play(*scenario(QString::fromLatin1(QTest::currentDataTag())));
    run(simulator, seconds);
    QString all;
    QDebug(&all) << contents(simulator.model());
    QVERIFY2(isSubsequence(expected, contents(simulator.model())), qPrintable(all));
    QTEST(int(simulator.model().measurement(4241)), "mode");
}

void tst_UpsSim::commandsAct()
{
    // clang-format off
    const struct
    {
        const char *script; // performed at once, in one go but for "wait"
        int code;
        bool taken;
        int mode;
        int outputMode;
    } rows[] = {
        { "mains off",                       BatteryTest,        false, 5, 2 },
        { "battery off",                     BatteryTest,        false, 4, 2 },
        { "",                                ShutDownToBypass,   true,  3, 1 },
        { "command 4",                       StartUp,            true,  4, 2 },
        { "epo on",                          StartUp,            false, 7, 0 },
        { "command 4;mains off;battery off", StartUp,            false, 10, 0 },
        { "command 9",                       TransferToInverter, false, 3, 1 },
        { "setting 3040 0",                  TransferToBypass,   false, 4, 2 },
        { "command 10;mains off",            BuzzerOff,          true,  5, 2 },
        { "setting 3000 4",                  BuzzerOn,           true,  9, 1 },
        { "",                                DownloadHistory,    false, 4, 2 },
    };
    // clang-format on
    for (const auto &row : rows) {
        Simulator simulator(1, 0);
        run(simulator, 0.1);
        QString error;
        for (const QString &line : QString(row.script).split(';', Qt::SkipEmptyParts)) {
            QVERIFY2(perform(simulator, qPrintable(line), &error), qPrintable(error));
            run(simulator, 0.2);
        }
        const auto answer = simulator.model().command(row.code);
        QVERIFY2((answer == UpsModel::Answer::Accepted) == row.taken, row.script);
        run(simulator, 0.2);
        QCOMPARE(int(simulator.model().measurement(4241)), row.mode);
        QCOMPARE(int(simulator.model().measurement(4161)), row.outputMode);
    }
}

void tst_UpsSim::batteryTestTakesTwentySeconds()
{
    Simulator simulator(1, 0);
    UpsModel &model = simulator.model();
    run(simulator, 0.1);
    QCOMPARE(model.command(BatteryTest), UpsModel::Answer::Accepted);
    run(simulator, 10);
    QCOMPARE(model.command(BatteryTest), UpsModel::Answer::Accepted); // and does not begin anew
    run(simulator, 9.5);
    QCOMPARE(model.workingMode(), 6);
    QVERIFY(model.event(upsevent::TestMode));
    run(simulator, 1);
    QCOMPARE(model.workingMode(), 4);
    QVERIFY(model.event(upsevent::TestSuccess));
    QCOMPARE(model.command(ClearFault), UpsModel::Answer::Accepted);
    run(simulator, 0.1);
    QVERIFY(!model.event(upsevent::TestSuccess));
}

void tst_UpsSim::historyIsBounded()
{
    Simulator simulator(1, 86'390);
    UpsModel &model = simulator.model();
    for (int i = 0; i < historyCapacity + 10; ++i)
        model.command(ClearFault);
    QVERIFY(int(model.history().size()) <= historyCapacity);
    for (std::size_t i = 1; i < model.history().size(); ++i)
        QCOMPARE(int(model.history()[i].number), int(model.history()[i - 1].number) + 1);

    run(simulator, 15); // past midnight
    model.command(ClearHistory);
    QCOMPARE(contents(model), Contents { upscontent::HistoryCleared });
    QCOMPARE(int(model.history().front().day), 1);
    QCOMPARE(model.history().front().second, 5u);
}

void tst_UpsSim::requests()
{
    const struct
    {
        int function;
        int address;
        int count;
        QVector<quint16> values;
        int exception;
    } rows[] = { { 4, 125, 121, {}, 2 },
                 { 3, 0, 106, {}, 2 },
                 { 2, 90, 7, {}, 2 },
                 { 4, 65535, 125, {}, 2 },
                 { 4, 0, 0, {}, 3 },
                 { 4, 0, 126, {}, 3 },
                 { 4, historyBase, 15, {}, 2 },
                 { 6, 5, 1, { 25 }, 3 },
                 { 6, 16, 1, { 1 }, 3 },
                 { 16, 4, 2, { 20, 25 }, 3 },
                 { 16, 4, 3, { 20, 18 }, 3 },
                 { 6, commandRegister, 1, { 1 }, 3 } };
    Simulator simulator(1, 0);
    const quint16 before = simulator.model().setting(3004);
    for (const auto &row : rows) {
        RegisterRequest request;
        request.function = row.function;
        request.address = row.address;
        request.count = row.count;
        request.values = row.values;
        QCOMPARE(simulator.registers().handle(request), row.exception);
        QCOMPARE(simulator.model().setting(3004), before); // all of a request or nothing
    }
}

void tst_UpsSim::badScripts()
{
    const struct
    {
        const char *script;
        const char *reason;
    } rows[] = { { "0 mains", "line 1: unknown action" },
                 { "0 load", "line 1: expected \"load PERCENT\"" },
                 { "0 load 10\n1 load nan", "line 2: \"nan\" is not a number from 0 to 200" },
                 { "0 set flag 96 1", "from 0 to 95" },
                 { "# a script\n\nmains off", "line 3: no time" },
                 { "5", "line 1: unknown action" },
                 { "5 mains off\n4 mains on", "line 2" },
                 { "nan mains off", "line 1" },
                 { "\x7f\x45LF\x01\x02\n\n", "line 1" } };
    for (const auto &row : rows) {
        QString error;
        QVERIFY2(!parseScript(QString::fromLatin1(row.script), &error), row.script);
        QVERIFY2(error.contains(QLatin1String(row.reason)), qPrintable(error));
    }
}

QTEST_APPLESS_MAIN(tst_UpsSim)
#include "tst_upssim.moc"
