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
    void batteryFallsAndRecovers();
    void commandsAct_data();
    void commandsAct();
    void batteryTestTakesTwentySeconds();
    void everyEventOnRequest();
    void historyIsBounded();
    void requests_data();
    void requests();
    void registersCarryWhatTheModelSays();
    void badActions_data();
    void badActions();
    void badScripts_data();
    void badScripts();
    void faultsAreCounted();
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
    QTest::addColumn<Contents>("expected");
    QTest::addColumn<int>("endMode");

    QTest::newRow("normal") << 60 << Contents { Started, OutputFromInverter } << 4;
    QTest::newRow("mains-failure")
        << 60 << Contents { appeared(AbnormalInput), InputFromBattery,    appeared(BatteryLow),
                            over(BatteryLow),        over(AbnormalInput), InputFromMains }
        << 4;
    QTest::newRow("battery-discharge")
        << 90 << Contents { appeared(BatteryLow), appeared(EndOfDischarge), OutputOff,
                            over(EndOfDischarge), InputFromMains,           OutputFromInverter }
        << 4;
    QTest::newRow("overload")
        << 40 << Contents { appeared(OverloadAlarm), appeared(Overload), OutputFromBypass,
                            over(OverloadAlarm),     FaultCleared,       over(Overload),
                            OutputFromInverter }
        << 4;
    QTest::newRow("bypass") << 20 << Contents { ManualBypass, OutputFromBypass } << 3;
    QTest::newRow("fan-fault") << 90 << Contents { appeared(FanFault), appeared(OverTemperature),
                                                   OutputFromBypass,   over(FanFault),
                                                   FaultCleared,       OutputFromInverter }
                               << 4;
    QTest::newRow("stopped") << 10 << Contents { ManualShutDown, OutputOff } << 2;
}

void tst_UpsSim::scenarios()
{
    QFETCH(int, seconds);
    QFETCH(Contents, expected);
    QFETCH(int, endMode);
    Simulator simulator(1, 0);
    simulator.play(*scenario(QString::fromLatin1(QTest::currentDataTag())));
    run(simulator, seconds);
    QString all;
    QDebug(&all) << contents(simulator.model());
    QVERIFY2(isSubsequence(expected, contents(simulator.model())), qPrintable(all));
    QCOMPARE(int(simulator.model().measurement(4241)), endMode);
}

void tst_UpsSim::batteryFallsAndRecovers()
{
    Simulator simulator(1, 0);
    simulator.play(*scenario(QStringLiteral("mains-failure")));
    run(simulator, 6);
    double last = 101;
    for (int second = 7; second < 40; ++second) {
        run(simulator, 1);
        const double capacity = simulator.model().measurement(4117);
        QVERIFY(capacity < last);
        last = capacity;
        QCOMPARE(int(simulator.model().measurement(4101)), 4); // discharge
        QVERIFY(simulator.model().measurement(4106) < 0);
        QVERIFY(simulator.model().measurement(4133) < 1);
        QVERIFY(simulator.model().measurement(4164) > 220);
    }
    run(simulator, 5);
    QVERIFY(simulator.model().measurement(4117) > last);
    QCOMPARE(int(simulator.model().measurement(4218)), 1);
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
    row("maintenance", "", BatteryMaintenance, true, 6, 2);
    row("test on battery", "mains off", BatteryTest, false, 5, 2);
    row("test without battery", "battery off", BatteryTest, false, 4, 2);
    row("test during maintenance", "command 2", BatteryTest, false, 6, 2);
    row("cancel", "command 0", CancelTest, true, 4, 2);
    row("shut down", "", ShutDown, true, 2, 0);
    row("start up", "command 4", StartUp, true, 4, 2);
    row("start up, emergency off", "epo on", StartUp, false, 7, 0);
    row("start up, nothing to run on", "command 4;mains off;battery off", StartUp, false, 10, 0);
    row("shut down to bypass", "", ShutDownToBypass, true, 3, 1);
    row("inverter after that", "command 9", TransferToInverter, false, 3, 1);
    row("to bypass", "", TransferToBypass, true, 3, 1);
    row("to bypass without one", "bypass off", TransferToBypass, false, 4, 2);
    row("to bypass, forbidden", "setting 3040 0", TransferToBypass, false, 4, 2);
    row("to inverter", "command 10", TransferToInverter, true, 4, 2);
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
    row("all of a block", 4, 125, 120, {}, 0);
    row("past the measurements", 4, 125, 121, {}, 2);
    row("past the settings", 3, 0, 106, {}, 2);
    row("past the events", 2, 90, 7, {}, 2);
    row("highest address", 4, 65535, 125, {}, 2);
    row("nothing", 4, 0, 0, {}, 3);
    row("too much", 4, 0, 126, {}, 3);
    row("coils", 1, 0, 8, {}, 1);
    row("history header", 4, historyHeader, 2, {}, 0);
    row("history past its end", 4, historyBase, 15, {}, 2);
    row("setting", 6, 5, 1, { 18 }, 0);
    row("setting out of range", 6, 5, 1, { 25 }, 3);
    row("no setting there", 6, 16, 1, { 1 }, 3);
    row("one of several out of range", 16, 4, 2, { 20, 25 }, 3);
    row("fewer values than announced", 16, 4, 3, { 20, 18 }, 3);
    row("command", 6, commandRegister, 1, { BuzzerOff }, 0);
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

void tst_UpsSim::registersCarryWhatTheModelSays()
{
    Simulator simulator(1, 0);
    QString error;
    QVERIFY(perform(simulator, "setting 3003 -7", &error));
    QVERIFY(perform(simulator, "battery off", &error));
    run(simulator, 0.1);
    const auto input = [&](int id) {
        simulator.registers().handle(request(4, id - firstMeasurement, 1));
        return simulator.registers().mapping()->tab_input_registers[id - firstMeasurement];
    };
    QCOMPARE(simulator.registers().handle(request(3, 0, settingCount)), 0);
    QCOMPARE(simulator.registers().mapping()->tab_registers[3], quint16(-7));
    QCOMPARE(int(input(4107)), 0x7FFF); // no battery, no temperature
    QCOMPARE(int(input(4050)), 0xFFFF); // a gap
    QCOMPARE(int(input(4016)), int('K'));
    QVERIFY(input(4164) > 2220 && input(4164) < 2240);
}

void tst_UpsSim::badActions_data()
{
    QTest::addColumn<QString>("reason");
    QTest::newRow("mains") << QStringLiteral("unknown action");
    QTest::newRow("mains sideways") << QStringLiteral("unknown action");
    QTest::newRow("load") << QStringLiteral("expected \"load PERCENT\"");
    QTest::newRow("load 10 20") << QStringLiteral("expected");
    QTest::newRow("load nan") << QStringLiteral("not a number from 0 to 200");
    QTest::newRow("set flag 96 1") << QStringLiteral("from 0 to 95");
    QTest::newRow("line late") << QStringLiteral("MILLISECONDS");
    QTest::newRow("scenario nowhere") << QStringLiteral("unknown scenario");
    QTest::newRow("setting 3005 25") << QStringLiteral("not allowed");
    QTest::newRow("setting 3016 1") << QStringLiteral("not allowed");
    QTest::newRow("command 11") << QString(); // what is possible is done
}

void tst_UpsSim::badActions()
{
    QFETCH(QString, reason);
    Simulator simulator(1, 0);
    QString error;
    QCOMPARE(perform(simulator, QTest::currentDataTag(), &error), reason.isEmpty());
    QVERIFY2(error.contains(reason), qPrintable(error));
}

void tst_UpsSim::badScripts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("place");
    QTest::newRow("no time") << QStringLiteral("# a script\n\nmains off")
                             << QStringLiteral("line 3");
    QTest::newRow("time alone") << QStringLiteral("5\n") << QStringLiteral("line 1");
    QTest::newRow("back in time") << QStringLiteral("5 mains off\n4 mains on")
                                  << QStringLiteral("line 2");
    QTest::newRow("not a time") << QStringLiteral("nan mains off") << QStringLiteral("line 1");
    QTest::newRow("bad action") << QStringLiteral("0 load 10\n1 load x")
                                << QStringLiteral("line 2: \"x\"");
    QTest::newRow("binary") << QString::fromLatin1("\x7f\x45LF\x01\x02\n\n")
                            << QStringLiteral("line 1");
}

void tst_UpsSim::badScripts()
{
    QFETCH(QString, text);
    QFETCH(QString, place);
    QString error;
    QVERIFY(!parseScript(text, &error));
    QVERIFY2(error.startsWith(place), qPrintable(error));
}

void tst_UpsSim::faultsAreCounted()
{
    LineFaults faults(1);
    faults.set({ Fault::Late, 1500 }, 2);
    QCOMPARE(faults.next().fault, Fault::Late);
    QCOMPARE(faults.next().parameter, 1500);
    QCOMPARE(faults.next().fault, Fault::None);
    faults.setFlakyRate(0.2);
    int bad = 0;
    for (int i = 0; i < 1000; ++i)
        bad += faults.next().fault != Fault::None;
    QVERIFY2(bad > 150 && bad < 250, qPrintable(QString::number(bad)));
}

QTEST_APPLESS_MAIN(tst_UpsSim)
#include "tst_upssim.moc"
