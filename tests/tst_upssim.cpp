// The simulated UPS by itself: its behaviour in time, its scripts and its doors for tests.

#include "guardedtest.h"
#include "simulator.h"

using namespace registermap;
using namespace upssim;

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

bool act(Simulator &simulator, const QString &action)
{
    const auto understood = parseAction(action);
    return understood && simulator.perform(*understood);
}

// What reads of all areas see, by identifier.
QMap<int, int> registers(Simulator &simulator)
{
    QMap<int, int> all;
    const modbus_mapping_t &mapping = *simulator.registers().mapping();
    for (const Block &block : blocks) {
        if (simulator.registers().handle({ block.function, block.address, block.count, {} }) != 0)
            return {};
        for (int i = 0; i < block.count; ++i) {
            const int at = block.address + i;
            all[block.firstId + i] = block.function == 2 ? mapping.tab_input_bits[at]
                : block.function == 3                    ? mapping.tab_registers[at]
                                                         : mapping.tab_input_registers[at];
        }
    }
    return all;
}

} // namespace

class tst_UpsSim : public GuardedTest
{
    Q_OBJECT

private slots:
    void scenarios_data()
    {
        using namespace upscontent;
        using namespace upsevent;
        // mode: at the end
        const Columns<int, int, Contents> row("seconds", "mode", "expected");

        // clang-format off
        row("normal", 60, 4, Contents { Started, OutputFromInverter });
        row("mains-failure", 60, 4, Contents {
            appeared(AbnormalInput), InputFromBattery, appeared(BatteryLow), over(BatteryLow), over(AbnormalInput), InputFromMains });
        row("battery-discharge", 90, 4, Contents {
            appeared(BatteryLow), appeared(EndOfDischarge), OutputOff, over(EndOfDischarge), InputFromMains, OutputFromInverter });
        row("overload", 40, 4, Contents {
            appeared(OverloadAlarm), appeared(Overload), OutputFromBypass, over(OverloadAlarm), FaultCleared, OutputFromInverter });
        row("bypass", 20, 3, Contents { ManualBypass, OutputFromBypass });
        row("fan-fault", 90, 4, Contents {
            appeared(FanFault), appeared(OverTemperature), OutputFromBypass, over(FanFault), FaultCleared, OutputFromInverter });
        row("stopped", 10, 2, Contents { ManualShutDown, OutputOff });
        // clang-format on
    }

    void scenarios()
    {
        QFETCH(int, seconds);
        QFETCH(Contents, expected);
        Simulator simulator(1, 0);
        simulator.play(*scenario(QString::fromLatin1(QTest::currentDataTag())));
        run(simulator, seconds);
        Contents all;
        for (const HistoryRecord &record : simulator.model().history())
            all.append(record.status ? record.content : -record.content);
        QVERIFY2(isSubsequence(expected, all), QTest::toString(all));
        QTEST(int(simulator.model().measurement(4241)), "mode");
    }

    void batteryTestTakesTwentySeconds()
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

    void badScripts()
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
            const QString error = parseScript(QString::fromLatin1(row.script)).error();
            QVERIFY2(error.contains(QLatin1String(row.reason)), qPrintable(error));
        }
    }

    // Every register of every area shows what a test wants it to show, and then its own again.
    void registersCanBeForced()
    {
        Simulator simulator(1, 0);
        Simulator twin(1, 0);
        const QMap<int, int> own = registers(twin);
        QCOMPARE(own.size(), eventCount + settingCount + measurementCount);
        QMap<int, int> forced;
        for (const int id : own.keys()) {
            const int raw = id < firstSetting ? 1 - own[id] : 65535 - id;
            forced[id] = raw;
            QVERIFY(act(simulator, QStringLiteral("register %1 %2").arg(id).arg(raw)));
        }
        run(simulator, 0.1);
        run(twin, 0.1);
        QCOMPARE(registers(simulator), forced);
        QVERIFY(!act(simulator, QStringLiteral("register 3105 1")));

        // What a client writes is what it reads.
        for (Simulator *each : { &simulator, &twin })
            QCOMPARE(each->registers().handle({ 6, 5, 1, { 18 } }), 0);
        QCOMPARE(registers(simulator)[3005], 18);
        QVERIFY(act(simulator, QStringLiteral("registers free")));
        QCOMPARE(registers(simulator), registers(twin));
    }
};

QTEST_APPLESS_MAIN(tst_UpsSim)
#include "tst_upssim.moc"
