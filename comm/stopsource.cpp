#include "stopsource.h"

#include "exithold.h"
#include "timeleft.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <QMutex>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// How long a wait that nothing can wake goes on before it looks again.
constexpr milliseconds slice { 20 };

thread_local const StopSource *current = nullptr;

} // namespace

StopSource::Scope::Scope(const StopSource &source)
    : m_outer(current)
{
    current = &source;
    if (!m_outer)
        ExitHold::enter();
}

StopSource::Scope::~Scope()
{
    if (!m_outer)
        ExitHold::leave();
    current = m_outer;
}

StopSource::StopSource()
{
    ExitHold::prepare();
}

void StopSource::request()
{
    m_requested.store(true, std::memory_order_release);
    m_wakeUp.set();
}

bool StopSource::isInScope()
{
    return current != nullptr;
}

bool StopSource::currentRequested()
{
    return current && current->requested();
}

StopSource::Wait StopSource::waitFor(int descriptor, short events, milliseconds timeout)
{
    const ExitHold::Rest rest;
    // poll() ignores negative descriptors, so neither needs a case of its own.
    pollfd watched[] = { { descriptor, events, 0 },
                         { current ? current->m_wakeUp.descriptor() : -1, POLLIN, 0 } };
    const bool wakeable = !current || watched[1].fd >= 0;
    const auto deadline = steady_clock::now() + timeout;
    for (;;) {
        if (currentRequested())
            return Wait::Stopped;
        const auto left = timeLeft(deadline);
        const auto next = std::clamp(left, milliseconds(0), wakeable ? milliseconds(60000) : slice);
        const int ready = poll(watched, 2, int(next.count()));
        if (ready < 0 && errno != EINTR)
            return Wait::Failed;
        if (ready > 0 && watched[0].revents & POLLNVAL) {
            errno = EBADF;
            return Wait::Failed;
        }
        if (ready > 0 && watched[0].revents)
            return Wait::Ready;
        if (ready == 0 && left <= milliseconds(0))
            return Wait::TimedOut;
    }
}

bool StopSource::lock(QMutex &mutex)
{
    while (!mutex.tryLock(int(slice.count()))) {
        if (currentRequested())
            return false;
    }
    return true;
}
