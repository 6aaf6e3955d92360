#include "tcpconnect.h"

#include "stopsource.h"

#include <cerrno>
#include <cstring>
#include <future>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <QDebug>
#include <QTcpSocket>
#include <sys/socket.h>
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
    std::vector<Address> addresses;
    int error = 0; // of getaddrinfo()
};

LookUp lookUp(const QByteArray &host, const QByteArray &port, int flags)
{
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = flags | AI_NUMERICSERV;
    addrinfo *list = nullptr;
    LookUp result;
    result.error = getaddrinfo(host.constData(), port.constData(), &hints, &list);
    for (const addrinfo *entry = list; !result.error && entry; entry = entry->ai_next) {
        Address address;
        memcpy(&address.storage, entry->ai_addr, entry->ai_addrlen);
        address.length = entry->ai_addrlen;
        result.addresses.push_back(address);
    }
    if (list)
        freeaddrinfo(list);
    return result;
}

// Names are looked up in a thread of their own, which is left behind when there is no time to
// wait for it: the resolver can neither be stopped nor limited.
LookUp lookUpName(const QByteArray &host, const QByteArray &port, steady_clock::time_point deadline)
{
    std::packaged_task<LookUp()> task([host, port] { return lookUp(host, port, AI_ADDRCONFIG); });
    std::future<LookUp> result = task.get_future();
    std::thread(std::move(task)).detach();
    while (result.wait_for(milliseconds(0)) != std::future_status::ready) {
        if (steady_clock::now() >= deadline
            || StopSource::waitFor(-1, 0, lookUpSlice) == StopSource::Wait::Stopped)
            return { {}, EAI_AGAIN };
    }
    return result.get();
}

// Returns 0 or an errno value.
int finishConnecting(int descriptor, steady_clock::time_point deadline)
{
    const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
    switch (StopSource::waitFor(descriptor, POLLOUT, std::max(left, milliseconds(0)))) {
    case StopSource::Wait::Ready:
        break;
    case StopSource::Wait::TimedOut:
        return ETIMEDOUT;
    case StopSource::Wait::Stopped:
        return ECANCELED;
    case StopSource::Wait::Failed:
        return errno;
    }
    int error = 0;
    socklen_t length = sizeof error;
    return getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &length) == 0 ? error : errno;
}

// Hands `socket` a connection to `address`; returns 0 or an errno value.
int connectTo(QTcpSocket &socket, const Address &address, steady_clock::time_point deadline)
{
    const int descriptor =
        ::socket(address.storage.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return errno;
    const auto *target = reinterpret_cast<const sockaddr *>(&address.storage);
    int error = ::connect(descriptor, target, address.length) == 0 ? 0 : errno;
    if (error == EINPROGRESS)
        error = finishConnecting(descriptor, deadline);
    if (!error) {
        const int on = 1;
        setsockopt(descriptor, SOL_SOCKET, SO_KEEPALIVE, &on, sizeof on);
        setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        setsockopt(descriptor, IPPROTO_TCP, TCP_USER_TIMEOUT, &unacknowledgedLimit,
                   sizeof unacknowledgedLimit);
        if (socket.setSocketDescriptor(descriptor))
            return 0;
        error = EBADF;
    }
    close(descriptor);
    return error;
}

} // namespace

bool connectToPeer(QTcpSocket &socket, const QString &host, quint16 port,
                   std::chrono::milliseconds timeout)
{
    const auto deadline = steady_clock::now() + timeout;
    if (socket.state() != QAbstractSocket::UnconnectedState || socket.isOpen())
        socket.abort();
    const QByteArray name = host.toUtf8();
    const QByteArray service = QByteArray::number(port);
    LookUp peer = lookUp(name, service, AI_NUMERICHOST);
    if (peer.error && !name.isEmpty())
        peer = lookUpName(name, service, deadline);

    const char *reason = peer.error ? gai_strerror(peer.error) : "no address";
    for (const Address &address : peer.addresses) {
        const int error = connectTo(socket, address, deadline);
        if (!error)
            return true;
        reason = strerror(error);
        if (StopSource::currentRequested())
            break;
    }
    qDebug("connectToPeer: no connection to %s port %d: %s", name.constData(), int(port), reason);
    return false;
}
