#include "serial/serialport.h"

#include "latestfaults.h"
#include "wakeup.h"

#include <cerrno>
#include <fcntl.h>
#include <QDebug>
#include <QFile>
#include <sys/ioctl.h>
#include <unistd.h>

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
    static LatestFaults &faults = *new LatestFaults;
    m_openError = std::make_error_code(std::errc::no_such_file_or_directory);
    if (!QFile::exists(port) || !open(ReadWrite)) {
        const QString fault = QString::fromStdString(m_openError.message());
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
    static_cast<void>(lockWithin(LineQueue::Patience::Endless));
}

bool SerialPort::lockWithin(LineQueue::Patience patience)
{
    return m_queue.lock(*mutex, patience);
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
    if (!isAffordable(DescriptorUse::Needed))
        return failToOpen(std::errc(errno));
    const int node = affordable(
        ::open(QFile::encodeName(port).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK),
        DescriptorUse::Needed);
    if (node < 0)
        return failToOpen(std::errc(errno));
    if (file->open(node, ReadWrite | Unbuffered, QFileDevice::AutoCloseHandle))
        return true;
    ::close(node);
    return failToOpen(std::errc::bad_file_descriptor);
}

bool SerialPort::failToOpen(std::errc error)
{
    m_openError = std::make_error_code(error);
    return false;
}

// Fails on what is no terminal: frames must not end up in an ordinary file.
bool SerialPort::makeRaw()
{
    if (tcgetattr(descriptor(), &termios) != 0)
        return failToOpen(std::errc(errno));
    // Setting the line waits for it without limit, and another program may have left it stopped.
    UnsentOutput::drop(descriptor());
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
    m_unsent.finish(descriptor());
    if (file)
        file->close();
    m_log.close();
    QIODevice::close();
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

QString SerialPort::getPortSettings() const
{
    const QMutexLocker lock(&m_settingsMutex);
    return settingsText;
}
