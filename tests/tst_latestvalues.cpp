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
    // at any time; hosts keep no report, one or several, and remove or overwrite what they like of the
    // information.
    void agreesWithPlainMaps_data()
    {
        const Columns<int, int> row("identifiers", "kept");
        row("few, none kept", 5, 0);
        row("few, the last kept", 5, 1);
        row("many, none kept", 400, 0);
        row("many, the last kept", 400, 1);
        row("many, three kept", 400, 3);
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
            const QString touched = QString::number(anyId(identifiers, dice));
            if (dice() % 4 == 0)
                information.remove(touched);
            else if (expected.contains(touched.toInt()))
                information.insert(touched, "no number");
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
    // Some are beyond those that have a shared text.
    static int idAt(int place) { return -3 + place * 9000 / 400; }

    static int anyId(int identifiers, std::mt19937 &dice)
    {
        return idAt(int(dice() % unsigned(identifiers)));
    }

    // A pass over all identifiers or the first of them, or single ones.
    static void deliver(LatestValues &values, DataReport &expected, int identifiers,
                        std::mt19937 &dice)
    {
        const bool isPass = dice() % 2 == 0;
        const int count = int(dice() % unsigned(isPass ? identifiers + 1 : 5));
        for (int i = 0; i < count; ++i) {
            const int id = isPass ? idAt(i) : anyId(identifiers, dice);
            const float value = float(dice() % 3);
            values.store(id, value);
            expected.insert(id, value);
        }
    }
};

QTEST_GUILESS_MAIN(tst_LatestValues)
#include "tst_latestvalues.moc"
