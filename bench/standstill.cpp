#include "standstill.h"

#include <QEventLoop>

#include <ctime>

using namespace std::chrono_literals;

namespace {

constexpr auto tickTime = 1ms;

double threadWorkMs()
{
    timespec time {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

} // namespace

void process(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

StandStill::StandStill()
{
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &StandStill::tick);
    m_workBefore = threadWorkMs();
    m_clock.start();
    m_timer.start(tickTime);
}

void StandStill::tick()
{
    constexpr double tickMs = std::chrono::duration<double, std::milli>(tickTime).count();
    m_longestMs = qMax(m_longestMs, double(m_clock.nsecsElapsed()) / 1e6 - tickMs);
    m_longestWorkMs = qMax(m_longestWorkMs, threadWorkMs() - m_workBefore);
    m_workBefore = threadWorkMs();
    m_clock.restart();
}
