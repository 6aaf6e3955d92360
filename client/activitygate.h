#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

/**
 * Lets one thread at a time poll for a client, and lets the client's deletion wait for it.
 *
 * Threads: any; leave() in the thread that entered.
 */
class ActivityGate
{
public:
    /** Enters, unless a thread is inside already. */
    bool tryEnter();

    /** True in the thread that is inside. */
    bool isInside();

    /** Enters once nobody is inside. */
    void enter();

    /** Leaves; nothing of the gate's owner may be used afterwards: it may be gone. */
    void leave();

    /** Waits until no thread is inside; at once in the thread that is inside itself.
     *  @return true when nobody is inside */
    bool waitIdle(std::chrono::milliseconds timeout);

    /** Waits for as long as it takes. */
    void waitIdle();

    /** Has leave() call `action`, in the thread that leaves; at once when nobody is inside. A
     *  thread that is inside itself counts, other than with waitIdle(). */
    void whenIdle(const std::function<void()> &action);

private:
    bool isIdle() const { return m_inside == std::thread::id() || isOwn(); }
    bool isOwn() const { return m_inside == std::this_thread::get_id(); }

    std::mutex m_mutex;
    std::condition_variable m_left;
    std::thread::id m_inside;         // guarded by m_mutex; none when nobody is inside
    std::function<void()> m_whenIdle; // guarded by m_mutex
};
