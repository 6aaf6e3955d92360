#include "eventrecord.h"

#include <algorithm>

namespace {

constexpr int FirstEventId = 2000;

bool isPresent(const DataReport &report, int index)
{
    return integerAt(report, FirstEventId + index) == 1;
}

} // namespace

void EventRecord::update(const DataReport &report, int eventCount, const QDateTime &now)
{
    QList<RecordedEvent> events;
    for (int index = 0; index < eventCount; ++index) {
        const bool isKnown =
            std::any_of(m_events.cbegin(), m_events.cend(),
                        [index](const RecordedEvent &e) { return e.index == index; });
        if (!isKnown && isPresent(report, index))
            events.append({ index, now });
    }
    for (const RecordedEvent &event : qAsConst(m_events)) {
        if (isPresent(report, event.index))
            events.append(event);
    }
    m_events = events;
}
