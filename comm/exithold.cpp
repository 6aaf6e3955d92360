#include "exithold.h"

#include "stopsource.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <QLocale>
#include <QLoggingCategory>
#include <QMetaType>
#include <QTcpSocket>
#include <QTextCodec>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr auto longestWait = 300ms; // of exit()
constexpr auto slice = 1ms;
constexpr auto heldSlice = 20ms;

std::atomic<bool> isExiting { false };
std::atomic<int> polling { 0 };
std::atomic<int> resting { 0 }; // of them
std::atomic<unsigned> prepared { 0 };
thread_local bool isExitThread = false;
thread_local bool isPolling = false;

// Has Qt make what polling threads use, so that it is destroyed behind the handler.
void makeGlobals()
{
    QLocale().decimalPoint();
    QTextCodec::codecForLocale();
    QLoggingCategory::defaultCategory();
    static_cast<void>(QTcpSocket());
    qRegisterMetaType<QList<int>>(); // the first of a program's own makes the registry of all
}

void waitForPollingThreads()
{
    isExitThread = true;
    if (isExiting.exchange(true))
        return;
    const auto deadline = std::chrono::steady_clock::now() + longestWait;
    while (resting < polling && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(slice);
}

void hold()
{
    if (!isExiting || !isPolling || isExitThread)
        return;
    ++resting;
    while (!StopSource::currentRequested())
        std::this_thread::sleep_for(heldSlice);
    --resting;
}

} // namespace

void ExitHold::prepare()
{
    // Whatever is made later is destroyed before the handler runs: so it is registered again now and
    // then, while there is more to come.
    const unsigned count = ++prepared;
    if ((count & (count - 1)) != 0)
        return;
    makeGlobals();
    std::atexit(waitForPollingThreads);
}

void ExitHold::enter()
{
    isPolling = true;
    ++polling;
    hold();
    prepare(); // counted from here on: exit() waits for what is amid something
}

void ExitHold::leave()
{
    isPolling = false;
    --polling;
}

ExitHold::Rest::Rest()
    : m_counts(isPolling)
{
    if (m_counts)
        ++resting;
}

ExitHold::Rest::~Rest()
{
    if (!m_counts)
        return;
    --resting;
    hold();
}
