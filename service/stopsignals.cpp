#include "stopsignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::array stopSignals { SIGTERM, SIGINT };
constexpr char stopByte = 's';
constexpr char doneByte = 'd';

int writeEnd = -1; // set before the handlers are, closed after they are gone

// Async-signal-safe. A full pipe already holds a wish.
void send(char byte)
{
    const int saved = errno;
    while (write(writeEnd, &byte, 1) < 0 && errno == EINTR) { }
    errno = saved;
}

void handleSignal(int)
{
    send(stopByte);
}

void setHandlers(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : stopSignals)
        sigaction(signal, &action, nullptr);
}

// False when nothing comes until the deadline.
bool readByte(int descriptor, char &byte, steady_clock::time_point deadline)
{
    for (;;) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
        if (left <= milliseconds(0))
            return false;
        pollfd watched { descriptor, POLLIN, 0 };
        const int wait = int(std::min(left, milliseconds(3600000)).count());
        if (poll(&watched, 1, wait) > 0 && read(descriptor, &byte, 1) == 1)
            return true;
    }
}

} // namespace

StopSignals::StopSignals(std::function<void()> stop, milliseconds limit, int exitCode)
    : m_stop(std::move(stop))
    , m_limit(limit)
    , m_exitCode(exitCode)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) < 0)
        return;
    m_readEnd = ends[0];
    writeEnd = ends[1];
    m_thread = std::thread(&StopSignals::watch, this);
    setHandlers(handleSignal);
}

StopSignals::~StopSignals()
{
    if (!isValid())
        return;
    setHandlers(SIG_DFL);
    send(doneByte);
    m_thread.join();
    close(m_readEnd);
    close(writeEnd);
    writeEnd = -1;
}

void StopSignals::request()
{
    send(stopByte);
}

void StopSignals::watch() const
{
    constexpr milliseconds unlimited = std::chrono::hours(24 * 365 * 10);
    auto deadline = steady_clock::now() + unlimited;
    bool stopping = false;
    char byte = 0;
    while (readByte(m_readEnd, byte, deadline)) {
        if (byte == doneByte)
            return;
        if (!stopping)
            m_stop();
        if (!stopping)
            deadline = steady_clock::now() + m_limit;
        stopping = true;
    }
    constexpr char text[] = "The service did not stop in time: it is ended.\n";
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text, sizeof text - 1);
    _exit(m_exitCode); // no destructors: the main thread hangs among its objects
}
