// A protocol driver without a protocol: it does what the test says.
#include "fakedriver.h"

#ifdef THROWS_AT_START
static const int started = []() -> int { throw 1; }();
#endif

#define EXPORTED extern "C" __attribute__((visibility("default")))

FakeDriver *fakeDriver()
{
    static FakeDriver driver;
    return &driver;
}

#ifndef WITHOUT_QUERY
EXPORTED int Query(PortDescriptor *port, int address, DataCallback callback, void *context)
{
    const auto action = fakeDriver()->query();
    const auto deliver = [=](int id, float value) { callback(id, value, context); };
    return action ? action(*port, address, deliver) : 1;
}
#endif

#ifndef WITHOUT_CONTROL
EXPORTED int Control(PortDescriptor *port, int unit, char *command, void *)
{
    fakeDriver()->controlledUnit = unit;
    const auto action = fakeDriver()->control();
    return action ? action(*port, command) : 1;
}
#endif
