// Shows Qt's mutexes to ThreadSanitizer, which cannot see into Debian's uninstrumented Qt: without
// this, data guarded by a QMutex reads as a race. Linked into every executable of a tsan build,
// where these definitions come before those of Qt, which they call.

#include <QMutex>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

template <typename Function> Function next(const char *symbol)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, symbol));
}

} // namespace

void QMutex::lock() noexcept
{
    static const auto real = next<void (*)(QMutex *)>("_ZN6QMutex4lockEv");
    real(this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int timeout) noexcept
{
    static const auto real = next<bool (*)(QMutex *, int)>("_ZN6QMutex7tryLockEi");
    const bool locked = real(this, timeout);
    if (locked)
        __tsan_acquire(this);
    return locked;
}

void QMutex::unlock() noexcept
{
    static const auto real = next<void (*)(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    real(this);
}
