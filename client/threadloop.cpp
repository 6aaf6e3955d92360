#include "threadloop.h"

#include "timeleft.h"
#include "wakeup.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <algorithm>
#include <poll.h>
#include <utility>

namespace {

using std::chrono::milliseconds;

// How long a wait goes on that nothing can wake.
constexpr milliseconds slice { 20 };
// Of poll(), which the loop then begins anew.
constexpr milliseconds longestWait { 60000 };

struct KindRow
{
    QSocketNotifier::Type type;
    short asked;
    short told;
};

constexpr KindRow kinds[] = {
    { QSocketNotifier::Read, POLLIN, POLLIN | POLLHUP | POLLERR },
    { QSocketNotifier::Write, POLLOUT, POLLOUT | POLLHUP | POLLERR },
    { QSocketNotifier::Exception, POLLPRI, POLLPRI | POLLHUP | POLLERR },
};

} // namespace

ThreadLoop::ThreadLoop() = default;

ThreadLoop::~ThreadLoop() = default;

bool ThreadLoop::processEvents(QEventLoop::ProcessEventsFlags flags)
{
    // What wakes it from here on keeps it from waiting in the next turn, or the wait below.
    const bool wasWoken = takeWakeUp();
    emit awake();
    QCoreApplication::sendPostedEvents();
    const bool waits = flags.testFlag(QEventLoop::WaitForMoreEvents) && !wasWoken;
    if (waits)
        emit aboutToBlock();
    const Clock::time_point end = waits ? nextDue() : Clock::time_point();
    bool hasWorked = wasWoken;
    if (!m_notifiers.empty() && !flags.testFlag(QEventLoop::ExcludeSocketNotifiers))
        hasWorked = watchSockets(end) || hasWorked;
    else if (waits)
        waitUntil(end);
    if (waits)
        emit awake();
    if ((std::lock_guard(m_mutex), m_isInterrupted))
        return hasWorked;
    return fireTimers() || hasWorked;
}

bool ThreadLoop::takeWakeUp()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isInterrupted = false;
    if (m_isWoken && m_wakeUp)
        m_wakeUp->clear();
    return std::exchange(m_isWoken, false);
}

bool ThreadLoop::hasPendingEvents()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isWoken;
}

void ThreadLoop::wakeUp()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isWoken = true;
    m_woken.notify_one();
    if (m_wakeUp)
        m_wakeUp->set();
}

void ThreadLoop::interrupt()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isInterrupted = true;
    }
    wakeUp();
}

void ThreadLoop::waitUntil(Clock::time_point end)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const auto isWoken = [this] { return m_isWoken; };
    if (end == Clock::time_point::max())
        m_woken.wait(lock, isWoken);
    else
        m_woken.wait_until(lock, end, isWoken);
}

bool ThreadLoop::watchSockets(Clock::time_point end)
{
    const std::vector<QSocketNotifier *> notifiers = m_notifiers;
    std::vector<pollfd> watched;
    for (const QSocketNotifier *notifier : notifiers)
        watched.push_back({ int(notifier->socket()), kinds[notifier->type()].asked, 0 });
    const int wakeUp = m_wakeUp->descriptor();
    watched.push_back({ wakeUp, POLLIN, 0 });
    const Clock::time_point now = Clock::now();
    const milliseconds longest = wakeUp < 0 ? slice : longestWait;
    const auto limit = end <= now ? milliseconds(0)
        : end - now > longest     ? longest
                                  : std::chrono::ceil<milliseconds>(end - now);
    if (poll(watched.data(), watched.size(), int(limit.count())) <= 0)
        return false;
    bool hasWorked = false;
    for (size_t i = 0; i < notifiers.size(); ++i)
        hasWorked = notify(notifiers[i], watched[i].revents) || hasWorked;
    return hasWorked;
}

bool ThreadLoop::notify(QSocketNotifier *notifier, short found)
{
    // What was told before may have removed it.
    if (!found || std::find(m_notifiers.begin(), m_notifiers.end(), notifier) == m_notifiers.end())
        return false;
    if (found & POLLNVAL) {
        qWarning("ThreadLoop: a socket that is watched has been closed");
        notifier->setEnabled(false);
        return false;
    }
    if (!(found & kinds[notifier->type()].told))
        return false;
    QEvent event(QEvent::SockAct);
    QCoreApplication::sendEvent(notifier, &event);
    return true;
}

void ThreadLoop::registerSocketNotifier(QSocketNotifier *notifier)
{
    m_notifiers.push_back(notifier);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_wakeUp)
        return;
    m_wakeUp = std::make_unique<WakeUp>();
    if (m_isWoken)
        m_wakeUp->set();
}

void ThreadLoop::unregisterSocketNotifier(QSocketNotifier *notifier)
{
    m_notifiers.erase(std::remove(m_notifiers.begin(), m_notifiers.end(), notifier),
                      m_notifiers.end());
}

ThreadLoop::Clock::time_point ThreadLoop::nextDue() const
{
    auto first = Clock::time_point::max();
    for (const Timer &timer : m_timers) {
        if (!timer.isFiring)
            first = std::min(first, timer.due);
    }
    return first;
}

// Those that are due now, each once, in the order of their times.
bool ThreadLoop::fireTimers()
{
    const Clock::time_point now = Clock::now();
    std::vector<std::pair<Clock::time_point, int>> due;
    for (const Timer &timer : m_timers) {
        if (!timer.isFiring && timer.due <= now)
            due.emplace_back(timer.due, timer.info.timerId);
    }
    std::sort(due.begin(), due.end());
    for (const auto &[time, id] : due) {
        auto found = timer(id);
        if (found == m_timers.end()) // another one's slot has stopped it
            continue;
        const milliseconds interval(found->info.interval);
        found->due += interval;
        if (found->due < now)
            found->due = now + interval;
        found->isFiring = true;
        QTimerEvent event(id);
        QCoreApplication::sendEvent(found->object, &event);
        found = timer(id);
        if (found != m_timers.end())
            found->isFiring = false;
    }
    return !due.empty();
}

void ThreadLoop::registerTimer(int id, int interval, Qt::TimerType type, QObject *object)
{
    const auto due = Clock::now() + milliseconds(interval);
    m_timers.push_back({ TimerInfo(id, interval, type), object, due, false });
}

template <typename Condition> bool ThreadLoop::removeTimers(const Condition &condition)
{
    const auto end = std::remove_if(m_timers.begin(), m_timers.end(), condition);
    const bool isAny = end != m_timers.end();
    m_timers.erase(end, m_timers.end());
    return isAny;
}

bool ThreadLoop::unregisterTimer(int id)
{
    return removeTimers([id](const Timer &timer) { return timer.info.timerId == id; });
}

bool ThreadLoop::unregisterTimers(QObject *object)
{
    return removeTimers([object](const Timer &timer) { return timer.object == object; });
}

QList<QAbstractEventDispatcher::TimerInfo> ThreadLoop::registeredTimers(QObject *object) const
{
    QList<TimerInfo> result;
    for (const Timer &timer : m_timers) {
        if (timer.object == object)
            result.append(timer.info);
    }
    return result;
}

int ThreadLoop::remainingTime(int id)
{
    const auto found = timer(id);
    if (found == m_timers.end())
        return -1;
    return int(std::max(timeLeft(found->due), milliseconds(0)).count());
}

std::vector<ThreadLoop::Timer>::iterator ThreadLoop::timer(int id)
{
    return std::find_if(m_timers.begin(), m_timers.end(),
                        [id](const Timer &timer) { return timer.info.timerId == id; });
}
