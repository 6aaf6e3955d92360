#include "trends/trendpainter.h"

#include "lookup.h"
#include "style/severitymark.h"
#include "style/viewcolors.h"
#include "trends/trendreading.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr int radius = 6;
constexpr int markSize = 8;
constexpr int swatchWidth = 24; // the hatching is seen in it
constexpr int swatchHeight = 11;
constexpr int axisPointSize = 8;
constexpr int headingGap = 8;
constexpr int leastStretch = 70; // in percent
constexpr int stretchStep = 5;
constexpr QColor batteryGround(0xFB, 0xE9, 0xC8);
constexpr QColor unknownGround(0xCF, 0xD2, 0xE4);
constexpr QColor outsideGround(0xB3, 0x26, 0x1E, 28);
constexpr QColor curve(0x29, 0x47, 0xC6);

QString panelText(const char *text)
{
    return QCoreApplication::translate("TrendPanel", text);
}

void fillGround(QPainter &painter, const QRectF &area, TrendGround ground)
{
    if (ground == TrendGround::Battery)
        painter.fillRect(area, batteryGround);
    else if (ground == TrendGround::Unknown)
        painter.fillRect(area, QBrush(unknownGround, Qt::BDiagPattern));
}

} // namespace

TrendPainter::TrendPainter(QPainter &painter, const TrendScene &scene, const TrendReading &reading,
                           const QFont &font)
    : m_painter(painter)
    , m_scene(scene)
    , m_reading(reading)
    , m_font(font)
    , m_metrics(font)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setLayoutDirection(Qt::LeftToRight);
}

void TrendPainter::drawCard(const QRectF &area, bool hasFocus)
{
    QPainterPath card;
    const QPen outline = hasFocus ? QPen(curve, 2) : QPen(ViewColors::hairline, 1);
    const double inset = outline.widthF() / 2;
    card.addRoundedRect(area.adjusted(inset, inset, -inset, -inset), radius, radius);
    m_painter.setPen(outline);
    m_painter.setBrush(ViewColors::card);
    m_painter.drawPath(card);
}

void TrendPainter::drawHead(const QRect &title, const QRectF &note)
{
    QFont bold(m_font);
    bold.setPointSize(11);
    bold.setBold(true);
    m_painter.setFont(bold);
    m_painter.setPen(ViewColors::text);
    m_painter.drawText(title, Qt::AlignLeft | Qt::AlignVCenter,
                       panelText(QT_TRANSLATE_NOOP("TrendPanel", "Trends")));
    m_painter.setFont(m_font);
    if (m_reading.step() == TrendReading::noStep) {
        drawLegend(note);
        return;
    }
    QString text = m_reading.timeText(m_reading.step(), "HH:mm:ss");
    const QString event = m_reading.eventText();
    if (!event.isEmpty())
        text += QStringLiteral("  ") + event;
    m_painter.drawText(note, Qt::AlignLeft | Qt::AlignVCenter,
                       m_metrics.elidedText(text, Qt::ElideRight, int(note.width())));
}

void TrendPainter::drawPlots()
{
    for (int trend = 0; trend < m_scene.plots.size(); ++trend) {
        drawPlot(m_scene.plots.at(trend));
        drawTexts(trend);
    }
}

void TrendPainter::drawLegend(const QRectF &note)
{
    const QString texts[] = { panelText(QT_TRANSLATE_NOOP("TrendPanel", "on battery")),
                              panelText(QT_TRANSLATE_NOOP("TrendPanel", "no data")),
                              panelText(QT_TRANSLATE_NOOP("TrendPanel", "beyond a limit")) };
    QRectF swatch(note.left(), note.center().y() - swatchHeight / 2.0, swatchWidth, swatchHeight);
    m_painter.setPen(ViewColors::secondaryText);
    for (int i = 0; i < 3; ++i) {
        if (i == 2)
            m_painter.fillRect(swatch, outsideGround);
        else
            fillGround(m_painter, swatch, i == 0 ? TrendGround::Battery : TrendGround::Unknown);
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawRect(swatch);
        const double left = swatch.right() + 4;
        const double wide = m_metrics.horizontalAdvance(texts[i]);
        m_painter.drawText(QRectF(left, note.top(), wide + 2, note.height()),
                           Qt::AlignLeft | Qt::AlignVCenter, texts[i]);
        swatch.moveLeft(left + wide + 14);
    }
}

void TrendPainter::drawGround(const QRectF &frame)
{
    for (const TrendStretch &stretch : m_scene.stretches) {
        const QRectF area(frame.left() + stretch.left, frame.top(), stretch.right - stretch.left,
                          frame.height());
        fillGround(m_painter, area, stretch.ground);
        // A bar along the top: told apart in grey, too.
        if (stretch.ground == TrendGround::Battery)
            m_painter.fillRect(QRectF(area.topLeft(), QSizeF(area.width(), 3)),
                               ViewColors::attention);
    }
}

void TrendPainter::drawPlot(const TrendPlot &plot)
{
    m_painter.save();
    m_painter.setClipRect(plot.frame.adjusted(-1, -1, 1, 1));
    drawGround(plot.frame);
    for (const QRectF &outside : plot.outside)
        m_painter.fillRect(outside, outsideGround);
    m_painter.setPen(QPen(curve, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    m_painter.setBrush(curve);
    for (const QPolygonF &run : plot.runs)
        m_painter.drawPolygon(run);
    for (const TrendTick &tick : m_scene.ticks) {
        const double x = plot.frame.left() + tick.x;
        m_painter.setPen(severityColor(tick.severity));
        m_painter.drawLine(QPointF(x, plot.frame.top()), QPointF(x, plot.frame.bottom()));
        drawSeverityMark(m_painter,
                         QRectF(x - markSize / 2.0, plot.frame.top(), markSize, markSize),
                         tick.severity);
    }
    if (m_reading.step() != TrendReading::noStep) {
        const double x = plot.frame.left() + stepLeft(m_scene, m_reading.step());
        m_painter.setPen(QPen(ViewColors::text, 1, Qt::DashLine));
        m_painter.drawLine(QPointF(x, plot.frame.top()), QPointF(x, plot.frame.bottom()));
    }
    m_painter.setPen(ViewColors::hairline);
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(plot.frame);
    m_painter.restore();
}

// In a narrow plot rather with narrow letters than without some: a title tells what a value is.
void TrendPainter::drawHeading(int trend)
{
    const QRectF &heading = m_scene.plots.at(trend).heading;
    const QString title = translated("TrendPanel", m_reading.family().trends[trend].title);
    const QString value = m_reading.valueText(trend);
    QFont plain(m_font);
    QFont bold(m_font);
    bold.setBold(true);
    const auto titleRoom = [&heading, &value, &bold] {
        return heading.width() - headingGap - QFontMetricsF(bold).horizontalAdvance(value);
    };
    for (int stretch = QFont::Unstretched;
         stretch > leastStretch && QFontMetricsF(plain).horizontalAdvance(title) > titleRoom();) {
        stretch -= stretchStep;
        plain.setStretch(stretch);
        bold.setStretch(stretch);
    }
    m_painter.setFont(plain);
    m_painter.setPen(ViewColors::secondaryText);
    m_painter.drawText(
        heading, Qt::AlignLeft | Qt::AlignVCenter,
        QFontMetricsF(plain).elidedText(title, Qt::ElideRight, std::max(0.0, titleRoom())));
    m_painter.setFont(bold);
    m_painter.setPen(ViewColors::text);
    m_painter.drawText(heading, Qt::AlignRight | Qt::AlignVCenter, value);
}

void TrendPainter::drawTexts(int trend)
{
    drawHeading(trend);
    const TrendPlot &plot = m_scene.plots.at(trend);
    QFont small(m_font);
    small.setPointSize(axisPointSize);
    m_painter.setFont(small);
    m_painter.setPen(ViewColors::secondaryText);
    const QRectF inside = plot.frame.adjusted(3, 3, -3, -1);
    if (plot.axis.isKnown) {
        m_painter.drawText(inside, Qt::AlignLeft | Qt::AlignTop,
                           QString::number(qRound(plot.axis.most)));
        m_painter.drawText(inside, Qt::AlignLeft | Qt::AlignBottom,
                           QString::number(qRound(plot.axis.least)));
    }
    if (!m_scene.isRow && trend + 1 < m_scene.plots.size())
        return;
    const QRectF times = m_scene.timeLine(trend);
    m_painter.drawText(times, Qt::AlignLeft | Qt::AlignVCenter, m_reading.timeText(0, "HH:mm"));
    m_painter.drawText(times, Qt::AlignRight | Qt::AlignVCenter,
                       m_reading.timeText(TrendBuffer::stepCount - 1, "HH:mm"));
}
