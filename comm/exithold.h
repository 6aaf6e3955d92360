#pragma once

/**
 * Holds the polling threads while the process exits, so that none meets what is being destroyed.
 *
 * A host may call exit() with clients at work, whose threads then go on beside the destructors of
 * Qt's globals and the host's. From the begin of exit() on they stay where they wait, until their
 * StopSource asks: who deletes a client in a destructor gets its thread to end. exit() in turn
 * waits a moment for those that are amid something.
 *
 * Threads: all functions but prepare() in the polling threads; the thread that exits is never held.
 */
class ExitHold
{
public:
    /** Sees to it that exit() looks for polling threads. In any thread, before a polling one begins:
     *  one that begins while the process exits is held only then. */
    static void prepare();

    /** Counts the calling thread as one that polls. */
    static void enter();
    static void leave();

    /** While it lives, the thread does nothing that destroyed globals would disturb. */
    class Rest
    {
    public:
        Rest();
        ~Rest();
        Rest(const Rest &) = delete;
        Rest &operator=(const Rest &) = delete;

    private:
        const bool m_counts; // the thread is one that polls
    };
};
