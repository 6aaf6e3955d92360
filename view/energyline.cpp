#include "energyline.h"

#include "energytables.h"
#include "viewcolors.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr int TickMs = 100;
constexpr float DashStep = 0.4f;
constexpr float LastDashOffset = -1000;
constexpr int FlowWidth = 5;
constexpr QSize LeastSize(900, 460);

constexpr QColor Ground(240, 240, 245);
constexpr QColor LiveFill(41, 71, 198);
constexpr QColor IdleFill(157, 172, 255);
constexpr QColor FlowColor(157, 172, 255);
constexpr QColor LiveTextColor(255, 255, 255);

constexpr QRectF TitleArea(0, 52, 75, 20); // inside a block
constexpr double BatteryPen = 3;
constexpr int LeastStretch = 50; // in percent; still readable

QFont inBold(QFont font)
{
    font.setBold(true);
    return font;
}

QPixmap tinted(const QPixmap &mask, const QColor &color)
{
    QPixmap result = mask;
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(result.rect(), color);
    return result;
}

// A value of four digits is to be read in whole; a device's text may still be too wide.
void squeeze(QFont &font, QString &text, double width)
{
    const int stretch = font.stretch() == QFont::AnyStretch ? QFont::Unstretched : font.stretch();
    const double share = width / QFontMetricsF(font).horizontalAdvance(text);
    font.setStretch(std::max(LeastStretch, static_cast<int>(stretch * share)));
    text = QFontMetricsF(font).elidedText(text, Qt::ElideRight, width);
}

// Around the middle of the battery.
QPolygonF boltShape()
{
    return QPolygonF({ { 4, -18 }, { -10, 3 }, { -1, 3 }, { -4, 18 }, { 10, -4 }, { 1, -4 } });
}

} // namespace

// Outside of any namespace, as the macro asks for.
static void loadImageResources()
{
    Q_INIT_RESOURCE(tavo_images);
}

Energyline::Energyline(QWidget *parent)
    : QWidget(parent)
{
    loadImageResources();
    m_viewFlags.fill(true);
    m_state = energyState({});
    setMinimumSize(LeastSize);
    setAttribute(Qt::WA_OpaquePaintEvent);
    loadImages();
    rebuild();
    connect(&m_timer, &QTimer::timeout, this, &Energyline::animate);
    m_timer.start(TickMs);
}

void Energyline::loadImages()
{
    for (const EnergyBlockRow &row : EnergyTables::blocks) {
        const QString path = QString::fromLatin1(row.image);
        if (path.isEmpty() || m_images.contains(path))
            continue;
        const QPixmap mask(path);
        m_images.insert(path, { tinted(mask, LiveTextColor), tinted(mask, ViewColors::Text) });
    }
}

void Energyline::rebuild()
{
    m_scene = energyScene(m_state, m_viewFlags, m_font, energyCentre(size()));
    update();
}

void Energyline::flushData(QMap<int, QVariant> report)
{
    const EnergyState state = energyState(report);
    if (state == m_state)
        return;
    m_state = state;
    rebuild();
}

void Energyline::setStale(bool stale)
{
    if (stale == m_isStale)
        return;
    m_isStale = stale;
    update();
}

void Energyline::set_all_off_Flow()
{
    m_state.flows.fill(false);
    rebuild();
}

void Energyline::toggle_view_Flag(bool &flag)
{
    flag = !flag;
}

void Energyline::animate()
{
    if (!isVisible()) {
        m_timer.stop();
        return;
    }
    m_dashOffset -= DashStep;
    if (m_dashOffset < LastDashOffset)
        m_dashOffset = 0;
    if (!m_scene.flows.empty() && !m_isStale)
        update();
}

void Energyline::showEvent(QShowEvent *)
{
    m_timer.start(TickMs);
}

void Energyline::hideEvent(QHideEvent *)
{
    m_timer.stop();
}

void Energyline::resizeEvent(QResizeEvent *)
{
    rebuild();
}

void Energyline::mousePressEvent(QMouseEvent *event)
{
    const EnergyBlockRow *block = blockAt(event->localPos().toPoint(), energyCentre(size()));
    if (!block)
        return;
    for (const int flag : block->viewFlags) {
        if (flag >= 0)
            toggle_view_Flag(m_viewFlags[static_cast<std::size_t>(flag)]);
    }
    rebuild();
}

void Energyline::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing
                           | QPainter::SmoothPixmapTransform);
    drawBase(painter);
    drawBattery(painter);
    drawflow(painter);
    drawdate(painter);
}

void Energyline::drawBase(QPainter &painter) const
{
    painter.fillRect(rect(), Ground);
    painter.setFont(inBold(m_font));
    for (const SceneBlock &block : m_scene.blocks) {
        painter.fillRect(block.rect, block.isLive ? LiveFill : IdleFill);
        const TintedImage image = m_images.value(QString::fromLatin1(block.row->image));
        const QPixmap &pixmap = block.isLive ? image.live : image.idle;
        painter.drawPixmap(block.rect, pixmap, pixmap.rect());
        painter.setPen(block.isLive ? LiveTextColor : ViewColors::Text);
        painter.drawText(TitleArea.translated(block.rect.topLeft()), Qt::AlignCenter,
                         EnergyTables::tr(block.row->title));
    }
}

void Energyline::drawBattery(QPainter &painter) const
{
    const QColor color = m_scene.battery.isLive ? LiveFill : IdleFill;
    const QRectF area = m_scene.battery.rect;
    const double half = BatteryPen / 2;
    painter.save();
    painter.fillRect(QRectF(area.center().x() - 9, area.top(), 18, 7), color);
    painter.setPen(QPen(color, BatteryPen));
    painter.setBrush(LiveTextColor);
    painter.drawRoundedRect(area.adjusted(half, 7 + half, -half, -half), 4, 4);
    painter.fillRect(m_scene.batteryLevel, color);
    if (m_state.isCharging()) {
        painter.setPen(QPen(ViewColors::Text, 1.5));
        painter.drawPolygon(boltShape().translated(area.center() + QPointF(0, 3)));
    }
    painter.restore();
}

void Energyline::drawflow(QPainter &painter) const
{
    if (m_isStale)
        return;
    QPen pen(FlowColor, FlowWidth, Qt::CustomDashLine, Qt::RoundCap, Qt::RoundJoin);
    pen.setDashPattern({ 2, 1.5, 2, 1.5 });
    pen.setDashOffset(static_cast<double>(m_dashOffset));
    painter.save();
    painter.setPen(pen);
    for (const QPolygonF &flow : m_scene.flows)
        painter.drawPolyline(flow);
    painter.restore();
}

void Energyline::drawdate(QPainter &painter) const
{
    const QFont bold = inBold(m_font);
    const QFontMetricsF metrics(m_font, this);
    for (const SceneText &text : m_scene.texts) {
        const bool isOld = m_isStale && text.role == TextRole::Value;
        QFont font = text.role == TextRole::Title ? bold : m_font;
        font.setItalic(isOld);
        QString shown = text.text;
        if (metrics.horizontalAdvance(shown) > text.rect.width())
            squeeze(font, shown, text.rect.width());
        painter.setFont(font);
        const bool isFaint = isOld || text.role == TextRole::Label;
        painter.setPen(isFaint ? ViewColors::SecondaryText : ViewColors::Text);
        const Qt::Alignment side = text.role == TextRole::Value ? Qt::AlignRight : Qt::AlignLeft;
        painter.drawText(text.rect, static_cast<int>(side | Qt::AlignVCenter), shown);
    }
}
