#include "view/displaytext.h"
#include "view/eventrecord.h"
#include "view/tavo_6_20k_view.h"

#include <QLocale>
#include <QSet>
#include <QtTest>

#include <limits>

using Records = QList<ParameterInformation *>;

namespace {

QMap<QString, Records> allLists(const tavo_6_20k_View &data)
{
    return { { "device", data.getDeviceData() },    { "battery", data.getBatteryData() },
             { "rec/inv", data.getRecInvData() },   { "input", data.getInputData() },
             { "output", data.getOutputData() },    { "bypass", data.getBypassData() },
             { "basic", data.getBasicConfig() },    { "batteryConfig", data.getBatteryConfig() },
             { "adjust", data.getAdjustConfig() },  { "special", data.getSpecialConfig() },
             { "devInfo", data.getDevInfoConfig() } };
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
    void recordsFollowTheRules();
    void listsHaveTheirLengths();
    void optionsHaveProtocolValues_data();
    void optionsHaveProtocolValues();
    void alarmTexts();
    void valueTexts_data();
    void valueTexts();
    void ranges_data();
    void ranges();
    void rangesByBatteryType_data();
    void rangesByBatteryType();
    void combos();
    void recordOfEvents();
};

void tst_ViewData::recordsFollowTheRules()
{
    const tavo_6_20k_View data;
    const QSet<int> knownTypes { 0, 1, 4, 5, 6, 9, 11 };
    const auto lists = allLists(data);
    for (auto it = lists.begin(); it != lists.end(); ++it) {
        QSet<int> ids;
        for (const ParameterInformation *record : it.value()) {
            const QByteArray where = it.key().toUtf8() + ' ' + record->name.toUtf8();
            QVERIFY2(record->name.endsWith(':') && record->name.size() > 1, where);
            QVERIFY2(!ids.contains(record->dataId) && record->dataId >= 3000, where);
            ids.insert(record->dataId);
            QVERIFY2(knownTypes.contains(record->type), where);
            QVERIFY2((record->length > 0) == (record->type == TextValue), where);
            QVERIFY2(record->combo.isEmpty() == (record->type != OptionValue), where);
            QVERIFY2(record->min < record->max || !record->hasRange(), where);
            QVERIFY2(!record->hasRange() || (record->scale > 0 && record->combo.isEmpty()), where);
            QCOMPARE(record->value, QString("-"));
            QVERIFY2(record->text.isEmpty() && record->enabled == 1, where);
        }
    }
}

void tst_ViewData::listsHaveTheirLengths()
{
    const tavo_6_20k_View data;
    QMap<QString, int> lengths;
    const auto lists = allLists(data);
    for (auto it = lists.begin(); it != lists.end(); ++it)
        lengths.insert(it.key(), it.value().size());
    const QMap<QString, int> expected { { "device", 10 }, { "battery", 6 },        { "rec/inv", 5 },
                                        { "input", 4 },   { "output", 9 },         { "bypass", 5 },
                                        { "basic", 34 },  { "batteryConfig", 14 }, { "adjust", 19 },
                                        { "special", 0 }, { "devInfo", 6 } };
    QCOMPARE(lengths, expected);
    QCOMPARE(data.getDevCode(), 299);
}

void tst_ViewData::optionsHaveProtocolValues_data()
{
    using Combo = QMap<QString, int>;
    QTest::addColumn<int>("id");
    QTest::addColumn<Combo>("some");
    QTest::addColumn<int>("count");
    QTest::newRow("gaps between the values")
        << 3000 << Combo { { "Stand alone", 1 }, { "ECO", 4 }, { "Self ageing", 8 } } << 5;
    QTest::newRow("plain switch") << 3021 << Combo { { "Disable", 0 }, { "Enable", 1 } } << 2;
    QTest::newRow("inverted switch") << 3040 << Combo { { "Enable", 0 }, { "Disable", 1 } } << 2;
    QTest::newRow("number as text") << 3017 << Combo { { "100", 100 }, { "208", 208 } } << 9;
    QTest::newRow("cut to an integer")
        << 3011 << Combo { { "0.5", 0 }, { "1.0", 1 }, { "12.0", 12 } } << 13;
    QTest::newRow("odd order") << 3035 << Combo { { "-20", 0 }, { "-15", 2 }, { "-40", 4 } } << 5;
}

void tst_ViewData::optionsHaveProtocolValues()
{
    using Combo = QMap<QString, int>;
    QFETCH(int, id);
    QFETCH(Combo, some);
    QFETCH(int, count);
    const tavo_6_20k_View data;
    const ParameterInformation *record = find(data.getBasicConfig() + data.getAdjustConfig(), id);
    QVERIFY(record);
    QCOMPARE(record->combo.size(), count);
    for (auto it = some.begin(); it != some.end(); ++it)
        QCOMPARE(record->combo.value(it.key(), -1), it.value());
}

void tst_ViewData::alarmTexts()
{
    const tavo_6_20k_View data;
    const QList<QString> texts = data.getAlarmList();
    QCOMPARE(texts.size(), 96);
    QCOMPARE(texts.count("Physical address conflict"), 2);
    QVERIFY(!texts.contains(QString()));
    for (int k = 32; k < 48; ++k)
        QCOMPARE(texts.at(k), QString("Reserved %1").arg(k));
    // Kept as they stand: a trailing blank, a missing one, and the last.
    QCOMPARE(texts.at(14), QString("Abnormal synchronous signal "));
    QCOMPARE(texts.at(62), QString("Abnormal synchronous signal"));
    QCOMPARE(texts.at(95), QString("Frequent overload"));
}

void tst_ViewData::valueTexts_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("length");
    QTest::addColumn<QList<float>>("values"); // from identifier 100 on
    QTest::addColumn<QString>("text");
    const float nan = std::numeric_limits<float>::quiet_NaN();
    QTest::newRow("integer") << 0 << 0 << QList<float> { 42 } << "42V";
    QTest::newRow("integer is rounded") << 0 << 0 << QList<float> { 1.6f } << "2V";
    QTest::newRow("integer too large") << 0 << 0 << QList<float> { 1e20f } << "0V";
    QTest::newRow("integer not a number") << 0 << 0 << QList<float> { nan } << "0V";
    QTest::newRow("missing integer") << 0 << 0 << QList<float> {} << "0V";
    QTest::newRow("date") << 1 << 0 << QList<float> { 2024, 1, 31 } << "2024/1/31V";
    QTest::newRow("one decimal") << 4 << 0 << QList<float> { 229.96f } << "230.0V";
    QTest::newRow("no thousands") << 4 << 0 << QList<float> { -12345.6f } << "-12345.6V";
    QTest::newRow("missing decimal") << 4 << 0 << QList<float> {} << "0.0V";
    QTest::newRow("three phases") << 5 << 0 << QList<float> { 1, 2.27f } << "1.0/2.3/0.0V";
    QTest::newRow("two decimals") << 6 << 0 << QList<float> { 2.25f } << "2.25V";
    QTest::newRow("text") << 9 << 4 << QList<float> { 65, 66, 67, 68, 69 } << "ABCD";
    QTest::newRow("zeros are skipped") << 9 << 4 << QList<float> { 0, 65, 0, 66 } << "AB";
    QTest::newRow("text is trimmed") << 9 << 4 << QList<float> { 32, 65, 32, 10 } << "A";
    QTest::newRow("no text") << 9 << 4 << QList<float> { 0, 0, 0, 0 } << "";
    QTest::newRow("wide characters") << 9 << 2 << QList<float> { 0x7535, 0x6C60 } << "电池";
    QTest::newRow("ends at a NUL") << 9 << 3 << QList<float> { 65, 0x10000, 66 } << "A";
    QTest::newRow("option") << 11 << 0 << QList<float> { 2 } << "twoV";
    QTest::newRow("first of equal options") << 11 << 0 << QList<float> { 1 } << "alsoV";
    QTest::newRow("no such option") << 11 << 0 << QList<float> { 7 } << "";
    QTest::newRow("unused type") << 8 << 0 << QList<float> { 1 } << "";
}

void tst_ViewData::valueTexts()
{
    QFETCH(int, type);
    QFETCH(int, length);
    QFETCH(QList<float>, values);
    ParameterInformation record;
    record.type = type;
    record.dataId = 100;
    record.length = length;
    record.unit = "V";
    record.combo = { { "one", 1 }, { "also", 1 }, { "two", 2 } };
    DataReport report;
    for (int i = 0; i < values.size(); ++i)
        report.insert(100 + i, values.at(i));
    QTEST(displayText(record, report), "text");
}

void tst_ViewData::ranges_data()
{
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<float>("scale");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << 0 << 0 << 0.01f << "-";
    QTest::newRow("hundredths") << 210 << 235 << 0.01f << "2.1-2.35";
    QTest::newRow("tenths") << 500 << 700 << 0.1f << "50-70";
    QTest::newRow("whole") << 720 << 30000 << 1.0f << "720-30000";
    QTest::newRow("only an upper bound") << 0 << 10 << 1.0f << "0-10";
    QTest::newRow("scale 0") << 1 << 5 << 0.0f << "0-0";
}

void tst_ViewData::ranges()
{
    QFETCH(int, min);
    QFETCH(int, max);
    QFETCH(float, scale);
    ParameterInformation record;
    record.min = min;
    record.max = max;
    record.scale = scale;
    QTEST(rangeText(record), "text");
}

void tst_ViewData::rangesByBatteryType_data()
{
    QTest::addColumn<QList<float>>("types"); // reported one after the other
    QTest::addColumn<QStringList>("texts");
    const QStringList vrla { "2.1-2.35", "2.2-2.45", "1.6-1.85", "1.65-1.9" };
    const QStringList lithium { "3.3-4.15", "3.3-4.15", "2.6-2.8", "2.65-2.85" };
    QTest::newRow("lithium") << QList<float> { 1 } << lithium;
    QTest::newRow("back to lead") << QList<float> { 1, 0 } << vrla;
    QTest::newRow("unknown type keeps the range") << QList<float> { 1, 5 } << lithium;
}

void tst_ViewData::rangesByBatteryType()
{
    QFETCH(QList<float>, types);
    const tavo_6_20k_View data;
    const Records records = data.getBasicConfig();
    const QString other = rangeText(*find(records, 3013));
    for (const float type : types)
        applyBatteryType(records, { { 3045, type } });
    QStringList texts;
    for (const int id : { 3007, 3008, 3009, 3010 })
        texts.append(rangeText(*find(records, id)));
    QTEST(texts, "texts");
    QCOMPARE(rangeText(*find(records, 3013)), other);
}

void tst_ViewData::combos()
{
    ParameterInformation record;
    record.addCombo({ "a", "b", "a" });
    QCOMPARE(record.combo, (QMap<QString, int> { { "a", 2 }, { "b", 1 } }));
    record.combo.clear();
    record.addCombo({ "a", "b" }, {});
    QVERIFY(record.combo.isEmpty());
    record.addCombo({ "a", "b", "c" }, { 0.5f, -1.9f });
    QCOMPARE(record.combo, (QMap<QString, int> { { "a", 0 }, { "b", -1 } }));
}

void tst_ViewData::recordOfEvents()
{
    const QDateTime first(QDate(2024, 1, 31), QTime(23, 59, 59));
    EventRecord record;
    const auto present = [&record] {
        QList<int> result;
        for (const RecordedEvent &event : record.events())
            result.append(event.index);
        return result;
    };
    record.update({ { 2005, 1.0f }, { 2006, 2.0f }, { 2096, 1.0f } }, 96, first);
    QCOMPARE(present(), QList<int> { 5 });
    record.update({ { 2005, 1.0f }, { 2000, 1.0f } }, 96, first.addSecs(10));
    QCOMPARE(present(), (QList<int> { 0, 5 }));
    QCOMPARE(record.events().at(1).since, first);
    record.update({ { 2000, 1.0f } }, 96, first.addSecs(20));
    record.update({ { 2000, 1.0f }, { 2005, 1.0f } }, 96, first.addSecs(30));
    QCOMPARE(present(), (QList<int> { 5, 0 }));
    QCOMPARE(record.events().at(0).since, first.addSecs(30));
}

QTEST_GUILESS_MAIN(tst_ViewData)
#include "tst_viewdata.moc"
