// How a SerialPort reads and writes.
#include "serial/serialport.h"
#include "stopsource.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <QDebug>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// What a terminal driver takes over before a write has to wait.
constexpr int driverBuffer = 4096;
// Whatever the settings say, as others wait for the line.
constexpr seconds longestWait { 60 };

bool meansHangUp(int error)
{
    return error == EIO || error == ENODEV || error == ENXIO;
}

} // namespace

qint64 SerialPort::bytesAvailable() const
{
    if (!isOpen())
        return QIODevice::bytesAvailable();
    const auto limit = std::chrono::ceil<milliseconds>(
        seconds(qBound(-1L, selectTimeout.seconds, long(longestWait.count())))
        + std::chrono::microseconds(selectTimeout.remainder));
    const auto end = StopSource::waitFor(descriptor(), POLLIN | POLLPRI, limit);
    if (end == StopSource::Wait::TimedOut) {
        errorCode = PortError::TimedOut;
        return -1;
    }
    int waiting = 0;
    if (end != StopSource::Wait::Ready || ioctl(descriptor(), FIONREAD, &waiting) != 0) {
        const int error = end == StopSource::Wait::Stopped ? EINTR : errno;
        translateError(static_cast<unsigned long>(error));
        return -1;
    }
    errorCode = PortError::NoError;
    return waiting + QIODevice::bytesAvailable();
}

qint64 SerialPort::readData(char *data, qint64 maxSize)
{
    if (!isOpen() || !data || maxSize < 0)
        return -1;
    if (maxSize == 0)
        return 0;
    const auto end = StopSource::waitFor(descriptor(), POLLIN, readTimeout());
    if (end == StopSource::Wait::TimedOut)
        return 0;
    const bool stopped = end == StopSource::Wait::Stopped;
    const qint64 count = stopped ? -1 : ::read(descriptor(), data, size_t(maxSize));
    const int error = stopped ? ECANCELED : errno;
    if (count < 0 && (error == EAGAIN || error == EINTR))
        return 0;
    if (count == 0 || (count < 0 && meansHangUp(error)))
        noteHangUp();
    if (count < 0)
        errorCode = PortError::ReadFailed;
    if (count > 0)
        saveLogData(data, int(count), TrafficLog::Received);
    return count;
}

QByteArray SerialPort::readData(qint64 maxSize)
{
    QByteArray result(int(qBound(qint64(0), maxSize, qint64(driverBuffer))), Qt::Uninitialized);
    result.truncate(int(qMax(qint64(0), readData(result.data(), result.size()))));
    return result;
}

// The descriptor does not block, so that a line which takes nothing cannot hold a client for ever.
qint64 SerialPort::writeData(const char *data, qint64 length)
{
    if (!isOpen() || !data || length < 0)
        return -1;
    qint64 written = 0;
    while (written < length) {
        m_log.prepare(logDir + logFileName);
        const ssize_t count = ::write(descriptor(), data + written, size_t(length - written));
        const int error = count < 0 ? errno : 0;
        if (meansHangUp(error))
            noteHangUp();
        if (count > 0) {
            written += count;
            m_unsent.noteWritten(int(count), baud());
        } else if (error != EINTR && (error != EAGAIN || !waitForRoom()))
            break;
    }
    if (written == 0 && length > 0) {
        errorCode = PortError::WriteFailed;
        return -1;
    }
    if (written > 0)
        saveLogData(data, int(written), TrafficLog::Sent);
    return written;
}

bool SerialPort::waitForRoom() const
{
    const auto limit = std::min<milliseconds>(
        milliseconds(openTimeout) + UnsentOutput::timeFor(driverBuffer, baud()), longestWait);
    return StopSource::waitFor(descriptor(), POLLOUT, limit) == StopSource::Wait::Ready;
}

milliseconds SerialPort::readTimeout() const
{
    return milliseconds(100) * termios.c_cc[VTIME];
}

qint64 SerialPort::baud() const
{
    return s_UnixBaudList[currentSettings.BaudRate].rate;
}

void SerialPort::noteHangUp()
{
    if (!m_hungUp)
        qDebug("[%s]    %s hung up", "SerialPort", qUtf8Printable(port));
    m_hungUp = true;
}

unsigned long SerialPort::translateError(unsigned long error) const
{
    errorCode = PortError::codeOf(error);
    return errorCode;
}

void SerialPort::saveLogData(const char *data, int len, int direction)
{
    m_log.append(logDir + logFileName, data, len, direction);
}
