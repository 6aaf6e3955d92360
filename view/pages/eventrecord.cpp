#include "pages/eventrecord.h"

#include "eventrow.h"

#include <algorithm>

namespace {

// By event, as far as there are events. The report is in the order of the flags.
QVector<bool> presentEvents(const DataReport &report, int eventCount)
{
    QVector<bool> present(eventCount);
    const auto end = report.lowerBound(firstEventId + eventCount);
    for (auto point = report.lowerBound(firstEventId); point != end; ++point)
        present[point.key() - firstEventId] = integerOf(*point) == 1;
    return present;
}

bool isNewer(const RecordedEvent &a, const RecordedEvent &b)
{
    if (a.onset.isExact != b.onset.isExact)
        return a.onset.isExact;
    return a.onset.since > b.onset.since;
}

} // namespace

QVector<RecordedEvent> EventRecord::update(const DataReport &report, int eventCount,
                                           const QMap<int, EventOnset> &onsets,
                                           const QDateTime &now)
{
    QVector<bool> present = presentEvents(report, eventCount);
    const auto isGone = [&present](const RecordedEvent &e) { return !present.value(e.index); };
    // Who shows the events shares them: they are touched only when they change.
    if (std::any_of(m_events.cbegin(), m_events.cend(), isGone)) {
        m_lastCleared = now;
        m_events.erase(std::remove_if(m_events.begin(), m_events.end(), isGone), m_events.end());
    }
    for (const RecordedEvent &event : qAsConst(m_events))
        present[event.index] = false;
    if (!present.contains(true))
        return {};
    QVector<RecordedEvent> appeared;
    for (int index = 0; index < present.size(); ++index) {
        if (present.at(index))
            appeared.append({ index, onsets.value(index, { now, true }) });
    }
    m_events = appeared + m_events;
    std::stable_sort(m_events.begin(), m_events.end(), isNewer);
    return appeared;
}
