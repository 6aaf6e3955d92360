#pragma once

#include <QAbstractEventDispatcher>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

class WakeUp;

/**
 * The event loop of a client's thread, which needs no descriptor as long as no socket is watched.
 *
 * Qt's own takes one before the thread's run() begins, and without one GLib ends the process: a
 * host with more clients than descriptors would not live.
 *
 * Threads:   installed by QThread::setEventDispatcher() before the thread starts; wakeUp() and
 *            interrupt() from any thread, all else in that one.
 * Ownership: Qt deletes it when the thread ends; that of a thread which does not start is the
 *            installer's.
 * Errors:    with sockets, but no descriptor for waking, it looks every 20 ms.
 */
class ThreadLoop : public QAbstractEventDispatcher
{
public:
    ThreadLoop();
    ~ThreadLoop() override;

    bool processEvents(QEventLoop::ProcessEventsFlags flags) override;
    bool hasPendingEvents() override;
    void registerSocketNotifier(QSocketNotifier *notifier) override;
    void unregisterSocketNotifier(QSocketNotifier *notifier) override;
    using QAbstractEventDispatcher::registerTimer;
    void registerTimer(int id, int interval, Qt::TimerType type, QObject *object) override;
    bool unregisterTimer(int id) override;
    bool unregisterTimers(QObject *object) override;
    QList<TimerInfo> registeredTimers(QObject *object) const override;
    int remainingTime(int id) override;
    void wakeUp() override;
    void interrupt() override;
    void flush() override { }

private:
    using Clock = std::chrono::steady_clock;

    struct Timer
    {
        TimerInfo info;
        QObject *object;
        Clock::time_point due;
        bool isFiring; // its slot may run an event loop of its own
    };

    bool takeWakeUp();
    Clock::time_point nextDue() const;
    bool fireTimers();
    void waitUntil(Clock::time_point end);
    bool watchSockets(Clock::time_point end);
    bool notify(QSocketNotifier *notifier, short found);
    template <typename Condition> bool removeTimers(const Condition &condition);
    std::vector<Timer>::iterator timer(int id);

    std::vector<Timer> m_timers;
    std::vector<QSocketNotifier *> m_notifiers;
    std::mutex m_mutex;
    std::condition_variable m_woken;
    bool m_isWoken = false;           // guarded by m_mutex
    bool m_isInterrupted = false;     // guarded by m_mutex
    std::unique_ptr<WakeUp> m_wakeUp; // guarded by m_mutex; made for the first socket
};
