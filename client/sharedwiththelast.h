#pragma once

#include <QMutex>
#include <QMutexLocker>

/**
 * The same value, sharing the memory of the one given last, if that was equal.
 *
 * Most devices of a host are configured alike: what a thousand clients keep of it, of an implicitly
 * shared type, would take megabytes.
 *
 * Threads: any. What is kept is never destroyed, as clients may live until the process is gone.
 */
template <typename T> T sharedWithTheLast(const T &value)
{
    static auto &mutex = *new QMutex;
    static auto &last = *new T; // guarded by mutex
    const QMutexLocker lock(&mutex);
    if (value != last)
        last = value;
    return last;
}
