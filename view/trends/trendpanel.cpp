#include "trends/trendpanel.h"

#include "trends/trendpainter.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr int margin = 12;
constexpr int last = TrendBuffer::stepCount - 1; // the newest step
constexpr int pauseMs = 1000;                    // at least, between two looks at the store

const char *const buttonStyle =
    "QToolButton { color: #1B2140; background: #FFFFFF; border: 1px solid #C9CCE3;"
    " border-radius: 4px; padding: 2px 8px; }"
    "QToolButton:checked { background: #DDDFF5; border-color: #2947C6; }"
    "QToolButton:focus { border: 2px solid #2947C6; padding: 1px 7px; }";

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
    m_cursor = TrendReading::noStep;
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
    const QRect buttons = m_spans->buttons().first()->geometry();
    const QRect title(margin, buttons.top(), buttons.left() - margin, buttons.height());
    const TrendReading reading(m_store, m_span, m_cursor, m_newest);
    QPainter painter(this);
    TrendPainter trends(painter, m_scene, reading, font());
    trends.drawCard(rect(), hasFocus());
    trends.drawHead(title, noteArea());
    trends.drawPlots();
}

void TrendPanel::pointAt(int step)
{
    if (step == m_cursor)
        return;
    m_cursor = step;
    setAccessibleDescription(step == TrendReading::noStep
                                 ? QString()
                                 : TrendReading(m_store, m_span, step, m_newest).text());
    update();
}

void TrendPanel::mouseMoveEvent(QMouseEvent *event)
{
    pointAt(stepAt(m_scene, event->localPos()));
}

void TrendPanel::leaveEvent(QEvent *)
{
    if (!hasFocus()) // the keys' cursor stays
        pointAt(TrendReading::noStep);
}

void TrendPanel::keyPressEvent(QKeyEvent *event)
{
    const int now = m_cursor == TrendReading::noStep ? last : m_cursor;
    const int step = event->modifiers() & Qt::ControlModifier ? last / 10 : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        return pointAt(std::clamp(now - step, 0, last));
    case Qt::Key_Right:
        return pointAt(std::clamp(now + step, 0, last));
    case Qt::Key_Home:
        return pointAt(0);
    case Qt::Key_End:
        return pointAt(last);
    default:
        QWidget::keyPressEvent(event);
    }
}

void TrendPanel::focusInEvent(QFocusEvent *)
{
    pointAt(last);
    update();
}

void TrendPanel::focusOutEvent(QFocusEvent *)
{
    pointAt(TrendReading::noStep);
    update();
}
