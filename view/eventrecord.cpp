#include "eventrecord.h"

namespace {

constexpr int FirstEventId = 2000;

// By event, as far as there are events. The report is in the order of the flags.
QVector<bool> presentEvents(const DataReport &report, int eventCount)
{
    QVector<bool> present(eventCount);
    const auto end = report.lowerBound(FirstEventId + eventCount);
    for (auto point = report.lowerBound(FirstEventId); point != end; ++point)
        present[point.key() - FirstEventId] = integerOf(*point) == 1;
    return present;
}

} // namespace

void EventRecord::update(const DataReport &report, int eventCount, const QDateTime &now)
{
    QVector<bool> appeared = presentEvents(report, eventCount);
    QVector<RecordedEvent> kept;
    for (const RecordedEvent &event : qAsConst(m_events)) {
        if (!appeared.value(event.index))
            continue;
        kept.append(event);
        appeared[event.index] = false;
    }
    m_events.clear();
    QString time;
    for (int index = appeared.indexOf(true); index >= 0;
         index = appeared.indexOf(true, index + 1)) {
        if (time.isEmpty())
            time = now.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        m_events.append({ index, now, time });
    }
    m_events += kept;
}
