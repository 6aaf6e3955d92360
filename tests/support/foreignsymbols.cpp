// A library that a host may have loaded before, with names that the plug-in exports too.
#define FOREIGN extern "C" __attribute__((visibility("default")))

namespace {
int calls = 0;
}

FOREIGN int foreignCalls()
{
    return calls;
}

#define FOREIGN_FUNCTION(name)                                                                     \
    FOREIGN int name()                                                                             \
    {                                                                                              \
        return ++calls, 0;                                                                         \
    }

FOREIGN_FUNCTION(tavoDataProce)
FOREIGN_FUNCTION(CommRead)
FOREIGN_FUNCTION(CommWrite)
FOREIGN_FUNCTION(setModbusCRC)
FOREIGN_FUNCTION(checkModbufCRC)
