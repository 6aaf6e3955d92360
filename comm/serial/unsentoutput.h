#pragma once

#include <chrono>
#include <QtGlobal>

/**
 * What was written to a terminal and has not left it yet.
 *
 * A line may have stopped for good, for which the system would wait half a minute at each closing:
 * so the time is reckoned that a line needs which goes on.
 *
 * Threads:   confined to the thread that holds the port's lock.
 * Ownership: descriptors stay the caller's; -1 has nothing to send.
 */
class UnsentOutput
{
public:
    /** @param baud  at which the line sends */
    void noteWritten(int bytes, qint64 baud);

    /** True while the driver may still send; not when the line takes nothing. */
    bool isGoingOut(int descriptor) const;

    /** Waits for that, as long as the thread's StopSource does not ask, then drops the rest. Does
     *  nothing when nothing was written since the last time. */
    void finish(int descriptor);

    /** Drops what a driver holds back. */
    static void drop(int descriptor);

    static std::chrono::milliseconds timeFor(int bytes, qint64 baud);

private:
    std::chrono::steady_clock::time_point
        m_sentBy; // by then all is sent, if it can be; none without
};
