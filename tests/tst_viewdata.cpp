#include "displaytext.h"
#include "familychecks.h"
#include "pages/eventrecord.h"
#include "tavo_6_20k_view.h"

#include <QLocale>
#include <QSet>
#include <QtTest>

#include <limits>

using Records = QList<ParameterInformation *>;

namespace {

QList<Records> allLists(const tavo_6_20k_View &data)
{
    return { data.getDeviceData(),    data.getBatteryData(),   data.getRecInvData(),
             data.getInputData(),     data.getOutputData(),    data.getBypassData(),
             data.getBasicConfig(),   data.getBatteryConfig(), data.getAdjustConfig(),
             data.getSpecialConfig(), data.getDevInfoConfig() };
}

const ParameterInformation *find(const Records &records, int id)
{
    const auto it = std::find_if(records.begin(), records.end(),
                                 [id](const ParameterInformation *r) { return r->dataId == id; });
    return it == records.end() ? nullptr : *it;
}

} // namespace

class tst_ViewData : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German)); }

    void recordsFollowTheRules()
    {
        const tavo_6_20k_View data;
        QList<int> lengths;
        for (const Records &list : allLists(data)) {
            lengths.append(list.size());
            QSet<int> ids;
            for (const ParameterInformation *record : list) {
                const QByteArray where = record->name.toUtf8();
                QVERIFY2(record->name.endsWith(':') && record->value == "-", where);
                QVERIFY2(!ids.contains(record->dataId) && record->dataId >= 3000, where);
                ids.insert(record->dataId);
                QVERIFY2((QSet<int> { 0, 1, 4, 5, 6, 9, 11 }).contains(record->type), where);
                QVERIFY2((record->length > 0) == (record->type == TextValue), where);
                QVERIFY2(record->combo.isEmpty() == (record->type != OptionValue), where);
                QVERIFY2(!record->hasRange() || (record->min < record->max && record->scale > 0),
                         where);
            }
        }
        QCOMPARE(lengths, (QList<int> { 10, 6, 5, 4, 9, 5, 34, 14, 19, 0, 6 }));
        const QList<QString> alarms = data.getAlarmList();
        QCOMPARE(alarms.size(), 96);
        QCOMPARE(alarms.at(62) + ' ', alarms.at(14)); // the blank is part of the text
        QCOMPARE(alarms.at(95), QString("Frequent overload"));
    }

    void valueTexts_data()
    {
        using Values = QList<float>;
        QTest::addColumn<int>("type");
        QTest::addColumn<Values>("values"); // from identifier 100 on
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, int type, const Values &values, const char *text) {
            QTest::newRow(name) << type << values << QString::fromUtf8(text);
        };
        const float nan = std::numeric_limits<float>::quiet_NaN();
        row("integer, rounded", IntegerValue, { 1.6f }, "2V");
        row("integer, far off", IntegerValue, { 1e20f }, "0V");
        row("integer, no number", IntegerValue, { nan }, "0V");
        row("integer, missing", IntegerValue, {}, "0V");
        row("date", DateValue, { 2024, 1, 31 }, "2024/1/31V");
        row("no separator of thousands", OneDecimal, { -12345.67f }, "-12345.7V");
        row("phase missing", ThreePhases, { 1, 229.96f }, "1.0/230.0/0.0V");
        row("two decimals", TwoDecimals, { 2.25f }, "2.25V");
        row("text, cut to its length", TextValue, { 65, 66, 67, 68, 69 }, "ABCD");
        row("text, zeros skipped", TextValue, { 0, 65, 0, 66 }, "AB");
        row("text, trimmed", TextValue, { 32, 65, 32, 10 }, "A");
        row("text, two-byte codes", TextValue, { 0x7535, 0x6C60 }, "电池");
        row("text, from 128 on", TextValue, { 127, 128 }, "\x7f\xc2\x80");
        row("text, over at a NUL", TextValue, { 65, 0x10000, 66 }, "A");
        row("first of equal options", OptionValue, { 1 }, "alsoV");
        row("no such option", OptionValue, { 7 }, "");
        row("no such type", 8, { 1 }, "");
    }

    void valueTexts()
    {
        QFETCH(int, type);
        QFETCH(QList<float>, values);
        ParameterInformation record;
        record.type = type;
        record.dataId = 100;
        record.length = 4;
        record.unit = "V";
        record.combo = { { "one", 1 }, { "also", 1 }, { "two", 2 } };
        DataReport report;
        for (int i = 0; i < values.size(); ++i)
            report.insert(100 + i, values.at(i));
        const QString text = displayText(record, report);
        QTEST(text, "expected");
    }

    void rangesByBatteryType_data()
    {
        QTest::addColumn<QList<float>>("types"); // one after the other
        QTest::addColumn<QString>("expected");
        QTest::newRow("VRLA") << QList<float> { 0 } << "2.1-2.35";
        QTest::newRow("lithium") << QList<float> { 1 } << "3.3-4.15";
        QTest::newRow("unknown changes nothing") << QList<float> { 1, 5, -1 } << "3.3-4.15";
    }

    void rangesByBatteryType()
    {
        QFETCH(QList<float>, types);
        const tavo_6_20k_View data;
        const Records records = data.getBasicConfig();
        for (const float type : types)
            applyBatteryType(deviceFamily(), data, { { 3045, type } });
        const QString range = rangeText(*find(records, 3007));
        QTEST(range, "expected");
        QCOMPARE(rangeText(*find(records, 3013)), QString("1-3000"));
        QCOMPARE(rangeText({}), QString("-"));
    }

    void unsoundTables()
    {
        static constexpr SpecialFlagRow flags[] = { { 96, 2010 } };
        static constexpr DataLogColumn untitled[] = { { 33, LogForm::Number, 1, 0, {} } };
        static constexpr DataLogColumn stateless[] = { { 0, LogForm::State, 1, 0, {} } };
        static constexpr CommandRow twice[] = { { 1, CommandForm::Empty, 0, "", {} },
                                                { 1, CommandForm::Coded, 7, "", {} } };
        static constexpr HistoryTextRow negative[] = { { -1, "x" } };
        static constexpr FlowRow tooFewFlows[] = { { { 1, 2 }, 0, {} } };
        const auto with = [](const auto &change) {
            Family family = deviceFamily();
            change(family);
            return FamilyChecks::isSound(family);
        };
        QVERIFY(with([](Family &) {}));
        QVERIFY(!with([](Family &f) { f.specialFlags = flags; }));
        QVERIFY(!with([](Family &f) { f.dataLogColumns = untitled; }));
        QVERIFY(!with([](Family &f) { f.dataLogColumns = stateless; }));
        QVERIFY(!with([](Family &f) { f.commands = twice; }));
        QVERIFY(!with([](Family &f) { f.history.modes = negative; }));
        QVERIFY(!with([](Family &f) { f.diagram.flows = tooFewFlows; }));
        QVERIFY(!with([](Family &f) { f.diagram.panels = {}; }));
    }

    void recordOfEvents()
    {
        const QDateTime first(QDate(2024, 1, 31), QTime(23, 59, 59));
        EventRecord record;
        QMap<int, EventOnset> onsets;
        const auto after = [&](const DataReport &report, const QDateTime &now) {
            record.update(report, 96, onsets, now);
            QList<int> present;
            for (const RecordedEvent &event : record.events())
                present.append(event.index);
            return present;
        };
        QCOMPARE(after({ { 2005, 1.0f }, { 2006, 2.0f }, { 2096, 1.0f } }, first),
                 QList<int> { 5 });
        QCOMPARE(after({ { 2005, 1.0f }, { 2000, 1.0f } }, first.addSecs(9)),
                 (QList<int> { 0, 5 }));
        QCOMPARE(record.events().at(1).onset.since, first);
        QCOMPARE(after({ { 2000, 1.0f } }, first.addSecs(20)), QList<int> { 0 });
        QCOMPARE(after({ { 2000, 1.0f }, { 2005, 1.0f } }, first.addSecs(30)),
                 (QList<int> { 5, 0 }));
        QCOMPARE(record.events().at(0).onset.since, first.addSecs(30));
        // What the client knows counts, however late anybody looks.
        onsets = { { 7, { first, false } }, { 8, { first.addSecs(10), true } } };
        const DataReport late { { 2000, 1.0f }, { 2005, 1.0f }, { 2007, 1.0f }, { 2008, 1.0f } };
        QCOMPARE(after(late, first.addSecs(9000)), (QList<int> { 5, 8, 0, 7 }));
        QCOMPARE(record.events().at(1).onset.since, first.addSecs(10));
        QVERIFY(record.events().at(1).onset.isExact && !record.events().at(3).onset.isExact);
    }
};

QTEST_GUILESS_MAIN(tst_ViewData)
#include "tst_viewdata.moc"
