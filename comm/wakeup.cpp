#include "wakeup.h"

#include <atomic>
#include <cerrno>
#include <QDebug>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr rlim_t leftToHost = 32;

void warnOfShortage(rlim_t limit)
{
    static std::atomic_flag isWarned = ATOMIC_FLAG_INIT;
    if (!isWarned.test_and_set())
        qWarning("WakeUp: of %llu file descriptors (RLIMIT_NOFILE) half are in use. Each client "
                 "needs two for its connection or its port, a shared port once; new ones do "
                 "without those that only save time, and the last %llu are left to the host",
                 static_cast<unsigned long long>(limit),
                 static_cast<unsigned long long>(leftToHost));
}

} // namespace

int affordable(int descriptor, DescriptorUse use)
{
    const int error = errno;
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    if (descriptor < 0) {
        if (error == EMFILE)
            warnOfShortage(limit.rlim_cur);
        errno = error;
        return -1;
    }
    const rlim_t half = limit.rlim_cur / 2;
    // The lowest that was free: that many are in use.
    const auto used = rlim_t(descriptor);
    if (used >= half)
        warnOfShortage(limit.rlim_cur);
    if (used < half || (use == DescriptorUse::Needed && used + leftToHost < limit.rlim_cur))
        return descriptor;
    close(descriptor);
    errno = EMFILE;
    return -1;
}

bool isAffordable(DescriptorUse use)
{
    const int probe = affordable(eventfd(0, EFD_CLOEXEC), use);
    if (probe >= 0)
        close(probe);
    return probe >= 0;
}

WakeUp::WakeUp()
    : m_descriptor(affordable(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), DescriptorUse::Helpful))
{
}

WakeUp::~WakeUp()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

void WakeUp::set() const
{
    if (m_descriptor >= 0)
        eventfd_write(m_descriptor, 1);
}

void WakeUp::clear() const
{
    eventfd_t count = 0;
    if (m_descriptor >= 0)
        eventfd_read(m_descriptor, &count);
}
