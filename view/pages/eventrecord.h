#pragma once

#include "clientnews.h"
#include "datareport.h"

#include <QVector>

/** One event that is present. */
struct RecordedEvent
{
    int index; ///< the event's number
    EventOnset onset;
};

/**
 * The events that are present, newest first; those that were there before anybody looked, last.
 *
 * An event that stays keeps its time; one that goes away leaves the record.
 */
class EventRecord
{
public:
    /** Takes over the flags of a report that was received at `now`.
     *  @param onsets  of the events as far as they are known; others begin now
     *  @return the events that this report is the first to show */
    QVector<RecordedEvent> update(const DataReport &report, int eventCount,
                                  const QMap<int, EventOnset> &onsets, const QDateTime &now);

    const QVector<RecordedEvent> &events() const { return m_events; }

    /** When the last event was seen to have gone; invalid when none has. */
    const QDateTime &lastCleared() const { return m_lastCleared; }

private:
    QVector<RecordedEvent> m_events;
    QDateTime m_lastCleared;
};
