#include "eventrecord.h"

#include <algorithm>

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
    QVector<bool> present = presentEvents(report, eventCount);
    const auto isGone = [&present](const RecordedEvent &e) { return !present.value(e.index); };
    m_events.erase(std::remove_if(m_events.begin(), m_events.end(), isGone), m_events.end());
    for (const RecordedEvent &event : qAsConst(m_events))
        present[event.index] = false;
    if (!present.contains(true))
        return;
    const QString time = now.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    QVector<RecordedEvent> appeared;
    for (int index = 0; index < present.size(); ++index) {
        if (present.at(index))
            appeared.append({ index, now, time });
    }
    m_events = appeared + m_events;
}
