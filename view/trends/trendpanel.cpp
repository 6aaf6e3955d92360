#include "trends/trendpanel.h"

#include "lookup.h"
#include "style/severitymark.h"
#include "style/viewcolors.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr int margin = 12;
constexpr int radius = 6;
constexpr int pauseMs = 1000; // at least, between two looks at the store
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

const char *const buttonStyle =
    "QToolButton { color: #1B2140; background: #FFFFFF; border: 1px solid #C9CCE3;"
    " border-radius: 4px; padding: 2px 8px; }"
    "QToolButton:checked { background: #DDDFF5; border-color: #2947C6; }"
    "QToolButton:focus { border: 2px solid #2947C6; padding: 1px 7px; }";

void fillGround(QPainter &painter, const QRectF &area, TrendGround ground)
{
    if (ground == TrendGround::Battery)
        painter.fillRect(area, batteryGround);
    else if (ground == TrendGround::Unknown)
        painter.fillRect(area, QBrush(unknownGround, Qt::BDiagPattern));
}

} // namespace

TrendPanel::TrendPanel(const TrendStore &store, QWidget *parent)
    : QWidget(parent)
    , m_store(store)
    , m_spans(new QButtonGroup(this))
{
    setAccessibleName(tr("Trends"));
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(margin, 8, margin, 0);
    column->addLayout(createHead());
    column->addStretch();
}

QLayout *TrendPanel::createHead()
{
    auto *head = new QHBoxLayout;
    head->addStretch(); // the title is painted
    const struct
    {
        TrendSpan span;
        QString text;
        QString tip;
    } buttons[] = {
        { TrendSpan::TenMinutes, tr("10 min"), tr("The last ten minutes") },
        { TrendSpan::Hour, tr("1 h"), tr("The last hour") },
        { TrendSpan::Day, tr("24 h"), tr("The last day") },
    };
    for (const auto &row : buttons) {
        auto *button = new QToolButton(this);
        button->setText(row.text);
        button->setToolTip(row.tip);
        button->setCheckable(true);
        button->setChecked(row.span == m_span);
        button->setStyleSheet(QString::fromLatin1(buttonStyle));
        button->setFocusPolicy(Qt::StrongFocus);
        m_spans->addButton(button, static_cast<int>(row.span));
        head->addWidget(button);
    }
    connect(m_spans, &QButtonGroup::idClicked, this,
            [this](int id) { setSpan(static_cast<TrendSpan>(id)); });
    return head;
}

void TrendPanel::setSpan(TrendSpan span)
{
    m_span = span;
    m_spans->button(static_cast<int>(span))->setChecked(true);
    m_cursor = -1;
    if (isVisible())
        rebuild();
}

QRectF TrendPanel::noteArea() const
{
    const QRect buttons = m_spans->buttons().first()->geometry();
    return QRectF(margin, buttons.bottom() + 4, width() - 2 * margin, fontMetrics().height());
}

QRectF TrendPanel::plotArea() const
{
    const double top = noteArea().bottom() + 4;
    return QRectF(margin, top, width() - 2 * margin, height() - top - 4);
}

int TrendPanel::heightForWidth(int width) const
{
    const int text = fontMetrics().height();
    const int head = 8 + m_spans->buttons().first()->sizeHint().height() + 4 + text + 4;
    return head + 4 + trendHeight(m_store.family().trends.size(), width - 2 * margin, text);
}

QSize TrendPanel::minimumSizeHint() const
{
    const int width = std::max(QWidget::minimumSizeHint().width(), leastPlotWidth + 2 * margin)
        + fontMetrics().horizontalAdvance(tr("Trends"));
    // Where the plots fit beside each other; who is narrower asks for the height of its width.
    const int wide = maxTrends * 2 * leastPlotWidth;
    return { width, heightForWidth(wide) };
}

void TrendPanel::refresh()
{
    const bool hasChanged = m_showsLatest != (m_store.latest() != nullptr);
    if (isVisible() && (hasChanged || m_sinceShown.hasExpired(pauseMs)))
        rebuild();
}

void TrendPanel::rebuild()
{
    m_newest = QDateTime::currentDateTime();
    m_sinceShown.start();
    m_showsLatest = m_store.latest() != nullptr;
    m_scene = trendScene(m_store, m_span, plotArea(), fontMetrics().height());
    update();
}

void TrendPanel::showEvent(QShowEvent *)
{
    rebuild();
}

void TrendPanel::hideEvent(QHideEvent *)
{
    m_scene = {};
}

void TrendPanel::resizeEvent(QResizeEvent *)
{
    if (isVisible())
        rebuild();
}

void TrendPanel::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange && isVisible())
        rebuild();
}

void TrendPanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setLayoutDirection(Qt::LeftToRight);
    QPainterPath card;
    const QPen outline = hasFocus() ? QPen(curve, 2) : QPen(ViewColors::hairline, 1);
    const double inset = outline.widthF() / 2;
    card.addRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.setPen(outline);
    painter.setBrush(ViewColors::card);
    painter.drawPath(card);
    drawNote(painter);
    for (int trend = 0; trend < m_scene.plots.size(); ++trend) {
        drawPlot(painter, trend);
        drawTexts(painter, trend);
    }
}

void TrendPanel::drawNote(QPainter &painter) const
{
    const QRect buttons = m_spans->buttons().first()->geometry();
    QFont title(font());
    title.setPointSize(11);
    title.setBold(true);
    painter.setFont(title);
    painter.setPen(ViewColors::text);
    painter.drawText(QRect(margin, buttons.top(), buttons.left() - margin, buttons.height()),
                     Qt::AlignLeft | Qt::AlignVCenter, tr("Trends"));
    painter.setFont(font());
    if (m_cursor < 0) {
        drawLegend(painter);
        return;
    }
    const int event = m_store.buffer(m_span).event(m_cursor);
    QString text = timeText(m_cursor, "HH:mm:ss");
    if (event != TrendBuffer::noEvent)
        text += QStringLiteral("  ") + translated("tavoFont", m_store.family().events[event].text);
    painter.drawText(noteArea(), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text, Qt::ElideRight, int(noteArea().width())));
}

void TrendPanel::drawLegend(QPainter &painter) const
{
    const QString texts[] = { tr("on battery"), tr("no data"), tr("beyond a limit") };
    QRectF swatch(margin, noteArea().center().y() - swatchHeight / 2.0, swatchWidth, swatchHeight);
    painter.setPen(ViewColors::secondaryText);
    for (int i = 0; i < 3; ++i) {
        if (i == 2)
            painter.fillRect(swatch, outsideGround);
        else
            fillGround(painter, swatch, i == 0 ? TrendGround::Battery : TrendGround::Unknown);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(swatch);
        const double left = swatch.right() + 4;
        const double wide = fontMetrics().horizontalAdvance(texts[i]);
        painter.drawText(QRectF(left, noteArea().top(), wide + 2, noteArea().height()),
                         Qt::AlignLeft | Qt::AlignVCenter, texts[i]);
        swatch.moveLeft(left + wide + 14);
    }
}

void TrendPanel::drawGround(QPainter &painter, const QRectF &frame) const
{
    for (const TrendStretch &stretch : m_scene.stretches) {
        const QRectF area(frame.left() + stretch.left, frame.top(), stretch.right - stretch.left,
                          frame.height());
        fillGround(painter, area, stretch.ground);
        // A bar along the top: told apart in grey, too.
        if (stretch.ground == TrendGround::Battery)
            painter.fillRect(QRectF(area.topLeft(), QSizeF(area.width(), 3)),
                             ViewColors::attention);
    }
}

void TrendPanel::drawPlot(QPainter &painter, int trend) const
{
    const TrendPlot &plot = m_scene.plots.at(trend);
    painter.save();
    painter.setClipRect(plot.frame.adjusted(-1, -1, 1, 1));
    drawGround(painter, plot.frame);
    for (const QRectF &outside : plot.outside)
        painter.fillRect(outside, outsideGround);
    painter.setPen(QPen(curve, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(curve);
    for (const QPolygonF &run : plot.runs)
        painter.drawPolygon(run);
    for (const TrendTick &tick : m_scene.ticks) {
        const double x = plot.frame.left() + tick.x;
        painter.setPen(severityColor(tick.severity));
        painter.drawLine(QPointF(x, plot.frame.top()), QPointF(x, plot.frame.bottom()));
        drawSeverityMark(painter, QRectF(x - markSize / 2.0, plot.frame.top(), markSize, markSize),
                         tick.severity);
    }
    if (m_cursor >= 0) {
        const double x = plot.frame.left() + stepLeft(m_scene, m_cursor);
        painter.setPen(QPen(ViewColors::text, 1, Qt::DashLine));
        painter.drawLine(QPointF(x, plot.frame.top()), QPointF(x, plot.frame.bottom()));
    }
    painter.setPen(ViewColors::hairline);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(plot.frame);
    painter.restore();
}

// In a narrow plot rather with narrow letters than without some: a title tells what a value is.
void TrendPanel::drawHeading(QPainter &painter, int trend) const
{
    const QRectF &heading = m_scene.plots.at(trend).heading;
    const QString title = translated("TrendPanel", m_store.family().trends[trend].title);
    const QString value = valueText(trend);
    QFont plain(font());
    QFont bold(font());
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
    painter.setFont(plain);
    painter.setPen(ViewColors::secondaryText);
    painter.drawText(
        heading, Qt::AlignLeft | Qt::AlignVCenter,
        QFontMetricsF(plain).elidedText(title, Qt::ElideRight, std::max(0.0, titleRoom())));
    painter.setFont(bold);
    painter.setPen(ViewColors::text);
    painter.drawText(heading, Qt::AlignRight | Qt::AlignVCenter, value);
}

void TrendPanel::drawTexts(QPainter &painter, int trend) const
{
    drawHeading(painter, trend);
    const TrendPlot &plot = m_scene.plots.at(trend);
    QFont small(font());
    small.setPointSize(axisPointSize);
    painter.setFont(small);
    painter.setPen(ViewColors::secondaryText);
    const QRectF inside = plot.frame.adjusted(3, 3, -3, -1);
    if (plot.axis.isKnown) {
        painter.drawText(inside, Qt::AlignLeft | Qt::AlignTop,
                         QString::number(qRound(plot.axis.most)));
        painter.drawText(inside, Qt::AlignLeft | Qt::AlignBottom,
                         QString::number(qRound(plot.axis.least)));
    }
    if (!m_scene.isRow && trend + 1 < m_scene.plots.size())
        return;
    const QRectF times = m_scene.timeLine(trend);
    painter.drawText(times, Qt::AlignLeft | Qt::AlignVCenter, timeText(0, "HH:mm"));
    painter.drawText(times, Qt::AlignRight | Qt::AlignVCenter,
                     timeText(TrendBuffer::stepCount - 1, "HH:mm"));
}
