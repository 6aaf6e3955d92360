#pragma once

#include "wakeup.h"

#include <atomic>
#include <chrono>

class QMutex;

/**
 * One owner's wish that its blocking calls end: a flag and a descriptor that wakes a poll().
 *
 * Made so that nothing in a polling thread waits longer than a moment once its client is to be
 * deleted: the thread enters a Scope, and every wait below it looks at the source of its thread.
 *
 * Threads:   request() and requested() from any thread; a Scope in the thread that waits.
 * Ownership: must outlive the scopes made of it.
 * Errors:    without a WakeUp for want of descriptors waits look every 20 ms.
 */
class StopSource
{
public:
    /** Makes `source` the one that the calling thread's waits look at, while it lives. */
    class Scope
    {
    public:
        explicit Scope(const StopSource &source);
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        const StopSource *m_outer;
    };

    /** What a wait ended with. */
    enum class Wait { Ready, TimedOut, Stopped, Failed };

    StopSource();
    StopSource(const StopSource &) = delete;
    StopSource &operator=(const StopSource &) = delete;

    /** Ends the waits, those to come included; cannot be taken back. */
    void request();

    bool requested() const { return m_requested.load(std::memory_order_acquire); }

    /** True in a scope, as the threads are that poll for a client. */
    static bool isInScope();

    /** True when the calling thread is in a scope whose source was asked to stop. */
    static bool currentRequested();

    /** Waits until `descriptor` has one of `events` (POLLIN, POLLOUT), hangs up or fails.
     *  Ready also stands for a hang-up or an error: the transfer that follows tells which.
     *  @param descriptor  a descriptor, or -1 for a mere pause
     *  @return Failed (errno set) only when the wait itself was impossible */
    static Wait waitFor(int descriptor, short events, std::chrono::milliseconds timeout);

    /** Locks `mutex`, which the caller unlocks; false when asked to stop meanwhile. */
    [[nodiscard]] static bool lock(QMutex &mutex);

private:
    std::atomic<bool> m_requested { false };
    WakeUp m_wakeUp; // once stop is asked for
};
