#include "diagram/energyline.h"

#include "diagram/energyblock.h"
#include "lookup.h"
#include "style/viewcolors.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <utility>

namespace {

constexpr int tickMs = 100;
constexpr float dashStep = 0.4f;
constexpr float lastDashOffset = -1000;

constexpr QColor ground(240, 240, 245);
constexpr QColor liveFill(41, 71, 198);
constexpr QColor idleFill(157, 172, 255);
constexpr QColor flowColor(157, 172, 255);
constexpr QColor liveTextColor(255, 255, 255);

constexpr QRectF titleArea(0, 52, 75, 20); // inside a block
constexpr double batteryPen = 3;
constexpr int leastStretch = 50; // in percent; still readable

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
    font.setStretch(std::max(leastStretch, static_cast<int>(stretch * share)));
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
    m_state = energyState(m_family, {});
    setLayoutDirection(Qt::LeftToRight); // the power path is no text
    setAttribute(Qt::WA_OpaquePaintEvent);
    loadImages();
    createBlocks();
    rebuild();
    connect(&m_timer, &QTimer::timeout, this, &Energyline::animate);
    m_timer.start(tickMs);
}

void Energyline::loadImages()
{
    for (const DiagramBlockRow &row : m_family.diagram.blocks) {
        const QString path = QString::fromLatin1(row.image);
        if (path.isEmpty() || m_images.contains(path))
            continue;
        const QPixmap mask(path);
        m_images.insert(path, { tinted(mask, liveTextColor), tinted(mask, ViewColors::text) });
    }
}

void Energyline::createBlocks()
{
    for (const DiagramBlockRow &row : m_family.diagram.blocks) {
        const char *title = row.title;
        // The battery has its title over its panel only.
        for (const DiagramPanelRow &panel : m_family.diagram.panels) {
            if (*title == '\0' && panel.viewFlag == row.viewFlags[0])
                title = panel.title;
        }
        auto *block = new EnergyBlock(translated("Energyline", title), this);
        connect(block, &QAbstractButton::clicked, this, [this, &row] { toggle(row); });
        m_blocks.append(block);
    }
}

void Energyline::placeBlocks()
{
    for (int i = 0; i < m_blocks.size(); ++i) {
        const DiagramBlockRow &row = m_family.diagram.blocks[i];
        m_blocks[i]->setGeometry(blockRect(row, energyCentre(size())).toAlignedRect());
        const int flag = row.viewFlags[0];
        m_blocks[i]->setChecked(flag >= 0 && m_viewFlags[static_cast<std::size_t>(flag)]);
    }
}

void Energyline::rebuild()
{
    const bool isLarge = width() >= largeEnergySize.width() && height() >= largeEnergySize.height();
    if (isLarge != m_isLarge) {
        m_isLarge = isLarge;
        m_look = energyLook(m_family.diagram, isLarge);
    }
    m_scene = scene();
    redraw();
}

EnergyScene Energyline::scene() const
{
    return energyScene(m_family.diagram, m_state, m_viewFlags, m_look, energyCentre(size()));
}

void Energyline::flushData(QMap<int, QVariant> report)
{
    const EnergyState state = energyState(m_family, report);
    if (state == m_state)
        return;
    const EnergyState before = std::exchange(m_state, state);
    if (before.flows != state.flows || before.capacity.has_value() != state.capacity.has_value()) {
        rebuild();
        return;
    }
    const EnergyScene shown = std::exchange(m_scene, scene());
    const QRegion changed = changedArea(shown, m_scene, rect());
    if (!m_still.isNull())
        drawStill(changed);
    update(changed);
}

void Energyline::setStale(bool stale, const QString &note)
{
    if (stale == m_isStale && note == m_note)
        return;
    m_isStale = stale;
    m_note = note;
    setAccessibleDescription(note);
    redraw();
}

void Energyline::set_all_off_Flow()
{
    std::fill(m_state.flows.begin(), m_state.flows.end(), false);
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
    m_dashOffset -= dashStep;
    if (m_dashOffset < lastDashOffset)
        m_dashOffset = 0;
    if (!m_isStale)
        update(flowArea(m_scene));
}

void Energyline::showEvent(QShowEvent *)
{
    m_timer.start(tickMs);
}

void Energyline::hideEvent(QHideEvent *)
{
    m_timer.stop();
    m_still = {};
}

void Energyline::resizeEvent(QResizeEvent *)
{
    placeBlocks();
    rebuild();
}

void Energyline::mousePressEvent(QMouseEvent *event)
{
    const DiagramBlockRow *block =
        blockAt(m_family.diagram.blocks, event->localPos().toPoint(), energyCentre(size()));
    if (block)
        toggle(*block);
}

void Energyline::toggle(const DiagramBlockRow &block)
{
    for (const int flag : block.viewFlags) {
        if (flag >= 0)
            toggle_view_Flag(m_viewFlags[static_cast<std::size_t>(flag)]);
    }
    placeBlocks();
    rebuild();
}

void Energyline::paintEvent(QPaintEvent *)
{
    const QSize pixels = size() * devicePixelRatioF();
    if (m_still.size() != pixels) {
        m_still = QPixmap(pixels);
        m_still.setDevicePixelRatio(devicePixelRatioF());
        drawStill(rect());
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawPixmap(0, 0, m_still);
    drawflow(painter);
}

// All but the flows, which alone move ten times a second.
void Energyline::drawStill(const QRegion &area)
{
    QPainter painter(&m_still);
    painter.setClipRegion(area);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing
                           | QPainter::SmoothPixmapTransform);
    drawBase(painter);
    drawBattery(painter);
    drawdate(painter, area);
    drawNote(painter);
}

void Energyline::redraw()
{
    m_still = {};
    update();
}

void Energyline::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    redraw(); // in another language or style
}

void Energyline::drawBase(QPainter &painter) const
{
    painter.fillRect(rect(), ground);
    QFont font = inBold(m_blockFont);
    font.setItalic(m_isStale);
    painter.setFont(font);
    for (const SceneBlock &block : m_scene.blocks) {
        const bool isLive = block.isLive && !m_isStale;
        painter.fillRect(block.rect, isLive ? liveFill : idleFill);
        const TintedImage image = m_images.value(QString::fromLatin1(block.row->image));
        const QPixmap &pixmap = isLive ? image.live : image.idle;
        painter.drawPixmap(block.rect, pixmap, pixmap.rect());
        painter.setPen(isLive ? liveTextColor : ViewColors::text);
        painter.drawText(titleArea.translated(block.rect.topLeft()), Qt::AlignCenter,
                         translated("Energyline", block.row->title));
    }
}

void Energyline::drawBattery(QPainter &painter) const
{
    if (!m_scene.battery.row)
        return;
    const QColor color = m_scene.battery.isLive && !m_isStale ? liveFill : idleFill;
    const QRectF area = m_scene.battery.rect;
    const double half = batteryPen / 2;
    painter.save();
    painter.fillRect(QRectF(area.center().x() - 9, area.top(), 18, 7), color);
    painter.setPen(QPen(color, batteryPen));
    painter.setBrush(liveTextColor);
    painter.drawRoundedRect(area.adjusted(half, 7 + half, -half, -half), 4, 4);
    painter.fillRect(m_scene.batteryLevel, color);
    if (!m_state.capacity) { // which is not an empty one
        painter.setPen(ViewColors::secondaryText);
        painter.drawText(area, Qt::AlignCenter, QStringLiteral("\u2013"));
    }
    if (!m_isStale && isFlowing(m_state.flows, m_family.diagram.chargingFlow)) {
        painter.setPen(QPen(ViewColors::text, 1.5));
        painter.drawPolygon(boltShape().translated(area.center() + QPointF(0, 3)));
    }
    painter.restore();
}

void Energyline::drawflow(QPainter &painter) const
{
    if (m_isStale)
        return;
    QPen pen(flowColor, flowWidth, Qt::CustomDashLine, Qt::RoundCap, Qt::RoundJoin);
    pen.setDashPattern({ 2, 1.5, 2, 1.5 });
    pen.setDashOffset(static_cast<double>(m_dashOffset));
    painter.save();
    painter.setPen(pen);
    for (const QPolygonF &flow : m_scene.flows)
        painter.drawPolyline(flow);
    painter.restore();
}

void Energyline::drawdate(QPainter &painter, const QRegion &area) const
{
    const QFont bold = inBold(m_look.font);
    const QFontMetricsF metrics(m_look.font, this);
    for (const SceneText &text : m_scene.texts) {
        if (!area.intersects(text.rect.toAlignedRect()))
            continue;
        const bool isOld = m_isStale && text.role == TextRole::Value;
        QFont font = text.role == TextRole::Title ? bold : m_look.font;
        font.setItalic(isOld);
        QString shown = text.text;
        if (metrics.horizontalAdvance(shown) > text.rect.width())
            squeeze(font, shown, text.rect.width());
        painter.setFont(font);
        const bool isFaint = isOld || text.role == TextRole::Label;
        painter.setPen(isFaint ? ViewColors::secondaryText : ViewColors::text);
        const Qt::Alignment side = text.role == TextRole::Value ? Qt::AlignRight : Qt::AlignLeft;
        painter.drawText(text.rect, static_cast<int>(side | Qt::AlignVCenter), shown);
    }
}

void Energyline::drawNote(QPainter &painter) const
{
    if (m_note.isEmpty())
        return;
    painter.setFont(inBold(m_look.font));
    painter.setPen(ViewColors::alarm);
    painter.drawText(noteRect(energyCentre(size())), Qt::AlignCenter | Qt::TextWordWrap,
                     QString::fromUtf8("\u25a0 ") + m_note);
}
