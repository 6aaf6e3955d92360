#include "serialport.h"

#include "latestfaults.h"
#include "stopsource.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <QDebug>
#include <QFile>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

// What a terminal driver takes over before a write has to wait.
constexpr int driverBuffer = 4096;
constexpr int bitsPerByte = 11;
constexpr long longestWait = 86400; // s
// What is sent may pause for so long before the line counts as stuck.
constexpr milliseconds longestPause { 1000 };
constexpr seconds longestSending { 30 }; // as long as the system waits when a line is closed
constexpr milliseconds drainSlice { 20 };

struct ErrorRow
{
    unsigned long error;
    SerialPort::ErrorCode code;
};

constexpr ErrorRow errorRows[] = {
    { EBADF, SerialPort::BadDescriptor },
    { ENOTTY, SerialPort::BadDescriptor },
    { ENOMEM, SerialPort::OutOfMemory },
    { EINTR, SerialPort::CaughtSignal },
};

bool meansHangUp(int error)
{
    return error == EIO || error == ENODEV || error == ENXIO;
}

} // namespace

SerialPort::SerialPort()
{
    init();
}

SerialPort::SerialPort(const QString &name, QueryMode mode)
    : file(new QFile(name))
    , port(name)
    , queryMode(mode)
{
    init();
}

SerialPort::SerialPort(const QString &name, const PortSettings &settings, QueryMode mode)
    : port(name)
    , queryMode(mode)
{
    init();
    SerialPort::setBaudRate(settings.BaudRate);
    SerialPort::setDataBits(settings.DataBits);
    SerialPort::setParity(settings.Parity);
    SerialPort::setStopBits(settings.StopBits);
    SerialPort::setFlowControl(settings.FlowControl);
    SerialPort::setTimeout(settings.Timeout);
    file = new QFile(name);
}

SerialPort::~SerialPort()
{
    SerialPort::close();
    delete file;
    delete mutex;
}

void SerialPort::init()
{
    mutex = new QMutex;
    if (queryMode == EventDriven)
        qWarning("POSIX doesn't have event driven mechanism implemented yet");
}

bool SerialPort::CommOpen(const QString &name, const QString &settings, int timeout)
{
    {
        const QMutexLocker lock(&m_settingsMutex);
        settingsText = settings;
    }
    const auto parsed = parseLineSettings("CommOpen", settings);
    if (!parsed)
        return false;
    openSettings = *parsed;

    close(); // an open file cannot be given another name
    if (!file)
        file = new QFile;
    file->setFileName(name);
    logFileName =
        logDir + QLatin1String("log_") + name.section(QLatin1Char('/'), -1) + QLatin1String(".log");
    qDebug("[%s]    打开标准串口%s Setting=%s TimeOut=%d\n", "CommOpen", qUtf8Printable(name),
           qUtf8Printable(settings), timeout);
    port = name;
    openTimeout = timeout;
    return openAsStored("CommOpen");
}

bool SerialPort::ReOpen()
{
    close();
    return openAsStored("ReOpen");
}

bool SerialPort::openAsStored(const char *caller)
{
    static LatestFaults faults;
    m_openError = ENOENT;
    if (!QFile::exists(port) || !open(ReadWrite)) {
        const QString fault = QString::fromLocal8Bit(strerror(m_openError));
        if (file && faults.isNew(port, fault)) // without one no settings were understood
            qDebug("[%s]    %s does not open: %s", caller, qUtf8Printable(port),
                   qUtf8Printable(fault));
        qDebug("[%s]    open serial error!", caller);
        return false;
    }
    faults.isNew(port, QString());
    setBaudRate(openSettings.BaudRate);
    setDataBits(openSettings.DataBits);
    setParity(openSettings.Parity);
    setStopBits(openSettings.StopBits);
    setFlowControl(FlowOff); // whatever the settings say: intended
    setRts(true);
    setDtr(true);
    setTimeout(openTimeout);
    setObjectName(QStringLiteral("serial"));
    return true;
}

void SerialPort::Lock()
{
    mutex->lock();
}

void SerialPort::UnLock()
{
    // Leaves a port locked that nobody held: intended.
    if (!mutex->tryLock())
        mutex->unlock();
}

bool SerialPort::open(OpenMode mode)
{
    if (mode == NotOpen || isOpen() || !file)
        return isOpen();
    if (!openFile())
        return false;
    QIODevice::open(mode);
    m_hungUp = false;
    if (!makeRaw()) {
        SerialPort::close();
        return false;
    }
    const PortSettings settings = currentSettings;
    setBaudRate(settings.BaudRate);
    setDataBits(settings.DataBits);
    setParity(settings.Parity);
    setStopBits(settings.StopBits);
    setFlowControl(settings.FlowControl);
    setTimeout(settings.Timeout);
    applyTermios();
    return isOpen();
}

// By hand, since QFile can neither keep the terminal from becoming the controlling one, where a
// hang-up would end the process, nor open a line without waiting for its carrier.
bool SerialPort::openFile()
{
    file->setFileName(port);
    const int node =
        ::open(QFile::encodeName(port).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    if (node < 0)
        return failToOpen(errno);
    if (file->open(node, ReadWrite | Unbuffered, QFileDevice::AutoCloseHandle))
        return true;
    ::close(node);
    return failToOpen(EBADF);
}

bool SerialPort::failToOpen(int error)
{
    m_openError = error;
    translateError(static_cast<unsigned long>(error));
    return false;
}

// Fails on what is no terminal: frames must not end up in an ordinary file.
bool SerialPort::makeRaw()
{
    if (tcgetattr(descriptor(), &termios) != 0)
        return failToOpen(errno);
    // Setting the line waits for it without limit, and another program may have left it stopped.
    dropUnsent();
    termios.c_cflag |= CREAD | CLOCAL;
    termios.c_lflag &= ~tcflag_t(ISIG | ICANON | ECHO | ECHOE | ECHOK | ECHONL);
    termios.c_iflag &= ~tcflag_t(IGNPAR | PARMRK | INPCK | ISTRIP | ICRNL | IXANY);
    // Left behind by another program, these would eat or change bytes of a frame.
    termios.c_iflag &= ~tcflag_t(INLCR | IGNCR | IUCLC);
    termios.c_cflag &= ~tcflag_t(CMSPAR);
    // A break would empty the queues; IGNBRK may stay, without it a break reads as a byte 0.
    termios.c_iflag &= ~tcflag_t(BRKINT);
    termios.c_oflag &= ~tcflag_t(OPOST);
    for (const int character : { VINTR, VQUIT, VSTART, VSTOP, VSUSP, VMIN })
        termios.c_cc[character] = 0;
    return true;
}

void SerialPort::close()
{
    while (isSending() && StopSource::waitFor(-1, 0, drainSlice) == StopSource::Wait::TimedOut) { }
    dropUnsent(); // for which the system would wait half a minute
    if (file)
        file->close();
    m_log.close();
    QIODevice::close();
}

int SerialPort::unsent() const
{
    int bytes = 0;
    return isOpen() && ioctl(descriptor(), TIOCOUTQ, &bytes) == 0 ? bytes : 0;
}

// Only what a driver holds back: a pseudo-terminal would drop what its reader has not read yet.
void SerialPort::dropUnsent()
{
    if (unsent() > 0)
        tcflush(descriptor(), TCOFLUSH);
}

void SerialPort::noteSending(int bytes)
{
    const auto now = steady_clock::now();
    const auto sentBy = std::max(m_sentBy, now + longestPause) + sendingTime(bytes);
    m_sentBy = std::min(sentBy, now + longestSending);
}

bool SerialPort::isSending() const
{
    return steady_clock::now() < m_sentBy && unsent() > 0;
}

int SerialPort::descriptor() const
{
    return file ? file->handle() : -1;
}

qint64 SerialPort::size() const
{
    int waiting = 0;
    return isOpen() && ioctl(descriptor(), FIONREAD, &waiting) == 0 ? waiting : 0;
}

qint64 SerialPort::bytesAvailable() const
{
    if (!isOpen())
        return QIODevice::bytesAvailable();
    const auto limit =
        std::chrono::ceil<milliseconds>(seconds(qBound(-1L, selectTimeout.seconds, longestWait))
                                        + std::chrono::microseconds(selectTimeout.remainder));
    const auto end = StopSource::waitFor(descriptor(), POLLIN | POLLPRI, limit);
    if (end == StopSource::Wait::TimedOut) {
        errorCode = TimedOut;
        return -1;
    }
    int waiting = 0;
    if (end != StopSource::Wait::Ready || ioctl(descriptor(), FIONREAD, &waiting) != 0) {
        const int error = end == StopSource::Wait::Stopped ? EINTR : errno;
        translateError(static_cast<unsigned long>(error));
        return -1;
    }
    errorCode = NoError;
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
        errorCode = ReadFailed;
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
            noteSending(int(count));
        } else if (error != EINTR
                   && (error != EAGAIN
                       || StopSource::waitFor(descriptor(), POLLOUT,
                                              milliseconds(openTimeout) + sendingTime(driverBuffer))
                           != StopSource::Wait::Ready))
            break;
    }
    if (written == 0 && length > 0) {
        errorCode = WriteFailed;
        return -1;
    }
    if (written > 0)
        saveLogData(data, int(written), TrafficLog::Sent);
    return written;
}

milliseconds SerialPort::readTimeout() const
{
    return milliseconds(100) * termios.c_cc[VTIME];
}

milliseconds SerialPort::sendingTime(int bytes) const
{
    const qint64 rate = s_UnixBaudList[currentSettings.BaudRate].rate;
    return milliseconds(1000LL * bytes * bitsPerByte / rate);
}

void SerialPort::noteHangUp()
{
    if (!m_hungUp)
        qDebug("[%s]    %s hung up", "SerialPort", qUtf8Printable(port));
    m_hungUp = true;
}

unsigned long SerialPort::translateError(unsigned long error) const
{
    const auto row = std::find_if(std::begin(errorRows), std::end(errorRows),
                                  [error](const ErrorRow &r) { return r.error == error; });
    errorCode = row == std::end(errorRows) ? error : row->code;
    return errorCode;
}

QString SerialPort::getPortSettings() const
{
    const QMutexLocker lock(&m_settingsMutex);
    return settingsText;
}

void SerialPort::saveLogData(const char *data, int len, int direction)
{
    m_log.append(logDir + logFileName, data, len, direction);
}
