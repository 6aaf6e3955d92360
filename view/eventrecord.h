#pragma once

#include "datareport.h"

#include <QDateTime>
#include <QList>

/** One event that is present. */
struct RecordedEvent
{
    int index;       ///< k of the flag with identifier 2000 + k
    QDateTime since; ///< when it was first seen
};

/**
 * The events that are present, newest first.
 *
 * An event that stays keeps its time; one that goes away leaves the record.
 */
class EventRecord
{
public:
    /** Takes over the flags of a report that was received at `now`. */
    void update(const DataReport &report, int eventCount, const QDateTime &now);

    const QList<RecordedEvent> &events() const { return m_events; }

private:
    QList<RecordedEvent> m_events;
};
