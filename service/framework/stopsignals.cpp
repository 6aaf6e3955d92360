#include "stopsignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::array stopSignals { SIGTERM, SIGINT, SIGHUP };
constexpr char stopByte = 's';
constexpr char doneByte = 'd';

std::array<struct sigaction, stopSignals.size()> previousActions;
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

void restoreHandlers()
{
    for (size_t i = 0; i < stopSignals.size(); ++i)
        sigaction(stopSignals[i], &previousActions[i], nullptr);
}

void setHandlers()
{
    struct sigaction action = {};
    action.sa_handler = handleSignal;
    action.sa_flags = SA_RESTART;
    for (size_t i = 0; i < stopSignals.size(); ++i) {
        sigaction(stopSignals[i], nullptr, &previousActions[i]);
        // A program that was started with nohup shall outlive the terminal.
        if (stopSignals[i] != SIGHUP || previousActions[i].sa_handler != SIG_IGN)
            sigaction(stopSignals[i], &action, nullptr);
    }
}

// Nothing when nothing comes until the deadline.
std::optional<char> readByte(int descriptor, steady_clock::time_point deadline)
{
    for (char byte = 0;;) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
        if (left <= milliseconds(0))
            return std::nullopt;
        pollfd watched { descriptor, POLLIN, 0 };
        const int wait = int(std::min(left, milliseconds(3600000)).count());
        if (poll(&watched, 1, wait) > 0 && read(descriptor, &byte, 1) == 1)
            return byte;
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
    setHandlers();
}

StopSignals::~StopSignals()
{
    if (!isValid())
        return;
    restoreHandlers();
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
    while (const auto byte = readByte(m_readEnd, deadline)) {
        if (*byte == doneByte)
            return;
        if (std::exchange(stopping, true))
            continue;
        m_stop();
        deadline = steady_clock::now() + m_limit;
    }
    constexpr char text[] = "The service did not stop in time: it is ended.\n";
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text, sizeof text - 1);
    _exit(m_exitCode); // no destructors: the main thread hangs among its objects
}
