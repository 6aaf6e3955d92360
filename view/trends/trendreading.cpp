#include "trends/trendreading.h"

#include "lookup.h"

#include <QStringList>

namespace {

constexpr char none[] = "\u2013";

} // namespace

TrendReading::TrendReading(const TrendStore &store, TrendSpan span, int step,
                           const QDateTime &newest)
    : m_store(store)
    , m_span(span)
    , m_step(step)
    , m_newest(newest)
{
}

QString TrendReading::timeText(int step, const char *format) const
{
    const qint64 age = (TrendBuffer::stepCount - 1 - step) * m_store.buffer(m_span).stepMs();
    return m_newest.addMSecs(-age).toString(QString::fromLatin1(format));
}

QString TrendReading::eventText() const
{
    const int event = m_store.buffer(m_span).event(m_step);
    return event == TrendBuffer::noEvent ? QString()
                                         : translated("tavoFont", family().events[event].text);
}

QString TrendReading::valueText(int trend) const
{
    TrendRange range;
    if (m_step != noStep)
        range = m_store.buffer(m_span).range(trend, m_step);
    else if (m_store.latest())
        range = m_store.latest()->ranges[static_cast<std::size_t>(trend)];
    if (!range.isKnown())
        return QString::fromUtf8(none);
    const QString unit = QLatin1Char(' ') + QString::fromUtf8(family().trends[trend].unit);
    const QString least = decimalText(range.least, 1);
    const QString most = decimalText(range.most, 1);
    return (least == most ? least : least + QString::fromUtf8(none) + most) + unit;
}

QString TrendReading::text() const
{
    QStringList parts { timeText(m_step, "HH:mm:ss") };
    const QString event = eventText();
    if (!event.isEmpty())
        parts.append(event);
    for (int trend = 0; trend < family().trends.size(); ++trend)
        parts.append(translated("TrendPanel", family().trends[trend].title) + QLatin1Char(' ')
                     + valueText(trend));
    return parts.join(QStringLiteral(", "));
}
