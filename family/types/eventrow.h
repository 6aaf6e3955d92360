#pragma once

#include <QtGlobal>

/** Event k is carried by the data identifier firstEventId + k: 1 when it is present. */
constexpr int firstEventId = 2000;

enum class EventUse {
    Plain,
    Reserved, ///< has no text in the event log when it appears
};

/** How much an event matters to the operator, the least first. */
enum class EventSeverity {
    Information, ///< nothing has to be done: the result of a test
    Warning,     ///< to be looked at
    Critical,    ///< the load is in danger, or a part has failed
};

/** One event: its text in the log and on the alarm page, and the one when it disappears. Both are
 *  translated in the context "tavoFont". */
struct EventRow
{
    const char *text;
    const char *disappear;
    EventUse use;
    EventSeverity severity;
};

/** An event that the host is told a second time, by an event type of its own. */
struct SpecialFlagRow
{
    int event; ///< its number among the events
    int type;  ///< the host event

    constexpr int dataId() const { return firstEventId + event; }
};
