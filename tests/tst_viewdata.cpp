#include "view/displaytext.h"
#include "view/eventrecord.h"
#include "view/tavo_6_20k_view.h"

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

    void valueTexts()
    {
        const struct
        {
            int type;
            QList<float> values; // from identifier 100 on
            const char *text;
        } rows[] = { { 0, { 1.6f }, "2V" },
                     { 0, { 1e20f }, "0V" },
                     { 0, { std::numeric_limits<float>::quiet_NaN() }, "0V" },
                     { 0, {}, "0V" },
                     { 1, { 2024, 1, 31 }, "2024/1/31V" },
                     { 4, { -12345.67f }, "-12345.7V" }, // no separator of thousands
                     { 5, { 1, 229.96f }, "1.0/230.0/0.0V" },
                     { 6, { 2.25f }, "2.25V" },
                     { 9, { 65, 66, 67, 68, 69 }, "ABCD" },
                     { 9, { 0, 65, 0, 66 }, "AB" },
                     { 9, { 32, 65, 32, 10 }, "A" },
                     { 9, { 0x7535, 0x6C60 }, "电池" },
                     { 9, { 65, 0x10000, 66 }, "A" }, // ends at a NUL
                     { 11, { 1 }, "alsoV" },          // first of equal options
                     { 11, { 7 }, "" },
                     { 8, { 1 }, "" } };
        for (const auto &row : rows) {
            ParameterInformation record;
            record.type = row.type;
            record.dataId = 100;
            record.length = 4;
            record.unit = "V";
            record.combo = { { "one", 1 }, { "also", 1 }, { "two", 2 } };
            DataReport report;
            for (int i = 0; i < row.values.size(); ++i)
                report.insert(100 + i, row.values.at(i));
            QCOMPARE(displayText(record, report), QString::fromUtf8(row.text));
        }
    }

    void rangesByBatteryType()
    {
        const tavo_6_20k_View data;
        const Records records = data.getBasicConfig();
        const auto rangesFor = [&records](float type) {
            applyBatteryType(records, { { 3045, type } });
            QStringList texts;
            for (const int id : { 3007, 3008, 3009, 3010, 3013 })
                texts.append(rangeText(*find(records, id)));
            return texts.join(' ');
        };
        const QString lithium = "3.3-4.15 3.3-4.15 2.6-2.8 2.65-2.85 1-3000";
        QCOMPARE(rangesFor(1), lithium);
        QCOMPARE(rangesFor(5), lithium); // an unknown type changes nothing
        QCOMPARE(rangesFor(0), QString("2.1-2.35 2.2-2.45 1.6-1.85 1.65-1.9 1-3000"));
        QCOMPARE(rangeText({}), QString("-"));
    }

    void recordOfEvents()
    {
        const QDateTime first(QDate(2024, 1, 31), QTime(23, 59, 59));
        EventRecord record;
        const auto after = [&record](const DataReport &report, const QDateTime &now) {
            record.update(report, 96, now);
            QList<int> present;
            for (const RecordedEvent &event : record.events())
                present.append(event.index);
            return present;
        };
        QCOMPARE(after({ { 2005, 1.0f }, { 2006, 2.0f }, { 2096, 1.0f } }, first),
                 QList<int> { 5 });
        QCOMPARE(after({ { 2005, 1.0f }, { 2000, 1.0f } }, first.addSecs(9)),
                 (QList<int> { 0, 5 }));
        QCOMPARE(record.events().at(1).since, first);
        QCOMPARE(after({ { 2000, 1.0f } }, first.addSecs(20)), QList<int> { 0 });
        QCOMPARE(after({ { 2000, 1.0f }, { 2005, 1.0f } }, first.addSecs(30)),
                 (QList<int> { 5, 0 }));
        QCOMPARE(record.events().at(0).since, first.addSecs(30));
    }
};

QTEST_GUILESS_MAIN(tst_ViewData)
#include "tst_viewdata.moc"
