#include "view/energyline.h"
#include "view/energytables.h"
#include "warningguard.h"

#include <QtTest>

#include <algorithm>

namespace {

constexpr QRgb Ground = qRgb(240, 240, 245);
constexpr QRgb Live = qRgb(41, 71, 198);
constexpr QRgb Idle = qRgb(157, 172, 255);
constexpr QSize LeastSize(900, 460);

DataReport ones(const QList<int> &ids)
{
    DataReport report;
    for (const int id : ids)
        report.insert(id, 1.0f);
    return report;
}

QString panelText(const EnergyState &state, EnergyPanel panel, const QString &label)
{
    for (const EnergyLine &line : state.panels[static_cast<std::size_t>(panel)]) {
        if (line.label == label)
            return line.value;
    }
    return "no such line";
}

class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QObject *watched) { watched->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }

    int count = 0;
};

} // namespace

class tst_Energyline : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void flows_data();
    void flows();
    void flowIsPainted_data();
    void flowIsPainted();
    void values_data();
    void values();
    void hits_data();
    void hits();
    void clickTogglesThePanel();
    void panelsKeepApart();
    void stoppedLooksStopped();
    void batteryFills();
    void hiddenCostsNothing();
    void images();

private:
    QImage shot() { return m_line->grab().toImage(); }

    std::unique_ptr<Energyline> m_line;
};

void tst_Energyline::init()
{
    m_line = std::make_unique<Energyline>();
    m_line->resize(LeastSize);
}

void tst_Energyline::flows_data()
{
    QTest::addColumn<DataReport>("report");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("nothing known") << DataReport() << QList<int> {};
    QTest::newRow("input") << ones({ 4217 }) << QList<int> { 0 };
    QTest::newRow("charging") << ones({ 4218, 4222 }) << QList<int> { 1 };
    QTest::newRow("no battery") << ones({ 4218 }) << QList<int> {};
    QTest::newRow("no battery, inverting") << ones({ 4218, 4219 }) << QList<int> { 3 };
    QTest::newRow("on battery") << ones({ 4219, 4222, 4220, 4221 }) << QList<int> { 2, 4 };
    QTest::newRow("on bypass") << ones({ 4216, 4221 }) << QList<int> { 5 };
    QTest::newRow("all") << ones({ 4216, 4217, 4218, 4219, 4220, 4221, 4222 })
                         << QList<int> { 0, 1, 2, 3, 4, 5 };
    QTest::newRow("only 1 counts") << DataReport { { 4217, 2.0f } } << QList<int> {};
}

void tst_Energyline::flows()
{
    QFETCH(DataReport, report);
    const EnergyFlows flags = energyFlows(report);
    QList<int> set;
    for (std::size_t i = 0; i < flags.size(); ++i) {
        if (flags[i])
            set.append(int(i));
    }
    QTEST(set, "expected");
}

void tst_Energyline::flowIsPainted_data()
{
    QTest::addColumn<DataReport>("report");
    QTest::addColumn<QList<QLine>>("segments"); // relative to the centre
    using Lines = QList<QLine>;
    QTest::newRow("input") << ones({ 4217 }) << Lines { { -220, 0, -135, 0 } };
    QTest::newRow("rectifier to battery")
        << ones({ 4218, 4222 }) << Lines { { -50, 0, -4, 0 }, { 0, 4, 0, 74 } };
    QTest::newRow("battery to inverter")
        << ones({ 4219, 4222 }) << Lines { { 0, 4, 0, 74 }, { 4, 0, 50, 0 } };
    QTest::newRow("rectifier to inverter") << ones({ 4218, 4219 }) << Lines { { -50, 0, 50, 0 } };
    QTest::newRow("inverter to load") << ones({ 4220, 4221 }) << Lines { { 135, 0, 220, 0 } };
    QTest::newRow("bypass") << ones({ 4216, 4221 })
                            << Lines { { -220, -150, 170, -150 },
                                       { 175, -145, 175, -5 },
                                       { 180, 0, 220, 0 } };
}

void tst_Energyline::flowIsPainted()
{
    QFETCH(DataReport, report);
    QFETCH(QList<QLine>, segments);
    const auto painted = [&](const QImage &image, const QLine &line) {
        int count = 0;
        const QPoint step(line.dx() == 0 ? 0 : 1, line.dy() == 0 ? 0 : 1);
        for (QPoint p = line.p1(); p != line.p2(); p += step)
            count += image.pixel(QPoint(450, 230) + p) == Idle;
        return count * 100 / std::max(line.dx(), line.dy());
    };
    const QImage before = shot();
    m_line->flushData(report);
    const QImage with = shot();
    for (const QLine &line : segments) {
        QCOMPARE(painted(before, line), 0);
        const int percent = painted(with, line);
        QVERIFY2(percent > 40 && percent < 95, QByteArray::number(percent)); // dashes
    }
    m_line->set_all_off_Flow();
    QCOMPARE(painted(shot(), segments.first()), 0);
}

void tst_Energyline::values_data()
{
    using Panel = EnergyPanel;
    QTest::addColumn<DataReport>("report");
    QTest::addColumn<int>("panel");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("text");
    const DataReport phases { { 4133, 229.96f }, { 4134, 231.0f }, { 4135, 230.0f } };
    DataReport three = phases;
    three.insert(4132, 3.0f);
    QTest::newRow("single") << phases << int(Panel::Input) << "Voltage:"
                            << "230.0 V";
    QTest::newRow("triple") << three << int(Panel::Input) << "Voltage:"
                            << "230.0/231.0/230.0 V";
    QTest::newRow("selector of another block") << three << int(Panel::Load) << "Voltage:"
                                               << "-";
    QTest::newRow("percent") << DataReport { { 4173, 55.0f } } << int(Panel::Load)
                             << "Load percentage:"
                             << "55.0 %";
    QTest::newRow("minutes") << DataReport { { 4103, 35.0f } } << int(Panel::Battery)
                             << "Remaining time:"
                             << "35 Min";
    QTest::newRow("days") << DataReport { { 4240, 12.0f } } << int(Panel::Device) << "Running time:"
                          << "12 days";
    QTest::newRow("state") << DataReport { { 4241, 8.0f } } << int(Panel::Device) << "Working mode:"
                           << "Freq. conversion";
    QTest::newRow("state above") << DataReport { { 4241, 12.0f } } << int(Panel::Device)
                                 << "Working mode:"
                                 << "-";
    QTest::newRow("state below") << DataReport { { 4190, -1.0f } } << int(Panel::Bypass)
                                 << "Status:"
                                 << "-";
    QTest::newRow("device text") << DataReport { { 4016, 75.0f }, { 4018, 88.0f } }
                                 << int(Panel::Device) << "Type:"
                                 << "KX";
    QTest::newRow("missing") << DataReport() << int(Panel::RecInv) << "INV current:"
                             << "-";
}

void tst_Energyline::values()
{
    QFETCH(DataReport, report);
    QFETCH(int, panel);
    QFETCH(QString, label);
    QTEST(panelText(energyState(report), EnergyPanel(panel), label), "text");
}

void tst_Energyline::hits_data()
{
    QTest::addColumn<QPoint>("point"); // relative to the centre
    QTest::addColumn<QList<int>>("viewFlags");
    QTest::newRow("input, left edge") << QPoint(-300, 0) << QList<int> { 0 };
    QTest::newRow("input, right edge") << QPoint(-225, 37) << QList<int> { 0 };
    QTest::newRow("right of the input") << QPoint(-224, 0) << QList<int> {};
    QTest::newRow("above the input") << QPoint(-250, -38) << QList<int> {};
    QTest::newRow("bypass") << QPoint(-250, -187) << QList<int> { 1 };
    QTest::newRow("load") << QPoint(300, -37) << QList<int> { 3 };
    QTest::newRow("battery, lower edge") << QPoint(25, 155) << QList<int> { 4 };
    QTest::newRow("below the battery") << QPoint(25, 156) << QList<int> {};
    QTest::newRow("rectifier") << QPoint(-55, 0) << QList<int> { 2, 5 };
    QTest::newRow("inverter") << QPoint(55, 0) << QList<int> { 2, 5 };
}

void tst_Energyline::hits()
{
    QFETCH(QPoint, point);
    QFETCH(QList<int>, viewFlags);
    // The centre is rounded down.
    const QPointF centre = energyCentre(QSize(901, 461));
    QCOMPARE(centre, QPointF(450, 230));
    const EnergyBlockRow *block = blockAt(QPoint(450, 230) + point, centre);
    QList<int> flags;
    for (int i = 0; block && i < 2; ++i) {
        if (block->viewFlags[i] >= 0)
            flags.append(block->viewFlags[i]);
    }
    std::sort(flags.begin(), flags.end());
    QCOMPARE(flags, viewFlags);
}

void tst_Energyline::clickTogglesThePanel()
{
    m_line->flushData({ { 4242, 2.0f } });
    const QRect recInv(330, 88, 200, 98);
    const auto hasText = [&] {
        const QImage panel = shot().copy(recInv);
        for (int y = 0; y < panel.height(); ++y) {
            for (int x = 0; x < panel.width(); ++x) {
                if (panel.pixel(x, y) != Ground)
                    return true;
            }
        }
        return false;
    };
    QVERIFY(hasText());
    QTest::mouseClick(m_line.get(), Qt::LeftButton, {}, QPoint(450 - 100, 230));
    QVERIFY(!hasText());
    QTest::mouseClick(m_line.get(), Qt::LeftButton, {}, QPoint(450 + 100, 230));
    QVERIFY(hasText());
}

// With the widest values, no text leaves the diagram or touches a block, a flow or a text.
void tst_Energyline::panelsKeepApart()
{
    DataReport report = ones({ 4216, 4217, 4218, 4219, 4220, 4221, 4222 });
    for (const EnergyLineRow &row : EnergyTables::lines) {
        for (int i = 0; i < 3 && row.kind == EnergyLineKind::Measured; ++i)
            report.insert(row.dataId + i, 240.4f);
    }
    for (const int selector : { 4132, 4192, 4163 })
        report.insert(selector, 3.0f);
    for (int i = 0; i < 16; ++i)
        report.insert(4000 + i, 'x');
    report.insert(4101, 2.0f);
    report.insert(4241, 8.0f);
    const EnergyState state = energyState(report);
    QFont font("Microsoft YaHei");
    font.setPixelSize(13);
    const QFontMetricsF metrics(font);
    LabelWidths widths {};
    for (std::size_t i = 0; i < widths.size(); ++i) {
        for (const EnergyLine &line : state.panels[i])
            widths[i] = std::max(widths[i], metrics.horizontalAdvance(line.label));
    }
    EnergyViewFlags open {};
    open.fill(true);
    const EnergyScene scene = energyScene(state, open, widths, energyCentre(LeastSize));

    QList<QPair<QString, QRectF>> areas;
    for (const SceneBlock &block : scene.blocks)
        areas.append({ block.row->title, block.rect });
    areas.append({ "battery", scene.battery.rect });
    const int fixedAreas = areas.size();
    for (const SceneText &text : scene.texts) {
        const double width = metrics.horizontalAdvance(text.text);
        QVERIFY2(width <= text.rect.width(), text.text.toUtf8());
        QRectF area = text.rect;
        area.setWidth(width);
        QVERIFY2(QRectF(QPointF(), LeastSize).contains(area), text.text.toUtf8());
        areas.append({ text.text, area });
    }
    for (int i = 0; i < areas.size(); ++i) {
        for (int k = std::max(i + 1, fixedAreas); k < areas.size(); ++k)
            QVERIFY2(!areas[i].second.intersects(areas[k].second),
                     (areas[i].first + " / " + areas[k].first).toUtf8());
    }
    for (const QPolygonF &flow : scene.flows) {
        for (int i = 1; i < flow.size(); ++i) {
            const QRectF line =
                QRectF(flow[i - 1], flow[i]).normalized().adjusted(-2.5, -2.5, 2.5, 2.5);
            for (int k = fixedAreas; k < areas.size(); ++k)
                QVERIFY2(!line.intersects(areas[k].second), areas[k].first.toUtf8());
        }
    }
}

void tst_Energyline::stoppedLooksStopped()
{
    // A corner of each square, away from its image.
    const QList<QPoint> squares {
        { -298, -35 }, { -298, -185 }, { -128, -35 }, { 57, -35 }, { 227, -35 }
    };
    const auto fills = [&] {
        QList<QRgb> colors;
        const QImage image = shot();
        for (const QPoint &corner : squares)
            colors.append(image.pixel(QPoint(450, 230) + corner));
        return colors;
    };
    m_line->flushData({});
    QCOMPARE(fills(), QList<QRgb>({ Idle, Idle, Idle, Idle, Idle }));
    m_line->flushData(ones({ 4219, 4222, 4220, 4221 }));
    QCOMPARE(fills(), QList<QRgb>({ Idle, Idle, Idle, Live, Live }));
    m_line->flushData(ones({ 4216, 4221 }));
    QCOMPARE(fills(), QList<QRgb>({ Idle, Live, Idle, Idle, Live }));
}

void tst_Energyline::batteryFills()
{
    const auto levelOf = [](float percent) {
        const EnergyState state = energyState({ { 4117, percent } });
        return energyScene(state, {}, {}, QPointF(450, 230)).batteryLevel;
    };
    const QRectF full = levelOf(100);
    QCOMPARE(levelOf(50).height(), full.height() / 2);
    QCOMPARE(levelOf(50).bottom(), full.bottom());
    QCOMPARE(levelOf(400).height(), full.height());
    QCOMPARE(levelOf(-5).height(), 0.0);
    QCOMPARE(levelOf(std::numeric_limits<float>::quiet_NaN()).height(), 0.0);
}

void tst_Energyline::hiddenCostsNothing()
{
    WarningGuard guard;
    guard.expect("propagateSizeHints");
    const auto *timer = m_line->findChild<QTimer *>();
    QTRY_VERIFY(!timer->isActive()); // never shown
    PaintCounter counter(m_line.get());
    m_line->show();
    QVERIFY(timer->isActive() && timer->interval() == 100);
    QVERIFY(QTest::qWaitForWindowExposed(m_line.get()));
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
    QCOMPARE(guard.unexpected(), QStringList());
}

void tst_Energyline::images()
{
    for (const EnergyBlockRow &row : EnergyTables::blocks) {
        const QString path = row.image;
        if (path.isEmpty())
            continue;
        const QImage image(path);
        QCOMPARE(image.size(), QSize(150, 150));
        QVERIFY(image.hasAlphaChannel() && qAlpha(image.pixel(0, 0)) == 0);
    }
}

QTEST_MAIN(tst_Energyline)
#include "tst_energyline.moc"
