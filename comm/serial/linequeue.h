#pragma once

#include <chrono>
#include <mutex>
#include <vector>

class QMutex;

/**
 * The order in which threads asked for a line: who may lock the line's mutex next.
 *
 * Stands beside the mutex rather than in its place: the mutex is known to others, who lock it
 * without queueing. A mutex alone gives its threads no order, and one that is tried in slices, so
 * that a stop can end the wait, never gets anywhere beside a thread that locks it again at once.
 *
 * Threads:   any.
 * Ownership: knows the places of those who wait, which live on their stacks.
 * Errors:    false when the wait was given up; the mutex is not locked then.
 */
class LineQueue
{
public:
    /** How long a thread stays in the queue. */
    enum class Patience {
        Endless,
        UntilStopped, ///< until the thread's StopSource asks
        OfHost,       ///< `hostPatience`, or until the thread's StopSource asks
    };

    /** What the host's thread, which draws its windows, spends on a line that is in use. */
    static constexpr std::chrono::milliseconds hostPatience { 35 };

    LineQueue() = default;
    LineQueue(const LineQueue &) = delete;
    LineQueue &operator=(const LineQueue &) = delete;

    /** Locks `mutex`, which the caller unlocks, after everybody who asked before. */
    [[nodiscard]] bool lock(QMutex &mutex, Patience patience);

private:
    class Place;

    std::mutex m_mutex;            // never held while waiting for the line
    std::vector<Place *> m_places; // first come, first served; guarded by m_mutex
};
