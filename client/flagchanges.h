#pragma once

#include <QMap>
#include <QVariant>
#include <QVector>

#include <optional>

/** One event flag that differs from what was reported last. */
struct FlagChange
{
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
 *  disappearing, which is intended. The flags 2059 and 2082 are reported a second time, as
 *  events of their own.
 *  @param data            data identifier -> value; flag k is identifier 2000 + k
 *  @param reportedStates  of the previous report, missing ones read as 0
 *  @param eventCount      number of events; without any only the special flags are looked at */
FlagChanges findFlagChanges(const QMap<int, QVariant> &data, const QMap<int, int> &reportedStates,
                            int eventCount);
