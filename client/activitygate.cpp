#include "activitygate.h"

#include <utility>

bool ActivityGate::tryEnter()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_inside != std::thread::id())
        return false;
    m_inside = std::this_thread::get_id();
    return true;
}

bool ActivityGate::isInside()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return isOwn();
}

void ActivityGate::enter()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_left.wait(lock, [this] { return m_inside == std::thread::id(); });
    m_inside = std::this_thread::get_id();
}

void ActivityGate::leave()
{
    // All under the lock: a waiting destructor goes on only when this thread is done here.
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_inside = std::thread::id();
    if (const auto action = std::exchange(m_whenIdle, nullptr))
        action();
    m_left.notify_all();
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
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_inside == std::thread::id())
        action();
    else
        m_whenIdle = action;
}
