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

class tst_Energyline : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void flows_data();
    void flows();
    void values_data();
    void values();
    void hits_data();
    void hits();
    void clickTogglesThePanel();
    void panelsKeepApart();
    void hiddenCostsNothing();

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
    QTest::addColumn<QList<int>>("segments"); // places in the list of the test
    QTest::addColumn<QString>("blocks");      // those that are dark
    using List = QList<int>;
    QTest::newRow("stopped") << DataReport() << List {} << "";
    QTest::newRow("input") << ones({ 4217 }) << List { 0 } << "INPUT REC";
    QTest::newRow("charging") << ones({ 4218, 4222 }) << List { 1, 2 } << "REC";
    QTest::newRow("inverting") << ones({ 4218, 4219 }) << List { 1, 3 } << "REC INV";
    QTest::newRow("on battery") << ones({ 4219, 4222, 4220, 4221 }) << List { 2, 3, 4, 7 }
                                << "LOAD INV";
    QTest::newRow("on bypass") << ones({ 4216, 4221 }) << List { 5, 6, 7 } << "BYPASS LOAD";
    QTest::newRow("only 1 counts") << DataReport { { 4217, 2.0f } } << List {} << "";
}

void tst_Energyline::flows()
{
    const QList<QLine> lines { { -220, 0, -135, 0 },   { -50, 0, -4, 0 },
                               { 0, 4, 0, 74 },        { 4, 0, 50, 0 },
                               { 135, 0, 165, 0 },     { -220, -150, 170, -150 },
                               { 175, -145, 175, -5 }, { 182, 0, 220, 0 } };
    m_line->flushData(QTest::currentDataTag() == QByteArray("stopped") ? ones({ 4217 })
                                                                       : DataReport());
    QFETCH(DataReport, report);
    m_line->flushData(report);
    const QImage image = shot();
    QList<int> seen;
    for (int i = 0; i < lines.size(); ++i) {
        const int percent = painted(image, lines.at(i));
        QVERIFY2(percent == 0 || (percent > 35 && percent < 95), QByteArray::number(percent));
        if (percent > 0)
            seen.append(i);
    }
    QTEST(seen, "segments");
    QStringList dark;
    for (const EnergyBlockRow &row : EnergyTables::blocks) {
        const QPoint corner(int(row.topLeft.x) + 3, int(row.topLeft.y) + 3);
        if (*row.title != '\0' && image.pixel(Centre + corner) == Live)
            dark.append(row.title);
    }
    QTEST(dark.join(' '), "blocks");
    m_line->set_all_off_Flow();
    QCOMPARE(painted(shot(), lines.first()), 0);
}

void tst_Energyline::values_data()
{
    using Panel = EnergyPanel;
    QTest::addColumn<DataReport>("report");
    QTest::addColumn<int>("panel");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("text");
    const DataReport phases { { 4133, 229.96f }, { 4134, 231.0f }, { 4135, 230.0f } };
    DataReport three = phases;
    three.insert(4132, 3.0f);
    QTest::newRow("triple") << three << int(Panel::Input) << 0 << "230.0/231.0/230.0 V";
    QTest::newRow("state above") << DataReport { { 4241, 12.0f } } << int(Panel::Device) << 4
                                 << "-";
    QTest::newRow("state below") << DataReport { { 4190, -1.0f } } << int(Panel::Bypass) << 3
                                 << "-";
    QTest::newRow("missing") << three << int(Panel::Load) << 0 << "-";
}

void tst_Energyline::values()
{
    QFETCH(DataReport, report);
    QFETCH(int, panel);
    QFETCH(int, line);
    QTEST(energyState(report).panels.at(panel).at(line).value, "text");
}

void tst_Energyline::hits_data()
{
    QTest::addColumn<QPoint>("point"); // relative to the centre
    QTest::addColumn<QSet<int>>("viewFlags");
    QTest::newRow("input, left edge") << QPoint(-300, 0) << QSet<int> { 0, -1 };
    QTest::newRow("input, right edge") << QPoint(-225, 37) << QSet<int> { 0, -1 };
    QTest::newRow("right of the input") << QPoint(-224, 0) << QSet<int> {};
    QTest::newRow("bypass") << QPoint(-250, -187) << QSet<int> { 1, -1 };
    QTest::newRow("load") << QPoint(300, -37) << QSet<int> { 3, -1 };
    QTest::newRow("battery, lower edge") << QPoint(25, 155) << QSet<int> { 4, -1 };
    QTest::newRow("inverter") << QPoint(55, 0) << QSet<int> { 2, 5 };
}

void tst_Energyline::hits()
{
    QFETCH(QPoint, point);
    // The centre is rounded down.
    const EnergyBlockRow *block = blockAt(Centre + point, energyCentre(QSize(901, 461)));
    QSet<int> flags;
    if (block)
        flags = { block->viewFlags[0], block->viewFlags[1] };
    QTEST(flags, "viewFlags");
}

void tst_Energyline::clickTogglesThePanel()
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
void tst_Energyline::panelsKeepApart()
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

    QList<QRectF> taken { scene.battery.rect };
    for (const SceneBlock &block : scene.blocks)
        taken.append(block.rect);
    for (const QPolygonF &flow : scene.flows) {
        for (int i = 1; i < flow.size(); ++i)
            taken.append(QRectF(flow[i - 1], flow[i]).normalized().adjusted(-2.5, -2.5, 2.5, 2.5));
    }
    for (const SceneText &text : scene.texts) {
        QRectF area = text.rect;
        area.setWidth(metrics.horizontalAdvance(text.text));
        QVERIFY2(area.width() <= text.rect.width(), text.text.toUtf8());
        QVERIFY2(QRectF(QPointF(), LeastSize).contains(area), text.text.toUtf8());
        for (const QRectF &other : qAsConst(taken))
            QVERIFY2(!area.intersects(other), text.text.toUtf8());
        taken.append(area);
    }
}

void tst_Energyline::hiddenCostsNothing()
{
    WarningGuard guard;
    guard.expect("propagateSizeHints");
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
    QCOMPARE(guard.unexpected(), QStringList()); // nor is an image missing
}

QTEST_MAIN(tst_Energyline)
#include "tst_energyline.moc"
