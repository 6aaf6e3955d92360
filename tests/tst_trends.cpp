// The courses of values: what is kept, where it is drawn, and that a hidden panel does nothing.

#include "guardedtest.h"
#include "trends/trendpanel.h"

#include <QMouseEvent>
#include <QToolButton>

#include <cmath>

namespace {

constexpr int last = TrendBuffer::stepCount - 1;
constexpr int loadTrend = 0;
constexpr int inputTrend = 3;

DataReport report(float load, int mode = 4)
{
    return { { 4176, load },   { 4241, float(mode) }, { 4132, 3.0f },   { 4133, 229.0f },
             { 4134, 231.0f }, { 4135, 230.0f },      { 3095, 264.0f }, { 3096, 176.0f } };
}

} // namespace

class tst_Trends : public GuardedTest
{
    Q_OBJECT

private slots:
    void init()
    {
        GuardedTest::init();
        m_store = std::make_unique<TrendStore>(deviceFamily());
    }

    // 50 %, then 70 % and 60 % in the step of 2 s after the next, then nothing.
    void stepsKeepLeastAndMost()
    {
        QVERIFY(!m_store->latest());
        m_store->take(report(50), 1000);
        m_store->take(report(70), 4100);
        m_store->take(report(60), 4900);
        QVERIFY(range(last).least == 50 && range(last).most == 70); // 50 held until 70 came
        QVERIFY(range(last - 1).least == 50 && range(last - 1).most == 50);
        QVERIFY(range(last - 2).most == 50 && !range(last - 3).isKnown());
        // All three phases count.
        const TrendRange input = minutes().range(inputTrend, last);
        QVERIFY(input.least == 229 && input.most == 231);
        // Ten minutes and more later nothing of it is left there, but in the longer ones.
        m_store->take(report(10), 700 * 1000);
        QVERIFY(range(last).most == 10 && !range(last - 1).isKnown() && !range(0).isKnown());
        QCOMPARE(m_store->buffer(TrendSpan::Hour).range(loadTrend, last - 58).most, 70.0f);
    }

    void whatIsNotKnownIsAGap()
    {
        const TrendScene empty = trendScene(*m_store, TrendSpan::TenMinutes, area(), 15);
        QVERIFY(!empty.plots[inputTrend].axis.isKnown);
        m_store->take(report(50), 0);
        m_store->loseSight(10000);
        QVERIFY(!m_store->latest());
        m_store->take(report(50, 5), 20000);
        for (int back = 0; back <= 10; ++back)
            QCOMPARE(range(last - back).isKnown(), back == 0 || back == 10);
        QCOMPARE(minutes().ground(last), TrendGround::Battery);
        QCOMPARE(minutes().ground(last - 5), TrendGround::Unknown);
        QCOMPARE(minutes().ground(last - 10), TrendGround::Mains);
        m_store->take(report(50), 80001); // a minute is too long to be sure
        QVERIFY(!range(last - 5).isKnown());
        m_store->take(report(NAN), 82000);
        QVERIFY(!range(last).isKnown() || range(last).most == 50);
        // Two gaps: three shapes, none of which bridges one.
        const TrendScene scene = trendScene(*m_store, TrendSpan::TenMinutes, area(), 15);
        QCOMPARE(scene.plots[loadTrend].runs.size(), 3);
        QCOMPARE(scene.stretches.size(), 6); // unknown before and between
    }

    void eventsAreTicks()
    {
        m_store->take(report(50), 0);
        m_store->mark(82);
        m_store->mark(59); // worse
        m_store->mark(71);
        m_store->take(report(50), 4000);
        const TrendScene scene = trendScene(*m_store, TrendSpan::TenMinutes, area(), 15);
        QCOMPARE(scene.ticks.size(), 1);
        QCOMPARE(scene.ticks.first().severity, EventSeverity::Critical);
        const TrendPlot &plot = scene.plots.last();
        const QPointF tick(plot.frame.left() + scene.ticks.first().x, plot.frame.center().y());
        QCOMPARE(minutes().event(stepAt(scene, tick)), 59);
        QCOMPARE(stepAt(scene, { -1, 5 }), -1);
    }

    void plotsFitTheirArea_data()
    {
        const Columns<QSizeF, bool> row("size", "isRow");
        row("beside the diagram", QSizeF(276, 400), false);
        row("below the cards", QSizeF(900, 118), true);
        row("large page", QSizeF(1860, 500), true);
    }

    void plotsFitTheirArea()
    {
        QFETCH(QSizeF, size);
        QFETCH(bool, isRow);
        m_store->take(report(50), 0);
        m_store->take(report(120), 2000);
        const QRectF whole(QPointF(10, 20), size);
        QVERIFY(trendHeight(5, int(size.width()), 15) <= size.height());
        const TrendScene scene = trendScene(*m_store, TrendSpan::Hour, whole, 15);
        QCOMPARE(scene.isRow, isRow);
        QList<QRectF> taken;
        for (int i = 0; i < scene.plots.size(); ++i) {
            const TrendPlot &plot = scene.plots[i];
            QVERIFY(plot.frame.height() >= leastPlotHeight);
            for (const QRectF &place : { plot.heading, plot.frame }) {
                QVERIFY(whole.adjusted(-0.01, -0.01, 0.01, 0.01).contains(place));
                for (const QRectF &other : qAsConst(taken))
                    QVERIFY(!other.adjusted(0.01, 0.01, -0.01, -0.01).intersects(place));
                taken.append(place);
            }
            for (const QPolygonF &run : plot.runs) {
                QVERIFY(plot.frame.contains(run.first()) && plot.frame.contains(run.last()));
                QVERIFY(run.boundingRect().top() > plot.frame.top() + 8); // no mark covers it
            }
        }
        QVERIFY(scene.timeLine(scene.plots.size() - 1).bottom() <= whole.bottom() + 0.01);
        QVERIFY(scene.plots[loadTrend].axis.most >= 120); // more than its row asks for
        // The limits of the settings: above the upper, below the lower.
        const TrendPlot &input = scene.plots[inputTrend];
        QVERIFY(input.axis.least < 176 && input.axis.most > 264);
        QCOMPARE(input.outside.size(), 2);
        QVERIFY(input.outside[0].bottom() < input.runs[0].boundingRect().top());
        QVERIFY(input.outside[1].top() > input.runs[0].boundingRect().bottom());
    }

    void panel()
    {
        TrendPanel panel(*m_store);
        panel.resize(1000, panel.heightForWidth(1000));
        m_store->take(report(50), 0);
        const QList<QToolButton *> buttons = panel.findChildren<QToolButton *>();
        panel.refresh();
        QVERIFY(panel.findChildren<QTimer *>().isEmpty());
        panel.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel));
        const QImage before = panel.grab().toImage();
        QVERIFY(countBlue(before) < before.width() / 10); // a curve, no area
        m_store->take(report(90, 5), 30000);
        panel.refresh(); // too soon
        QCOMPARE(panel.span(), TrendSpan::TenMinutes);
        buttons.at(1)->click();
        QCOMPARE(panel.span(), TrendSpan::Hour);
        QVERIFY(panel.grab().toImage() != before);
        const QImage apart = panel.grab().toImage();
        QMouseEvent move(QEvent::MouseMove, QPointF(500, panel.height() - 40), Qt::NoButton, {},
                         {});
        QApplication::sendEvent(&panel, &move);
        QVERIFY(panel.grab().toImage() != apart); // the value under the cursor
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&panel, &leave);
        QVERIFY(panel.grab().toImage() == apart);
        // Without a mouse: the newest step at once, from there to the begin and back.
        panel.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&panel));
        panel.setSpan(TrendSpan::TenMinutes);
        panel.setFocus(Qt::TabFocusReason);
        QVERIFY(panel.accessibleDescription().contains(QString::fromUtf8("Load 50.0\u201390.0 %")));
        const auto after = [&panel](Qt::Key key) {
            QTest::keyClick(&panel, key);
            return panel.accessibleDescription().section(", ", 1, 1);
        };
        QCOMPARE(after(Qt::Key_Left), QString("Load 50.0 %"));
        QCOMPARE(after(Qt::Key_Home), QString::fromUtf8("Load \u2013"));
        QCOMPARE(after(Qt::Key_End), QString::fromUtf8("Load 50.0\u201390.0 %"));
        QCOMPARE(after(Qt::Key_Right), QString::fromUtf8("Load 50.0\u201390.0 %"));
        buttons.at(0)->setFocus();
        QVERIFY(panel.accessibleDescription().isEmpty());
    }

private:
    static int countBlue(const QImage &image)
    {
        int count = 0;
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, image.height() / 2);
            count += color.blue() > 190 && color.red() < 60;
        }
        return count;
    }

    static QRectF area() { return { 0, 0, 900, 118 }; }
    const TrendBuffer &minutes() const { return m_store->buffer(TrendSpan::TenMinutes); }
    TrendRange range(int step) const { return minutes().range(loadTrend, step); }

    std::unique_ptr<TrendStore> m_store;
};

QTEST_MAIN(tst_Trends)
#include "tst_trends.moc"
