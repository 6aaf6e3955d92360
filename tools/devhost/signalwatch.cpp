#include "signalwatch.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int watchedSignals[] = { SIGINT, SIGTERM, SIGHUP };
int pipeEnds[2] = { -1, -1 };

void noteSignal(int)
{
    const int saved = errno;
    const char byte = 0;
    // A full pipe means that a signal waits already.
    const ssize_t ignored = ::write(pipeEnds[1], &byte, 1);
    static_cast<void>(ignored);
    errno = saved;
}

void install(int number, void (*handler)(int), int flags)
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(number, &action, nullptr);
}

} // namespace

SignalWatch::SignalWatch(QObject *parent)
    : QObject(parent)
{
    install(SIGPIPE, SIG_IGN, 0);
    install(SIGTTIN, SIG_IGN, 0);
    if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        qFatal("no pipe for signals");
    auto *notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        if (::read(pipeEnds[0], &byte, 1) == 1)
            emit caught();
    });
    for (int number : watchedSignals)
        install(number, noteSignal, SA_RESTART | int(SA_RESETHAND));
}

SignalWatch::~SignalWatch()
{
    // What is left to do is short and removes files: a late signal must not cut it off.
    for (int number : watchedSignals)
        install(number, SIG_IGN, 0);
    ::close(pipeEnds[0]);
    ::close(pipeEnds[1]);
}
