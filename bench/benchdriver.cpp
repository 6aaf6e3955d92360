// A driver without a device: delivers 420 moving values a query and counts the queries.

#include "driverapi.h"

#include <atomic>
#include <unistd.h>

namespace {

constexpr int values = 420;
std::atomic<long> queries { 0 };
std::atomic<bool> hangs { false };

} // namespace

extern "C" {

__attribute__((visibility("default"))) int Query(PortDescriptor *, int, DataCallback callback,
                                                 void *context)
{
    while (hangs)
        usleep(1000);
    const long turn = queries.fetch_add(1) + 1;
    for (int i = 0; i < values; ++i) {
        // Event flags stay clear, so that a cycle is one report without alarms.
        const int id = i < 96 ? 2000 + i : i < 196 ? 3000 + i - 96 : 4000 + i - 196;
        callback(id, id < 3000 ? 0.0F : float(i + turn % 100), context);
    }
    return 1;
}

__attribute__((visibility("default"))) int Control(PortDescriptor *, int, char *, void *)
{
    return 1;
}

__attribute__((visibility("default"))) long benchQueries()
{
    return queries.load();
}

__attribute__((visibility("default"))) void benchHang(bool on)
{
    hangs = on;
}
}
