#include "tcpconnect.h"

#include "latestfaults.h"
#include "stopsource.h"
#include "timeleft.h"
#include "wakeup.h"

#include <cerrno>
#include <cstring>
#include <future>
#include <map>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <QDebug>
#include <QTcpSocket>
#include <string>
#include <sys/socket.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// How long data may stay unacknowledged: a peer that was cut off counts as lost then, instead of
// after a quarter of an hour.
constexpr unsigned unacknowledgedLimit = 20000; // ms
constexpr milliseconds lookUpSlice { 20 };

struct Address
{
    sockaddr_storage storage = {};
    socklen_t length = 0;
};

struct LookUp
{
    std::vector<Address> addresses; // without a port
    std::string failure;            // empty for none
};

LookUp lookUp(const QByteArray &host, int flags)
{
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = flags;
    addrinfo *list = nullptr;
    const int error = getaddrinfo(host.constData(), nullptr, &hints, &list);
    if (error)
        return { {}, error == EAI_SYSTEM ? strerror(errno) : gai_strerror(error) };
    LookUp result;
    for (const addrinfo *entry = list; entry; entry = entry->ai_next) {
        Address address;
        memcpy(&address.storage, entry->ai_addr, entry->ai_addrlen);
        address.length = entry->ai_addrlen;
        result.addresses.push_back(address);
    }
    freeaddrinfo(list);
    return result;
}

bool isReady(const std::shared_future<LookUp> &answer)
{
    return answer.wait_for(milliseconds(0)) == std::future_status::ready;
}

// Names are looked up in a thread of their own, which is left behind when there is no time to
// wait for it: the resolver can neither be stopped nor limited. Who asks for a name that is being
// looked up waits for the same answer, so that a resolver which hangs holds one thread a name.
std::shared_future<LookUp> startLookUp(const QByteArray &host)
{
    using LookUps = std::map<QByteArray, std::shared_future<LookUp>>;
    // Never destroyed: polling threads use them while the process exits.
    static QMutex &mutex = *new QMutex;
    static LookUps &running = *new LookUps; // by host; guarded by mutex
    const QMutexLocker lock(&mutex);
    for (auto it = running.begin(); it != running.end();)
        it = isReady(it->second) ? running.erase(it) : std::next(it);
    const auto found = running.find(host);
    if (found != running.end())
        return found->second;
    std::packaged_task<LookUp()> task([host] { return lookUp(host, AI_ADDRCONFIG); });
    std::shared_future<LookUp> answer = task.get_future().share();
    std::thread(std::move(task)).detach();
    running.emplace(host, answer);
    return answer;
}

LookUp lookUpName(const QByteArray &host, steady_clock::time_point deadline)
{
    try {
        const std::shared_future<LookUp> answer = startLookUp(host);
        while (!isReady(answer)) {
            if (steady_clock::now() >= deadline
                || StopSource::waitFor(-1, 0, lookUpSlice) == StopSource::Wait::Stopped)
                return { {}, gai_strerror(EAI_AGAIN) };
        }
        return answer.get();
    } catch (const std::system_error &error) { // the process has as many threads as it may
        return { {}, std::string("no thread to look it up: ") + error.what() };
    }
}

void setPort(Address &address, quint16 port)
{
    if (address.storage.ss_family == AF_INET6)
        reinterpret_cast<sockaddr_in6 &>(address.storage).sin6_port = htons(port);
    else
        reinterpret_cast<sockaddr_in &>(address.storage).sin_port = htons(port);
}

std::error_code systemError(int error)
{
    return { error, std::generic_category() };
}

std::error_code finishConnecting(int descriptor, steady_clock::time_point deadline)
{
    const auto left = timeLeft(deadline);
    switch (StopSource::waitFor(descriptor, POLLOUT, std::max(left, milliseconds(0)))) {
    case StopSource::Wait::Ready:
        break;
    case StopSource::Wait::TimedOut:
        return systemError(ETIMEDOUT);
    case StopSource::Wait::Stopped:
        return systemError(ECANCELED);
    case StopSource::Wait::Failed:
        return systemError(errno);
    }
    int error = 0;
    socklen_t length = sizeof error;
    const int failed = getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &length);
    return systemError(failed ? errno : error);
}

// Hands `socket` a connection to `address`.
std::error_code connectTo(QTcpSocket &socket, const Address &address,
                          steady_clock::time_point deadline)
{
    const int descriptor = affordable(
        ::socket(address.storage.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0),
        DescriptorUse::Needed);
    if (descriptor < 0)
        return systemError(errno);
    const auto *target = reinterpret_cast<const sockaddr *>(&address.storage);
    const int failed = ::connect(descriptor, target, address.length);
    std::error_code error = systemError(failed ? errno : 0);
    if (error == std::errc::operation_in_progress)
        error = finishConnecting(descriptor, deadline);
    if (!error) {
        const int on = 1;
        setsockopt(descriptor, SOL_SOCKET, SO_KEEPALIVE, &on, sizeof on);
        setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        setsockopt(descriptor, IPPROTO_TCP, TCP_USER_TIMEOUT, &unacknowledgedLimit,
                   sizeof unacknowledgedLimit);
        if (socket.setSocketDescriptor(descriptor))
            return {};
        error = systemError(EBADF);
    }
    close(descriptor);
    return error;
}

// Returns why there is no connection; nothing when there is one.
std::string connectToOneOf(QTcpSocket &socket, std::vector<Address> &addresses, quint16 port,
                           steady_clock::time_point deadline)
{
    std::error_code error = systemError(EADDRNOTAVAIL);
    auto untried = int(addresses.size());
    for (Address &address : addresses) {
        setPort(address, port);
        // One that does not answer leaves the others their share of the time.
        const auto now = steady_clock::now();
        error = connectTo(socket, address, now + (deadline - now) / untried--);
        if (!error)
            return {};
        if (StopSource::currentRequested())
            break;
    }
    return error.message();
}

} // namespace

bool connectToPeer(QTcpSocket &socket, const QString &host, quint16 port,
                   std::chrono::milliseconds timeout)
{
    const auto deadline = steady_clock::now() + timeout;
    socket.abort();
    const QByteArray name = host.toUtf8();
    LookUp peer = lookUp(name, AI_NUMERICHOST);
    if (!peer.failure.empty() && !name.isEmpty())
        peer = lookUpName(name, deadline);
    const std::string failure = peer.failure.empty()
        ? connectToOneOf(socket, peer.addresses, port, deadline)
        : peer.failure;
    if (!failure.empty() && StopSource::currentRequested())
        return false; // which tells nothing about the peer

    // Clients try every few seconds, for days if need be.
    static LatestFaults &faults = *new LatestFaults;
    const QString subject = QStringLiteral("%1 port %2").arg(host).arg(port);
    if (faults.isNew(subject, QString::fromStdString(failure)))
        qDebug("connectToPeer: no connection to %s: %s", qUtf8Printable(subject), failure.c_str());
    return failure.empty();
}
