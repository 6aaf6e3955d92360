#include "loopbackdevice.h"

#include <array>
#include <cstdlib>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

constexpr int requestSize = 12; // transaction, protocol, length, unit, function, address, count
constexpr int headerSize = 9;   // up to the byte count of a reply
constexpr int readBits = 2;
constexpr int backlog = 4096;

using Bytes = std::array<unsigned char, 300>;

// The reply to a read; its size.
std::size_t answer(const Bytes &request, Bytes &reply, unsigned round)
{
    const bool isBits = request[7] == readBits;
    const unsigned count = unsigned(request[10] << 8 | request[11]);
    const std::size_t payload = isBits ? (count + 7) / 8 : 2 * count;
    std::copy(request.begin(), request.begin() + 8, reply.begin());
    reply[4] = static_cast<unsigned char>((payload + 3) >> 8);
    reply[5] = static_cast<unsigned char>(payload + 3);
    reply[8] = static_cast<unsigned char>(payload);
    for (std::size_t i = 0; i < payload; ++i)
        reply[headerSize + i] =
            static_cast<unsigned char>(isBits || i % 2 == 0 ? 0 : (i + round) % 200);
    return headerSize + payload;
}

// A peer sends one whole request at a time; anything else ends its connection.
bool serve(int peer, unsigned round)
{
    Bytes request {};
    Bytes reply {};
    if (recv(peer, request.data(), requestSize, 0) != requestSize)
        return false;
    const std::size_t size = answer(request, reply, round);
    return send(peer, reply.data(), size, MSG_NOSIGNAL) == ssize_t(size);
}

void watch(int epoll, int descriptor)
{
    epoll_event event {};
    event.events = EPOLLIN;
    event.data.fd = descriptor;
    epoll_ctl(epoll, EPOLL_CTL_ADD, descriptor, &event);
}

[[noreturn]] void serveAll(int listener)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int epoll = epoll_create1(EPOLL_CLOEXEC);
    watch(epoll, listener);
    std::array<epoll_event, 64> events {};
    for (unsigned round = 0;; ++round) {
        const int ready = epoll_wait(epoll, events.data(), int(events.size()), -1);
        for (int i = 0; i < ready; ++i) {
            const int descriptor = events[std::size_t(i)].data.fd;
            if (descriptor != listener) {
                if (!serve(descriptor, round))
                    close(descriptor);
                continue;
            }
            const int peer = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
            const int on = 1;
            setsockopt(peer, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
            watch(epoll, peer);
        }
    }
}

} // namespace

LoopbackDevice::LoopbackDevice()
{
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(listener, reinterpret_cast<sockaddr *>(&address), size) != 0
        || listen(listener, backlog) != 0
        || getsockname(listener, reinterpret_cast<sockaddr *>(&address), &size) != 0)
        qFatal("bench: no loopback socket");
    m_port = ntohs(address.sin_port);
    m_process = fork();
    if (m_process == 0)
        serveAll(listener);
    close(listener);
}

LoopbackDevice::~LoopbackDevice()
{
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
}
