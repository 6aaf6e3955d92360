#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

/**
 * Lets one thread at a time poll for a client, and lets the client's deletion wait for it.
 *
 * Threads: any.
 */
class ActivityGate
{
public:
    /**
     * A thread's stay inside; it ends with the object, whatever ends the thread's work: a return,
     * an exception or the thread's cancellation. In the thread that entered.
     */
    class Pass
    {
    public:
        explicit Pass(ActivityGate *gate = nullptr)
            : m_gate(gate)
        {
        }
        Pass(Pass &&other) noexcept
            : m_gate(other.m_gate)
        {
            other.m_gate = nullptr;
        }
        /** Nothing of the gate's owner may be used afterwards: it may be gone. */
        ~Pass()
        {
            if (m_gate)
                m_gate->leave();
        }
        Pass &operator=(Pass &&) = delete;

        /** False when somebody else is inside. */
        explicit operator bool() const { return m_gate != nullptr; }

    private:
        ActivityGate *m_gate;
    };

    /** Enters, unless a thread is inside already. */
    [[nodiscard]] Pass tryEnter();

    /** Enters once nobody is inside. */
    [[nodiscard]] Pass enter();

    /** True in the thread that is inside. */
    bool isInside();

    /** Waits until no thread is inside; at once in the thread that is inside itself.
     *  @return true when nobody is inside */
    bool waitIdle(std::chrono::milliseconds timeout);

    /** Waits for as long as it takes. */
    void waitIdle();

    /** Has the thread that is inside call `action` as the last thing before it has left; at once
     *  when nobody is inside. A thread that is inside itself counts, other than with waitIdle(). */
    void whenIdle(const std::function<void()> &action);

private:
    void leave();
    bool isIdle() const { return m_inside == std::thread::id() || isOwn(); }
    bool isOwn() const { return m_inside == std::this_thread::get_id(); }

    std::mutex m_mutex;
    std::condition_variable m_left;
    std::thread::id m_inside;         // guarded by m_mutex; none when nobody is inside
    std::function<void()> m_whenIdle; // guarded by m_mutex
};
