#pragma once

#include "severity.h"

#include <QDateTime>
#include <QString>

/** One alarm from its beginning to its end, or one note, of the event log. */
struct AlarmRecord
{
    enum class Kind { Alarm, Loss, Note };

    /** The four states of alarm practice, those that want attention first; and of a note none. */
    enum class State { ActiveNew, ReturnedNew, ActiveSeen, ReturnedSeen, None };

    /** What is known of the end. */
    enum class End {
        Seen,      ///< it was told when it came
        Earlier,   ///< it was gone when it was looked at again
        Unwatched, ///< the device is no longer monitored
    };

    static constexpr int noFlag = -1;
    static constexpr int linkFlag = -2; ///< a note that the device communicates

    qint64 id = 0; ///< unique in the log, ascending
    QString device;
    Kind kind = Kind::Note;
    int flag = noFlag; ///< number of the plug-in's event, or one of those below 0
    QString text; ///< as it was said then; that of a flag follows the language when it is shown
    QDateTime began;
    QDateTime ended; ///< invalid while it is present
    End end = End::Seen;
    bool isAcknowledged = false;
    /** Whether its device has been heard of it since the program started; not kept. */
    bool isConfirmed = true;

    bool isActive() const { return kind != Kind::Note && !ended.isValid(); }
    /** It stays in sight: it is present, or nobody has acknowledged it yet. */
    bool isOpen() const { return kind != Kind::Note && (isActive() || !isAcknowledged); }
    bool wantsAcknowledging() const { return kind != Kind::Note && !isAcknowledged; }

    State state() const
    {
        if (kind == Kind::Note)
            return State::None;
        if (isActive())
            return isAcknowledged ? State::ActiveSeen : State::ActiveNew;
        return isAcknowledged ? State::ReturnedSeen : State::ReturnedNew;
    }

    Severity severity() const
    {
        if (kind == Kind::Loss)
            return Severity::Critical;
        return kind == Kind::Note ? Severity::Information : Severities::ofFlag(flag);
    }
};
