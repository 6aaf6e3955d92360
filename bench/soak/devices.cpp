#include "devices.h"

#include "modbus/modbusframe.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <pty.h>
#include <sys/socket.h>
#include <unistd.h>

#include <vector>

namespace {

constexpr int headerLength = 6;
constexpr int crcLength = 2;
constexpr char silentUnit = 9;
constexpr int oneIn = 500; // answers, for each kind of misbehaviour

enum Fault { Silent, Cut, Damaged, OtherUnit, Garbage };

// Bytes of the request at the start of `received`; 0 when it is not complete.
int requestLength(const QByteArray &received, bool tcp)
{
    if (tcp)
        return received.size() >= headerLength ? headerLength + quint8(received.at(5)) : 0;
    if (received.size() < 8)
        return 0;
    return received.at(1) == 16 ? 9 + quint8(received.at(6)) : 8;
}

} // namespace

Devices::Devices(int lines)
{
    for (int i = 0; i < lines; ++i)
        openLine();
    openPort();
    m_thread = std::thread([this] { run(); });
}

Devices::~Devices()
{
    m_stop = true;
    m_thread.join();
    for (const Peer &peer : qAsConst(m_peers))
        close(peer.descriptor);
    for (const int slave : qAsConst(m_slaves))
        close(slave);
    close(m_listener);
}

void Devices::openLine()
{
    termios raw {};
    cfmakeraw(&raw);
    cfsetspeed(&raw, B115200);
    char name[128] = "";
    int master = -1;
    int slave = -1;
    if (openpty(&master, &slave, name, &raw, nullptr) != 0)
        qFatal("soak: no pseudo-terminal");
    m_names.append(QString::fromLatin1(name));
    m_slaves.append(slave);
    m_peers.append({ master, false, {} });
}

void Devices::openPort()
{
    m_listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(m_listener, reinterpret_cast<sockaddr *>(&address), size) != 0
        || listen(m_listener, 64) != 0
        || getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &size) != 0)
        qFatal("soak: no loopback socket");
    m_port = ntohs(address.sin_port);
}

void Devices::run()
{
    while (!m_stop) {
        std::vector<pollfd> watched { { m_listener, POLLIN, 0 } };
        for (const Peer &peer : qAsConst(m_peers))
            watched.push_back({ peer.descriptor, POLLIN, 0 });
        if (poll(watched.data(), watched.size(), 100) <= 0)
            continue;
        for (int i = m_peers.size() - 1; i >= 0; --i) {
            if (!watched[size_t(i) + 1].revents || serve(m_peers[i]))
                continue;
            close(m_peers.at(i).descriptor);
            m_peers.remove(i);
        }
        if (watched[0].revents)
            accept();
    }
}

void Devices::accept()
{
    const int descriptor = ::accept(m_listener, nullptr, nullptr);
    if (descriptor >= 0)
        m_peers.append({ descriptor, true, {} });
}

// False when the connection is at its end.
bool Devices::serve(Peer &peer)
{
    char bytes[1024];
    const ssize_t count = read(peer.descriptor, bytes, sizeof bytes);
    if (count <= 0)
        return !peer.tcp;
    peer.received.append(bytes, int(count));
    for (int length;
         (length = requestLength(peer.received, peer.tcp)) > 0 && length <= peer.received.size();
         peer.received.remove(0, length)) {
        const QByteArray frame = peer.received.left(length);
        if (!answer(peer, peer.tcp ? frame.mid(headerLength) : frame.chopped(crcLength)))
            return false;
    }
    // A request that was cut off: the driver has long asked anew.
    if (peer.received.size() > 300)
        peer.received.clear();
    return true;
}

bool Devices::answer(const Peer &peer, const QByteArray &request)
{
    const unsigned fault = m_random() % oneIn;
    if (fault == Silent || request.startsWith(silentUnit))
        return true;
    QByteArray reply = pduFor(request);
    if (fault == OtherUnit)
        reply[0] = char(reply.at(0) + 1);
    if (peer.tcp) {
        reply.prepend(char(reply.size())).prepend(headerLength - 1, '\0');
    } else {
        reply.append(crcLength, '\0');
        setModbusCRC(reinterpret_cast<unsigned char *>(reply.data()), reply.size());
    }
    if (fault == Cut)
        reply.chop(reply.size() / 2);
    else if (fault == Damaged)
        reply[reply.size() / 2] = char(~reply.at(reply.size() / 2));
    else if (fault == Garbage)
        reply.prepend("\xff\0\x01\x83", 4);
    const auto size = size_t(reply.size());
    const bool written = (peer.tcp ? send(peer.descriptor, reply.constData(), size, MSG_NOSIGNAL)
                                   : write(peer.descriptor, reply.constData(), size))
        >= 0;
    return !peer.tcp || (written && fault != Cut);
}

// Unit and PDU. Events are rare; so is a value that is none.
QByteArray Devices::pduFor(const QByteArray &request)
{
    if (request.size() < 6 || request.at(1) > 4)
        return request.left(6);
    const int count = int(quint8(request.at(4))) << 8 | quint8(request.at(5));
    const bool bits = request.at(1) == 2;
    const int bytes = qMin(bits ? (count + 7) / 8 : 2 * count, 250);
    QByteArray pdu = request.left(2) + char(bytes) + QByteArray(bytes, '\0');
    for (int i = bits ? 0 : 1; i < bytes; i += bits ? 1 : 2) {
        const auto value = m_random();
        pdu[3 + i] = char(bits ? (value % 50 ? 0 : 1) : value % 1000 ? value & 0x7f : 0xff);
    }
    return pdu;
}
