#pragma once

#include <QtGlobal>

#include <ctime>

/** A clock in ms that never jumps, and goes on while the machine sleeps. */
inline qint64 trendClock()
{
    timespec now {};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}
