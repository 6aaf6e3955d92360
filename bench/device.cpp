#include "device.h"

#include "modbus/modbusframe.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <pty.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int registers = 125;

bool readAll(int descriptor, char *buffer, int size)
{
    for (int done = 0; done < size;) {
        const auto got = read(descriptor, buffer + done, size_t(size - done));
        if (got <= 0)
            return false;
        done += int(got);
    }
    return true;
}

bool writeAll(int descriptor, const QByteArray &data)
{
    return write(descriptor, data.constData(), size_t(data.size())) == data.size();
}

} // namespace

QByteArray rtuRequest()
{
    unsigned char frame[8];
    buildCmd(frame, 1, 3, 0, registers);
    return QByteArray(reinterpret_cast<const char *>(frame), sizeof frame);
}

QByteArray rtuReply()
{
    QByteArray reply("\x01\x03\xfa", 3);
    for (int i = 0; i < registers; ++i)
        reply.append(char(i >> 8)).append(char(i));
    reply.append(2, '\0');
    setModbusCRC(reinterpret_cast<unsigned char *>(reply.data()), reply.size());
    return reply;
}

QByteArray tcpRequest()
{
    return QByteArray("\0\0\0\0\0\x06", 6) + rtuRequest().chopped(2);
}

QByteArray tcpReply()
{
    return QByteArray("\0\0\0\0\0\xfd", 6) + rtuReply().chopped(2);
}

PtyDevice::PtyDevice()
{
    termios raw {};
    cfmakeraw(&raw);
    cfsetspeed(&raw, B115200);
    char name[128] = "";
    if (openpty(&m_master, &m_slave, name, &raw, nullptr) != 0)
        qFatal("bench: no pseudo-terminal");
    m_path = QString::fromLatin1(name);
    m_thread = std::thread([master = m_master] {
        char request[8];
        const QByteArray reply = rtuReply();
        while (readAll(master, request, sizeof request) && request[0] != 0)
            writeAll(master, reply);
    });
}

PtyDevice::~PtyDevice()
{
    writeAll(m_slave, QByteArray(8, '\0')); // unit 0: the device's end
    m_thread.join();
    close(m_slave);
    close(m_master);
}

TcpDevice::TcpDevice()
    : m_listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(m_listener, reinterpret_cast<sockaddr *>(&address), size) != 0
        || listen(m_listener, 1) != 0
        || getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &size) != 0)
        qFatal("bench: no loopback socket");
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([listener = m_listener] {
        QByteArray reply = tcpReply();
        for (int peer; (peer = accept(listener, nullptr, nullptr)) >= 0; close(peer)) {
            const int on = 1;
            setsockopt(peer, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
            for (char request[12]; readAll(peer, request, sizeof request);) {
                reply[0] = request[0];
                reply[1] = request[1];
                writeAll(peer, reply);
            }
        }
    });
}

TcpDevice::~TcpDevice()
{
    shutdown(m_listener, SHUT_RDWR); // ends accept()
    m_thread.join();
    close(m_listener);
}
