#include "guardedtest.h"
#include "view/energyline.h"
#include "view/energytables.h"

#include <algorithm>

namespace {

constexpr QRgb Ground = qRgb(240, 240, 245);
constexpr QRgb Live = qRgb(41, 71, 198);
constexpr QRgb Idle = qRgb(157, 172, 255);
constexpr QSize LeastSize(900, 460);
constexpr QPoint Centre(450, 230);

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
        count += image.pixel(Centre + p) == Idle;
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
        m_line->resize(LeastSize);
    }

    void flows()
    {
        const struct
        {
            DataReport report;
            QList<int> segments; // places in the list of lines
            const char *blocks;  // those that are dark
        } rows[] = { { ones({ 4217 }), { 0 }, "INPUT REC" },
                     { {}, {}, "" }, // stopped
                     { ones({ 4218, 4222 }), { 1, 2 }, "REC" },
                     { ones({ 4218, 4219 }), { 1, 3 }, "REC INV" },
                     { ones({ 4219, 4222, 4220, 4221 }), { 2, 3, 4, 7 }, "LOAD INV" },
                     { ones({ 4216, 4221 }), { 5, 6, 7 }, "BYPASS LOAD" },
                     { { { 4217, 2.0f } }, {}, "" } }; // only 1 counts
        const QList<QLine> lines { { -220, 0, -135, 0 },   { -50, 0, -4, 0 },
                                   { 0, 4, 0, 74 },        { 4, 0, 50, 0 },
                                   { 135, 0, 165, 0 },     { -220, -150, 170, -150 },
                                   { 175, -145, 175, -5 }, { 182, 0, 220, 0 } };
        for (const auto &row : rows) {
            m_line->flushData(row.report);
            const QImage image = shot();
            QList<int> seen;
            for (int i = 0; i < lines.size(); ++i) {
                const int percent = painted(image, lines.at(i));
                QVERIFY2(percent == 0 || (percent > 35 && percent < 95),
                         QByteArray::number(percent));
                if (percent > 0)
                    seen.append(i);
            }
            QCOMPARE(seen, row.segments);
            QStringList dark;
            for (const EnergyBlockRow &block : EnergyTables::blocks) {
                const QPoint corner(int(block.topLeft.x) + 3, int(block.topLeft.y) + 3);
                if (*block.title != '\0' && image.pixel(Centre + corner) == Live)
                    dark.append(block.title);
            }
            QCOMPARE(dark.join(' '), QString(row.blocks));
        }
        m_line->set_all_off_Flow();
        QCOMPARE(painted(shot(), lines.first()), 0);
    }

    void values()
    {
        const DataReport report { { 4132, 3.0f },   { 4133, 229.96f }, { 4134, 231.0f },
                                  { 4135, 230.0f }, { 4241, 12.0f },   { 4190, -1.0f } };
        const auto panels = energyState(report).panels;
        const auto text = [&panels](EnergyPanel panel, int line) {
            return panels.at(int(panel)).at(line).value;
        };
        QCOMPARE(text(EnergyPanel::Input, 0), QString("230.0/231.0/230.0 V"));
        QCOMPARE(text(EnergyPanel::Device, 4), QString("-")); // no such state
        QCOMPARE(text(EnergyPanel::Bypass, 3), QString("-"));
        QCOMPARE(text(EnergyPanel::Load, 0), QString("-")); // missing
    }

    void hits()
    {
        const struct
        {
            QPoint point; // relative to the centre
            QList<int> viewFlags;
        } rows[] = { { { -300, 0 }, { 0, -1 } }, // edges of the input
                     { { -225, 37 }, { 0, -1 } },   { { -224, 0 }, {} },
                     { { -250, -187 }, { 1, -1 } }, { { 300, -37 }, { 3, -1 } },
                     { { 25, 155 }, { 4, -1 } },    { { 55, 0 }, { 5, 2 } } };
        for (const auto &row : rows) {
            // The centre is rounded down.
            const EnergyBlockRow *block =
                blockAt(Centre + row.point, energyCentre(QSize(901, 461)));
            QList<int> flags;
            if (block)
                flags = { block->viewFlags[0], block->viewFlags[1] };
            QCOMPARE(flags, row.viewFlags);
        }
    }

    void clickTogglesThePanel()
    {
        const auto isEmpty = [this] { // where the values of rectifier and inverter are
            QImage empty(250, 90, QImage::Format_RGB32);
            empty.fill(Ground);
            return shot().copy(QRect(332, 92, 250, 90)).convertToFormat(empty.format()) == empty;
        };
        QVERIFY(!isEmpty());
        QTest::mouseClick(m_line.get(), Qt::LeftButton, {}, Centre - QPoint(100, 0));
        QVERIFY(isEmpty());
        QTest::mouseClick(m_line.get(), Qt::LeftButton, {}, Centre + QPoint(100, 0));
        QVERIFY(!isEmpty());
    }

    // With the widest values, no text leaves the diagram or touches a block, a flow or a text.
    void panelsKeepApart()
    {
        DataReport report = ones({ 4216, 4217, 4218, 4219, 4220, 4221, 4222 });
        for (const EnergyLineRow &row : EnergyTables::lines) {
            for (int i = 0; i < 3 && row.kind == EnergyLineKind::Measured; ++i)
                report.insert(row.dataId + i, 240.4f);
        }
        for (const int phases : { 4132, 4192, 4163 })
            report.insert(phases, 3.0f);
        report.insert(4101, 2.0f);
        report.insert(4241, 8.0f);
        const EnergyState state = energyState(report);
        const QFont font = energyFont();
        const QFontMetricsF metrics(font);
        EnergyViewFlags open {};
        open.fill(true);
        const EnergyScene scene = energyScene(state, open, font, energyCentre(LeastSize));

        QList<QRectF> taken { scene.battery.rect };
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
            QVERIFY2(QRectF(QPointF(), LeastSize).contains(area), text.text.toUtf8());
            for (const QRectF &other : qAsConst(taken))
                QVERIFY2(!area.intersects(other), text.text.toUtf8());
            taken.append(area);
        }
    }

    void hiddenCostsNothing()
    {
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
