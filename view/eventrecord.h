#pragma once

#include "datareport.h"

#include <QDateTime>
#include <QVector>

/** One event that is present. */
struct RecordedEvent
{
    int index;       ///< k of the flag with identifier 2000 + k
    QDateTime since; ///< when it was first seen
    QString time;    ///< the same as text
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

    const QVector<RecordedEvent> &events() const { return m_events; }

private:
    QVector<RecordedEvent> m_events;
};
