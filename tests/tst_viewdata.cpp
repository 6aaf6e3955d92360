#include "columns.h"
#include "displaytext.h"
#include "familychecks.h"
#include "pages/eventrecord.h"

#include <QLocale>
#include <QtTest>

#include <limits>

class tst_ViewData : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German)); }

    void valueTexts_data()
    {
        using Values = QList<float>;
        // values: from identifier 100 on
        const Columns<int, Values, QString> row("type", "values", "expected");
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

    void unsoundTables()
    {
        static constexpr SpecialFlagRow flags[] = { { 96, 2010 } };
        static constexpr DataLogColumn untitled[] = { { 33, LogForm::Number, 1, 0, {} } };
        static constexpr DataLogColumn stateless[] = { { 0, LogForm::State, 1, 0, {} } };
        static constexpr CommandRow twice[] = { { 1, CommandForm::Empty, 0, "", {} },
                                                { 1, CommandForm::Coded, 7, "", {} } };
        static constexpr HistoryTextRow negative[] = { { -1, "x" } };
        static constexpr ParameterRow longNumber[] = {
            { "", 1, IntegerValue, 1, "", 1, 0, 0, {} }
        };
        static constexpr ParameterRow scaled[] = { { "", 1, IntegerValue, 0, "", 1, 0, 0, {} } };
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
        QVERIFY(!with([](Family &f) { f.pages.adjustConfig = longNumber; }));
        QVERIFY(!with([](Family &f) { f.pages.input = scaled; }));
        QVERIFY(with([](Family &f) { f.pages.adjustConfig = scaled; }));
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
