// The cursor over the plots: how it is moved, and what it tells.

#include "lookup.h"
#include "trends/trendpanel.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace {

constexpr int last = TrendBuffer::stepCount - 1; // the newest step
constexpr char none[] = "\u2013";

QString number(double value)
{
    return QString::number(value, 'f', 1);
}

} // namespace

void TrendPanel::pointAt(int step)
{
    if (step == m_cursor)
        return;
    m_cursor = step;
    setAccessibleDescription(step < 0 ? QString() : cursorText());
    update();
}

void TrendPanel::mouseMoveEvent(QMouseEvent *event)
{
    pointAt(stepAt(m_scene, event->localPos()));
}

void TrendPanel::leaveEvent(QEvent *)
{
    if (!hasFocus()) // the keys' cursor stays
        pointAt(-1);
}

void TrendPanel::keyPressEvent(QKeyEvent *event)
{
    const int now = m_cursor < 0 ? last : m_cursor;
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
    pointAt(-1);
    update();
}

QString TrendPanel::timeText(int step, const char *format) const
{
    const qint64 age = (TrendBuffer::stepCount - 1 - step) * m_store.buffer(m_span).stepMs();
    return m_newest.addMSecs(-age).toString(QString::fromLatin1(format));
}

QString TrendPanel::valueText(int trend) const
{
    TrendRange range;
    if (m_cursor >= 0)
        range = m_store.buffer(m_span).range(trend, m_cursor);
    else if (m_store.latest())
        range = m_store.latest()->ranges[static_cast<std::size_t>(trend)];
    if (!range.isKnown())
        return QString::fromUtf8(none);
    const QString unit = QLatin1Char(' ') + QString::fromUtf8(m_store.family().trends[trend].unit);
    const QString least = number(double(range.least));
    const QString most = number(double(range.most));
    return (least == most ? least : least + QString::fromUtf8(none) + most) + unit;
}

// The time, what happened then, and each value.
QString TrendPanel::cursorText() const
{
    QStringList parts { timeText(m_cursor, "HH:mm:ss") };
    const Family &family = m_store.family();
    const int event = m_store.buffer(m_span).event(m_cursor);
    if (event != TrendBuffer::noEvent)
        parts.append(translated("tavoFont", family.events[event].text));
    for (int trend = 0; trend < family.trends.size(); ++trend)
        parts.append(translated("TrendPanel", family.trends[trend].title) + QLatin1Char(' ')
                     + valueText(trend));
    return parts.join(QStringLiteral(", "));
}
