#include "diagram/energyline.h"
#include "guardedtest.h"

#include <QAbstractButton>
#include <QScreen>

#include <algorithm>
#include <random>

namespace {

constexpr QRgb ground = qRgb(240, 240, 245);
constexpr QRgb live = qRgb(41, 71, 198);
constexpr QRgb idle = qRgb(157, 172, 255);
constexpr QSize leastSize(900, 460);
constexpr QPoint centre(450, 230);

DataReport ones(const QList<int> &ids)
{
    DataReport report;
    for (const int id : ids)
        report.insert(id, 1.0f);
    return report;
}

// Share of a line that has the flow's colour, in percent; the line is relative to the centre.
int painted(const QImage &image, const QLine &line)
{
    int count = 0;
    const QPoint step(line.dx() != 0, line.dy() != 0);
    for (QPoint p = line.p1(); p != line.p2(); p += step)
        count += image.pixel(centre + p) == idle;
    return count * 100 / std::max(line.dx(), line.dy());
}

class PaintCounter : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }

    int count = 0;
};

} // namespace

class tst_Energyline : public GuardedTest
{
    Q_OBJECT

private slots:
    void init()
    {
        GuardedTest::init();
        m_line = std::make_unique<Energyline>();
        m_line->resize(leastSize);
    }

    void flows_data()
    {
        // segments: places in the list of lines; blocks: those that are dark
        const Columns<QList<int>, QList<int>, QString> row("ones", "segments", "blocks");
        using Ids = QList<int>;
        row("nothing flows", Ids {}, Ids {}, "");
        row("input to rectifier", Ids { 4217 }, Ids { 0 }, "INPUT REC");
        row("rectifier to battery", Ids { 4218, 4222 }, Ids { 1, 2 }, "REC");
        row("rectifier to inverter", Ids { 4218, 4219 }, Ids { 1, 3 }, "REC INV");
        row("battery to load", Ids { 4219, 4222, 4220, 4221 }, Ids { 2, 3, 4, 7 }, "LOAD INV");
        row("bypass to load", Ids { 4216, 4221 }, Ids { 5, 6, 7 }, "BYPASS LOAD");
        row("half a path", Ids { 4218, 4220, 4216 }, Ids {}, "");
    }

    void flows()
    {
        QFETCH(QList<int>, ones);
        QFETCH(QList<int>, segments);
        QFETCH(QString, blocks);
        const QList<QLine> lines { { -220, 0, -135, 0 },   { -50, 0, -4, 0 },
                                   { 0, 4, 0, 74 },        { 4, 0, 50, 0 },
                                   { 135, 0, 165, 0 },     { -220, -150, 170, -150 },
                                   { 175, -145, 175, -5 }, { 182, 0, 220, 0 } };
        m_line->flushData(::ones(ones));
        const QImage image = shot();
        QList<int> seen;
        for (int i = 0; i < lines.size(); ++i) {
            const int percent = painted(image, lines.at(i));
            QVERIFY2(percent == 0 || (percent > 35 && percent < 95), QByteArray::number(percent));
            if (percent > 0)
                seen.append(i);
        }
        QCOMPARE(seen, segments);
        QStringList dark;
        for (const DiagramBlockRow &block : deviceFamily().diagram.blocks) {
            const QPoint corner(int(block.topLeft.x) + 3, int(block.topLeft.y) + 3);
            if (*block.title != '\0' && image.pixel(centre + corner) == live)
                dark.append(block.title);
        }
        QCOMPARE(dark.join(' '), blocks);
        m_line->flushData({ { 4217, 2.0f } }); // only 1 says that it flows
        QCOMPARE(painted(shot(), lines.first()), 0);
        m_line->flushData(::ones(ones));
        m_line->set_all_off_Flow();
        QCOMPARE(painted(shot(), lines.value(segments.value(0))), 0);
    }

    // The rest is walked through; here is what no device says.
    void valuesThatAreNone()
    {
        const auto panels =
            energyState(deviceFamily(), { { 4241, 12.0f }, { 4190, -1.0f } }).panels;
        const auto text = [&panels](DiagramPanel panel, int line) {
            return panels.at(int(panel)).at(line).value;
        };
        QCOMPARE(text(DiagramPanel::Device, 4), QString("-")); // no such state
        QCOMPARE(text(DiagramPanel::Bypass, 3), QString("-"));
        QCOMPARE(text(DiagramPanel::Load, 0), QString("-")); // missing
        // An unknown charge does not look like an empty battery.
        const QRect battery(centre + QPoint(-25, 80), QSize(50, 75));
        const QImage unknown = shot().copy(battery);
        m_line->flushData({ { 4117, 0.0f } });
        QVERIFY(shot().copy(battery) != unknown);
    }

    // Where each block stands, relative to the centre; its edges count, the next point does not.
    void hits()
    {
        const QList<QRect> places {
            { -300, -37, 76, 75 }, { -300, -187, 76, 75 }, { 225, -37, 76, 75 },
            { -25, 80, 51, 76 },   { -130, -37, 76, 75 },  { 55, -37, 76, 75 },
        };
        const auto at = [](const QPoint &point) { // the centre is rounded down
            return blockAt(deviceFamily().diagram.blocks, centre + point,
                           energyCentre(QSize(901, 461)));
        };
        for (const QRect &place : places) {
            QVERIFY(at(place.topLeft()) && at(place.bottomRight()) == at(place.topLeft()));
            for (const QPoint &beside : { QPoint(1, 0), QPoint(0, 1) })
                QVERIFY(!at(place.topLeft() - beside) && !at(place.bottomRight() + beside));
        }
    }

    // With the widest values, no text leaves the diagram or touches a block, a flow or a text.
    void panelsKeepApart_data()
    {
        const Columns<bool> row("isLarge");
        row("small texts", false);
        row("large texts", true);
    }

    void panelsKeepApart()
    {
        QFETCH(bool, isLarge);
        const QSize size = isLarge ? largeEnergySize : leastEnergySize;
        DataReport report = ones({ 4216, 4217, 4218, 4219, 4220, 4221, 4222 });
        for (const DiagramLineRow &row : deviceFamily().diagram.lines) {
            for (int i = 0; i < 3 && row.kind == LineKind::Measured; ++i)
                report.insert(row.dataId + i, 240.4f);
        }
        for (const int phases : { 4132, 4192, 4163 })
            report.insert(phases, 3.0f);
        report.insert(4101, 2.0f);
        report.insert(4241, 8.0f);
        const EnergyState state = energyState(deviceFamily(), report);
        const EnergyLook look = energyLook(deviceFamily().diagram, isLarge);
        const QFontMetricsF metrics(look.font);
        EnergyViewFlags open {};
        open.fill(true);
        const EnergyScene scene =
            energyScene(deviceFamily().diagram, state, open, look, energyCentre(size));

        QList<QRectF> taken { scene.battery.rect, noteRect(energyCentre(size)) };
        for (const SceneBlock &block : scene.blocks)
            taken.append(block.rect);
        for (const QPolygonF &flow : scene.flows) {
            for (int i = 1; i < flow.size(); ++i)
                taken.append(
                    QRectF(flow[i - 1], flow[i]).normalized().adjusted(-2.5, -2.5, 2.5, 2.5));
        }
        for (const SceneText &text : scene.texts) {
            QRectF area = text.rect;
            area.setWidth(metrics.horizontalAdvance(text.text));
            QVERIFY2(area.width() <= text.rect.width(), text.text.toUtf8());
            if (text.role == TextRole::Value)
                area.moveRight(text.rect.right());
            QVERIFY2(QRectF(QPointF(), size).contains(area), text.text.toUtf8());
            for (const QRectF &other : qAsConst(taken))
                QVERIFY2(!area.intersects(other), text.text.toUtf8());
            taken.append(area);
        }
    }

    // By Tab and Space, and by a name that is read out.
    void blocksAreReachedByKeyboard()
    {
        m_line->show();
        m_line->setStale(false);
        QStringList names;
        for (auto *block : m_line->findChildren<QAbstractButton *>()) {
            names.append(block->accessibleName());
            QVERIFY(!block->accessibleDescription().isEmpty());
            QVERIFY(block->focusPolicy() == Qt::TabFocus && block->isChecked());
            const QImage before = shot();
            QTest::keyClick(block, Qt::Key_Space);
            QVERIFY(!block->isChecked() && shot() != before); // its panel is gone
            QTest::keyClick(block, Qt::Key_Return);
            QVERIFY(shot() == before);
            QTest::mouseClick(m_line.get(), Qt::LeftButton, {}, block->geometry().center());
            QVERIFY(!block->isChecked() && shot() != before);
            QTest::mouseClick(m_line.get(), Qt::LeftButton, {}, block->geometry().center());
        }
        QCOMPARE(names.join(' '), QString("INPUT BYPASS LOAD BATTERY REC INV"));
    }

    // Only what has changed is painted anew; what is seen then is what a new diagram paints.
    void changesAreSeenInWhole_data()
    {
        const Columns<QSize> row("size");
        row("small texts", leastSize);
        row("large texts", largeEnergySize);
    }

    void changesAreSeenInWhole()
    {
        QFETCH(QSize, size);
        std::mt19937 dice(1);
        m_line->resize(size);
        for (auto *block : m_line->findChildren<QAbstractButton *>())
            block->setFocusPolicy(Qt::NoFocus); // no frame around one of them
        m_line->show();
        m_line->findChild<QTimer *>()->stop(); // as the other's dashes stand
        DataReport report = ones({ 4217, 4218, 4219, 4220 });
        for (int turn = 0; turn < 60; ++turn) {
            const auto &rows = deviceFamily().diagram.lines;
            const DiagramLineRow &row = rows[dice() % rows.size()];
            report.insert(row.dataId, float(dice() % 3000) / 10);
            report.insert(row.phaseId, float(1 + dice() % 3));
            if (turn % 8 == 7)
                report.insert(4216 + int(dice() % 7), float(dice() % 2)); // a flow
            if (turn % 5 == 4)
                report.insert(4117, float(dice() % 101)); // the battery's charge
            m_line->flushData(report);
            Energyline other;
            other.resize(size);
            other.flushData(report);
            QVERIFY(shot() == other.grab().toImage());
            QTRY_VERIFY(m_line->screen()->grabWindow(m_line->winId()).toImage() == shot());
        }
    }

    // Dashes move on the screen and leave nothing behind.
    void dashesMove()
    {
        m_line->flushData(ones({ 4216, 4217, 4218, 4219, 4220, 4221, 4222 }));
        m_line->show();
        const auto screen = [this] {
            return m_line->screen()->grabWindow(m_line->winId()).toImage();
        };
        QTRY_VERIFY(screen() == shot());
        const QImage before = shot();
        QTRY_VERIFY(shot() != before);
        m_line->findChild<QTimer *>()->stop();
        QTRY_VERIFY(screen() == shot());
    }

    void hiddenCostsNothing()
    {
        QVERIFY(Energyline().findChild<QTimer *>()->isActive()); // until it sees that it is hidden
        const auto *timer = m_line->findChild<QTimer *>();
        QTRY_VERIFY(!timer->isActive()); // never shown
        PaintCounter counter;
        m_line->installEventFilter(&counter);
        m_line->show();
        QVERIFY(timer->isActive() && timer->interval() == 100);
        QTRY_VERIFY(counter.count > 0);
        QTest::qWait(50);
        const int idle = counter.count;
        QTest::qWait(350);
        QCOMPARE(counter.count, idle); // nothing flows
        m_line->flushData(ones({ 4217 }));
        QTRY_VERIFY(counter.count > idle + 2);
        m_line->hide();
        QVERIFY(!timer->isActive());
        m_line->show();
        QVERIFY(timer->isActive());
    }

private:
    QImage shot() { return m_line->grab().toImage(); }

    std::unique_ptr<Energyline> m_line;
};

QTEST_MAIN(tst_Energyline)
#include "tst_energyline.moc"
