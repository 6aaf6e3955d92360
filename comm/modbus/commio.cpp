#include "modbus/commio.h"

#include "modbus/mbapheader.h"
#include "modbus/modbusframe.h"
#include "stopsource.h"
#include "timeleft.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <QAbstractSocket>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds tcpTimeout { 1000 };
// Behind which nothing more of a reply is to come: gateways may announce more than they send.
constexpr milliseconds longestGap { 100 };
constexpr int tcpBufferSize = 1000;
constexpr int crcLength = 2;
constexpr int shortRead = -5;

/** Opens the two protected calls of every QIODevice: a member pointer that is named through a
 *  derived class still belongs to the base, and calls the device's own override. */
struct DeviceCalls : QIODevice
{
    using QIODevice::readData;
    using QIODevice::writeData;
};

QIODevice *deviceOf(void *handle)
{
    return handle ? static_cast<QIODevice *>(*static_cast<void **>(handle)) : nullptr;
}

// Where the last of the replies ends whose start is there, as far as their headers tell. What has no
// proper header is taken as it comes.
int announcedLength(const char *bytes, int count)
{
    int end = 0;
    while (end < count) {
        if (count - end < MbapHeader::size)
            return std::min(end + MbapHeader::size, tcpBufferSize);
        const MbapHeader header = MbapHeader::from(bytes + end);
        if (!header.isModbus())
            return count;
        end += header.frameSize();
    }
    return std::min(end, tcpBufferSize);
}

// Has Qt notice what the system tells of the connection, and take in what has come.
void letQtLook(QAbstractSocket &socket)
{
    socket.waitForReadyRead(0);
}

// 0 when nothing comes in time, or the connection has ended.
int receive(QAbstractSocket &socket, char *bytes, int room, milliseconds limit)
{
    const int descriptor = int(socket.socketDescriptor());
    if (socket.state() != QAbstractSocket::ConnectedState
        || StopSource::waitFor(descriptor, POLLIN, limit) != StopSource::Wait::Ready)
        return 0;
    const auto count = recv(descriptor, bytes, std::size_t(room), MSG_DONTWAIT);
    if (count <= 0)
        letQtLook(socket);
    return std::max(0, int(count));
}

// Straight from the system: Qt's buffers and notifiers cost as much as the exchange. What Qt has
// taken in before is the late reply to an earlier request: with it alone, all replies to come would
// be taken for those of the request before. The read gets both, which the driver rejects, and is in
// step again. A reply may also come in several pieces.
int readReply(QAbstractSocket &socket, char *bytes)
{
    // An empty buffer is not read from: Qt would keep 16 KiB for it from then on.
    const int late = socket.bytesAvailable() > 0 ? int(socket.read(bytes, tcpBufferSize)) : 0;
    int count = late;
    const auto deadline = steady_clock::now() + tcpTimeout;
    while (count < tcpBufferSize && (count <= late || count < announcedLength(bytes, count))) {
        const milliseconds left = timeLeft(deadline);
        const int more = receive(socket, bytes + count, tcpBufferSize - count,
                                 count > late ? std::min(left, longestGap) : left);
        if (more == 0)
            break;
        count += more;
    }
    return count;
}

// Before a request: what has come by now does not answer it, and Qt's buffer is where readReply()
// knows it from a reply that is faster than the driver.
void takeInLateReplies(QAbstractSocket &socket)
{
    int waiting = 0;
    if (ioctl(int(socket.socketDescriptor()), FIONREAD, &waiting) == 0 && waiting > 0)
        letQtLook(socket);
}

// What cannot be sent in time would go out later, when the driver has sent it again: then there is
// no connection any more.
bool sendRequest(QAbstractSocket &socket, const char *bytes, int count)
{
    takeInLateReplies(socket);
    const auto deadline = steady_clock::now() + tcpTimeout;
    const int descriptor = int(socket.socketDescriptor());
    while (socket.state() == QAbstractSocket::ConnectedState) {
        const auto sent = send(descriptor, bytes, std::size_t(count), MSG_DONTWAIT | MSG_NOSIGNAL);
        if (sent == count)
            return true;
        if (sent < 0 && errno != EAGAIN)
            break;
        bytes += std::max<ssize_t>(0, sent);
        count -= int(std::max<ssize_t>(0, sent));
        if (StopSource::waitFor(descriptor, POLLOUT, timeLeft(deadline)) != StopSource::Wait::Ready)
            break;
    }
    socket.abort();
    return false;
}

int readReply(QIODevice &device, char *bytes)
{
    if (auto *socket = qobject_cast<QAbstractSocket *>(&device))
        return readReply(*socket, bytes);
    device.waitForReadyRead(int(tcpTimeout.count()));
    return int(device.read(bytes, tcpBufferSize));
}

bool sendRequest(QIODevice &device, const char *bytes, int count)
{
    auto *socket = qobject_cast<QAbstractSocket *>(&device);
    return socket ? sendRequest(*socket, bytes, count) : device.write(bytes, count) == count;
}

} // namespace

int CommOpen()
{
    return 0;
}

void CommAccept() { }

void CommControl() { }

void CommClose() { }

int CommRead(void *handle, char *buffer, int length)
{
    QIODevice *device = deviceOf(handle);
    if (!device || !buffer || length < 0)
        return -1;
    qint64 (QIODevice::*const read)(char *, qint64) = &DeviceCalls::readData;
    return int((device->*read)(buffer, length));
}

int CommWrite(void *handle, char *buffer, int length)
{
    QIODevice *device = deviceOf(handle);
    if (!device || !buffer || length < 0)
        return -1;
    qint64 (QIODevice::*const write)(const char *, qint64) = &DeviceCalls::writeData;
    return int((device->*write)(buffer, length));
}

int TcpCommRead(void *handle, char *buffer, int)
{
    QIODevice *device = deviceOf(handle);
    if (!device || !buffer || !device->isReadable())
        return shortRead;
    char reply[tcpBufferSize + crcLength];
    const int count = readReply(*device, reply);
    if (count <= MbapHeader::size)
        return shortRead;

    const int length = count - MbapHeader::size + crcLength;
    auto *const frame = reinterpret_cast<unsigned char *>(reply + MbapHeader::size);
    setModbusCRC(frame, length);
    std::copy_n(frame, length, buffer);
    return length;
}

int TcpCommWrite(void *handle, char *frame, int length)
{
    QIODevice *device = deviceOf(handle);
    if (!device || !frame || length < 0 || length - crcLength + MbapHeader::size > tcpBufferSize
        || !device->isWritable())
        return -1;
    const int bodyLength = std::max(0, length - crcLength);
    std::array<char, tcpBufferSize> request = {};
    MbapHeader header;
    header.length = static_cast<quint8>(length - crcLength); // cut to a byte: intended
    header.put(request.data());
    std::copy_n(frame, bodyLength, request.data() + MbapHeader::size);
    const int requestLength = MbapHeader::size + bodyLength;
    return sendRequest(*device, request.data(), requestLength) ? length : -1;
}
