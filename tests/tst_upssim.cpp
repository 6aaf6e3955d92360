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

RegisterRequest request(int function, int address, int count, QVector<quint16> values = {})
{
    RegisterRequest result;
    result.function = function;
    result.address = address;
    result.count = count;
    result.values = std::move(values);
    return result;
}

} // namespace

class tst_UpsSim : public QObject
{
    Q_OBJECT

private slots:
    void tablesAreSound();
    void scenarios_data();
    void scenarios();
    void commandsAct_data();
    void commandsAct();
    void batteryTestTakesTwentySeconds();
    void everyEventOnRequest();
    void historyIsBounded();
    void requests_data();
    void requests();
    void badScripts_data();
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

void tst_UpsSim::commandsAct_data()
{
    QTest::addColumn<QString>("script"); // performed at once, in one go but for "wait"
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("taken");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("outputMode");

    const auto row = [](const char *name, const char *script, int code, bool taken, int mode,
                        int outputMode) {
        QTest::newRow(name) << QString::fromLatin1(script) << code << taken << mode << outputMode;
    };
    row("test on battery", "mains off", BatteryTest, false, 5, 2);
    row("test without battery", "battery off", BatteryTest, false, 4, 2);
    row("test during maintenance", "command 2", BatteryTest, false, 6, 2);
    row("shut down", "", ShutDown, true, 2, 0);
    row("start up", "command 4", StartUp, true, 4, 2);
    row("start up, emergency off", "epo on", StartUp, false, 7, 0);
    row("start up, nothing to run on", "command 4;mains off;battery off", StartUp, false, 10, 0);
    row("shut down to bypass", "", ShutDownToBypass, true, 3, 1);
    row("inverter after that", "command 9", TransferToInverter, false, 3, 1);
    row("to bypass without one", "bypass off", TransferToBypass, false, 4, 2);
    row("to bypass, forbidden", "setting 3040 0", TransferToBypass, false, 4, 2);
    row("bypass lost", "command 10;mains off", BuzzerOff, true, 5, 2);
    row("economy mode", "setting 3000 4", BuzzerOn, true, 9, 1);
    row("unknown", "", 1, false, 4, 2);
    row("the driver's own", "", DownloadHistory, false, 4, 2);
}

void tst_UpsSim::commandsAct()
{
    QFETCH(QString, script);
    QFETCH(int, code);
    QFETCH(bool, taken);
    Simulator simulator(1, 0);
    run(simulator, 0.1);
    QString error;
    for (const QString &line : script.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        QVERIFY2(perform(simulator, qPrintable(line), &error), qPrintable(error));
        run(simulator, 0.2);
    }
    const auto answer = simulator.model().command(code);
    QCOMPARE(answer == UpsModel::Answer::Accepted, taken);
    run(simulator, 0.2);
    QTEST(int(simulator.model().measurement(4241)), "mode");
    QTEST(int(simulator.model().measurement(4161)), "outputMode");
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

void tst_UpsSim::everyEventOnRequest()
{
    Simulator simulator(1, 0);
    DeviceRegisters &registers = simulator.registers();
    QString error;
    for (const bool raised : { true, false }) {
        for (int event = 0; event < eventCount; ++event) {
            const auto text = QByteArray("set flag %1 %2").replace("%1", QByteArray::number(event));
            QVERIFY(perform(simulator, QByteArray(text).replace("%2", raised ? "1" : "0"), &error));
            run(simulator, 0.1);
            QCOMPARE(registers.handle(request(2, 0, eventCount)), 0);
            for (int other = 0; other < eventCount; ++other)
                QCOMPARE(registers.mapping()->tab_input_bits[other], raised == (other <= event));
        }
    }
}

void tst_UpsSim::historyIsBounded()
{
    Simulator simulator(1, 86'390);
    UpsModel &model = simulator.model();
    const quint16 generation = model.historyGeneration();
    for (int i = 0; i < historyCapacity + 10; ++i)
        model.command(ClearFault);
    QVERIFY(int(model.history().size()) <= historyCapacity);
    QVERIFY(model.historyGeneration() != generation);
    for (std::size_t i = 1; i < model.history().size(); ++i)
        QCOMPARE(int(model.history()[i].number), int(model.history()[i - 1].number) + 1);

    run(simulator, 15); // past midnight
    model.command(ClearHistory);
    QCOMPARE(contents(model), Contents { upscontent::HistoryCleared });
    QCOMPARE(int(model.history().front().day), 1);
    QCOMPARE(model.history().front().second, 5u);
}

void tst_UpsSim::requests_data()
{
    QTest::addColumn<int>("function");
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("count");
    QTest::addColumn<QVector<quint16>>("values");
    QTest::addColumn<int>("exception");

    const auto row = [](const char *name, int function, int address, int count,
                        const QVector<quint16> &values, int exception) {
        QTest::newRow(name) << function << address << count << values << exception;
    };
    row("past the measurements", 4, 125, 121, {}, 2);
    row("past the settings", 3, 0, 106, {}, 2);
    row("past the events", 2, 90, 7, {}, 2);
    row("highest address", 4, 65535, 125, {}, 2);
    row("nothing", 4, 0, 0, {}, 3);
    row("too much", 4, 0, 126, {}, 3);
    row("history past its end", 4, historyBase, 15, {}, 2);
    row("setting out of range", 6, 5, 1, { 25 }, 3);
    row("no setting there", 6, 16, 1, { 1 }, 3);
    row("one of several out of range", 16, 4, 2, { 20, 25 }, 3);
    row("fewer values than announced", 16, 4, 3, { 20, 18 }, 3);
    row("unknown command", 6, commandRegister, 1, { 1 }, 3);
}

void tst_UpsSim::requests()
{
    QFETCH(int, function);
    QFETCH(int, address);
    QFETCH(int, count);
    QFETCH(QVector<quint16>, values);
    QFETCH(int, exception);
    Simulator simulator(1, 0);
    const quint16 before = simulator.model().setting(3004);
    QCOMPARE(simulator.registers().handle(request(function, address, count, values)), exception);
    if (exception != 0)
        QCOMPARE(simulator.model().setting(3004), before);
}

void tst_UpsSim::badScripts_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *name, const char *script, const char *reason) {
        QTest::newRow(name) << QString::fromLatin1(script) << QString::fromLatin1(reason);
    };
    row("unknown action", "0 mains", "line 1: unknown action");
    row("missing number", "0 load", "line 1: expected \"load PERCENT\"");
    row("too many numbers", "0 load 10 20", "line 1: expected");
    row("no number", "0 load 10\n1 load nan", "line 2: \"nan\" is not a number from 0 to 200");
    row("out of range", "0 set flag 96 1", "from 0 to 95");
    row("no time", "# a script\n\nmains off", "line 3: no time");
    row("time alone", "5", "line 1: unknown action");
    row("back in time", "5 mains off\n4 mains on", "line 2");
    row("time that is none", "nan mains off", "line 1");
    row("binary", "\x7f\x45LF\x01\x02\n\n", "line 1");
}

void tst_UpsSim::badScripts()
{
    QFETCH(QString, script);
    QFETCH(QString, reason);
    QString error;
    QVERIFY(!parseScript(script, &error));
    QVERIFY2(error.contains(reason), qPrintable(error));
}

QTEST_APPLESS_MAIN(tst_UpsSim)
#include "tst_upssim.moc"
