#pragma once

#include <QtGlobal>

/** What the process holds at the moment. */
struct Resources
{
    int descriptors; ///< but those of terminals and traffic logs
    int lines;       ///< those: a port that is in use no more is closed within half a minute
    int threads;
    qint64 memory; ///< resident, KiB
    qint64 heap;   ///< allocated, KiB; 0 where valgrind has replaced the allocator
};

Resources currentResources();
