#include "activitygate.h"

#include <utility>

ActivityGate::Pass ActivityGate::tryEnter()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_inside != std::thread::id())
        return Pass();
    m_inside = std::this_thread::get_id();
    return Pass(this);
}

ActivityGate::Pass ActivityGate::enter()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_left.wait(lock, [this] { return m_inside == std::thread::id(); });
    m_inside = std::this_thread::get_id();
    return Pass(this);
}

bool ActivityGate::isInside()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return isOwn();
}

// The thread counts as inside until its last call out has returned: a destructor that waits for it
// must not go on before.
void ActivityGate::leave()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (const auto action = std::exchange(m_whenIdle, nullptr)) {
        lock.unlock();
        action();
        lock.lock();
    }
    m_inside = std::thread::id();
    m_left.notify_all(); // under the lock, with which the gate may end
}

bool ActivityGate::waitIdle(std::chrono::milliseconds timeout)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_left.wait_for(lock, timeout, [this] { return isIdle(); });
}

void ActivityGate::waitIdle()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_left.wait(lock, [this] { return isIdle(); });
}

void ActivityGate::whenIdle(const std::function<void()> &action)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_inside != std::thread::id()) {
            m_whenIdle = action;
            return;
        }
    }
    action();
}
