#include "guardedtest.h"
#include "report/latestvalues.h"

#include <deque>
#include <random>

/** What a host gets to see of the values that a driver delivers. */
class tst_LatestValues : public GuardedTest
{
    Q_OBJECT

private slots:
    // Drivers and hosts at random, beside plain maps: any order, some or all values, new identifiers
    // at any time; hosts keep no report, one or several, and remove what they like from the
    // information.
    void agreesWithPlainMaps_data()
    {
        QTest::addColumn<int>("identifiers");
        QTest::addColumn<int>("kept");
        QTest::newRow("few, none kept") << 5 << 0;
        QTest::newRow("few, the last kept") << 5 << 1;
        QTest::newRow("many, none kept") << 400 << 0;
        QTest::newRow("many, the last kept") << 400 << 1;
        QTest::newRow("many, three kept") << 400 << 3;
    }

    void agreesWithPlainMaps()
    {
        QFETCH(int, identifiers);
        QFETCH(int, kept);
        std::mt19937 dice(1);
        LatestValues values;
        DataReport expected;
        QVariantMap information;
        std::deque<std::pair<DataReport, DataReport>> reports; // as given, and as expected
        for (int cycle = 0; cycle < 200; ++cycle) {
            deliver(values, expected, identifiers, dice);
            reports.emplace_back(values.report(), expected);
            if (dice() % 8 == 0)
                information.remove(QString::number(-3 + int(dice() % 9000)));
            values.writeTo(information);
            for (const auto &report : reports)
                QCOMPARE(report.first, report.second);
            for (auto value = expected.cbegin(); value != expected.cend(); ++value)
                QCOMPARE(information.value(QString::number(value.key())), value.value());
            QCOMPARE(information.size(), expected.size());
            while (int(reports.size()) > (dice() % 16 == 0 ? 0 : kept))
                reports.pop_front();
        }
    }

private:
    // A pass over all identifiers, or single ones; some beyond those that have a shared text.
    static void deliver(LatestValues &values, DataReport &expected, int identifiers,
                        std::mt19937 &dice)
    {
        const bool isPass = dice() % 2 == 0;
        const int count = isPass ? identifiers : int(dice() % 5);
        for (int i = 0; i < count; ++i) {
            const int id = -3 + (isPass ? i : int(dice() % unsigned(identifiers))) * 9000 / 400;
            const float value = float(dice() % 3);
            values.store(id, value);
            expected.insert(id, value);
        }
    }
};

QTEST_GUILESS_MAIN(tst_LatestValues)
#include "tst_latestvalues.moc"
