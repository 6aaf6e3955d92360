#include "commio.h"

#include "modbusframe.h"
#include "stopsource.h"

#include <algorithm>
#include <array>
#include <poll.h>
#include <QAbstractSocket>
#include <QtEndian>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds tcpTimeout { 1000 };
constexpr int tcpBufferSize = 1000;
constexpr int headerLength = 6; // MBAP without the unit
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

// Bytes of the reply whose start is there, as far as its header tells. What has no proper header
// is taken as it comes.
qint64 announcedLength(QIODevice &device)
{
    std::array<char, headerLength> header = {};
    if (device.peek(header.data(), headerLength) < headerLength)
        return headerLength;
    const bool isModbus = header[2] == 0 && header[3] == 0;
    const int length = qFromBigEndian<quint16>(header.data() + 4);
    return isModbus ? std::min(headerLength + length, tcpBufferSize) : headerLength;
}

// Waits on the descriptor, where a stop can end it; Qt then finds its data without waiting. A
// reply may come in several pieces: the read drops six bytes of what it gets, whatever they are.
void waitForReply(QIODevice &device)
{
    auto *socket = qobject_cast<QAbstractSocket *>(&device);
    if (!socket) {
        device.waitForReadyRead(int(tcpTimeout.count()));
        return;
    }
    const auto deadline = steady_clock::now() + tcpTimeout;
    if (socket->bytesAvailable() > 0)
        socket->waitForReadyRead(0); // what has come since
    while (socket->state() == QAbstractSocket::ConnectedState
           && socket->bytesAvailable() < announcedLength(*socket)) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
        if (StopSource::waitFor(int(socket->socketDescriptor()), POLLIN, left)
            != StopSource::Wait::Ready)
            return;
        socket->waitForReadyRead(0);
    }
}

// Sockets of Qt keep what is written until an event loop turns, which a driver call never lets.
bool sendNow(QIODevice &device)
{
    auto *socket = qobject_cast<QAbstractSocket *>(&device);
    if (!socket)
        return true;
    const auto deadline = steady_clock::now() + tcpTimeout;
    while (socket->state() == QAbstractSocket::ConnectedState) {
        socket->flush();
        if (socket->bytesToWrite() == 0)
            return true;
        const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
        if (StopSource::waitFor(int(socket->socketDescriptor()), POLLOUT, left)
            != StopSource::Wait::Ready)
            return false;
    }
    return false;
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
    waitForReply(*device);
    std::array<char, tcpBufferSize> reply = {};
    const int count = int(device->read(reply.data(), reply.size()));
    if (count <= headerLength)
        return shortRead;

    const int length = count - headerLength + crcLength;
    std::array<unsigned char, tcpBufferSize> frame = {};
    std::copy(reply.data() + headerLength, reply.data() + count, frame.data());
    setModbusCRC(frame.data(), length);
    std::copy_n(frame.data(), length, buffer);
    return length;
}

int TcpCommWrite(void *handle, char *frame, int length)
{
    QIODevice *device = deviceOf(handle);
    if (!device || !frame || length < 0 || length - crcLength + headerLength > tcpBufferSize
        || !device->isWritable())
        return -1;
    const int bodyLength = std::max(0, length - crcLength);
    std::array<char, tcpBufferSize> request = {};
    request[5] = static_cast<char>(length - crcLength);
    std::copy_n(frame, bodyLength, request.data() + headerLength);
    const int requestLength = headerLength + bodyLength;
    if (device->write(request.data(), requestLength) != requestLength)
        return -1;
    return sendNow(*device) ? length : -1;
}
