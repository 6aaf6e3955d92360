#pragma once

#include "datareport.h"
#include "family.h"

#include <QVector>

#include <optional>

/** One event flag that differs from what was reported last. */
struct FlagChange
{
    int key;                    ///< of the flag among the reported states
    int type;                   ///< type of the host event to post
    std::optional<int> alarmId; ///< index into the event texts; none for the special flags
    int alarmState;             ///< the flag's new value
};

/** The changes of one report, in the order in which the host is told. */
struct FlagChanges
{
    QVector<FlagChange> changes;
    QMap<int, int> reportedStates; ///< to be handed in the next time
    bool appeared = false;         ///< at least one event appeared
};

/** Compares the event flags with what was reported last.
 *
 *  An event appears only when its flag becomes exactly 1; every other change counts as its
 *  disappearing, which is intended. The special flags are reported a second time, as events of
 *  their own, under their data identifiers.
 *  @param data            flag k is identifier firstEventId + k
 *  @param reportedStates  of the previous report, missing ones read as 0
 *  @param eventCount      number of events; without any only the special flags are looked at */
FlagChanges findFlagChanges(const DataReport &data, const QMap<int, int> &reportedStates,
                            int eventCount, Rows<SpecialFlagRow> specialFlags);
