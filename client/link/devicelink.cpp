#include "link/devicelink.h"

#include "cyclehost.h"
#include "linepause.h"
#include "modbus/commio.h"
#include "portmanage.h"
#include "serial/portlock.h"
#include "stopsource.h"
#include "tcpconnect.h"
#include "wakeup.h"

#include <QAbstractEventDispatcher>
#include <QTcpSocket>
#include <QThread>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr auto pauseBeforeConnect = 5s;
constexpr auto connectTimeout = 30s;
constexpr qint64 socketBufferSize = 1024;

} // namespace

DeviceLink::DeviceLink(CycleHost &host, const DriverBinding &driver, DataCallback callback,
                       void *context)
    : m_host(host)
    , m_driver(driver)
    , m_callback(callback)
    , m_context(context)
{
}

DeviceLink::~DeviceLink()
{
    dropSocket();
}

void DeviceLink::prepare()
{
    const DeviceSettings settings = m_host.settings();
    if (settings.communicationType == tcpCommunication && !LinePause::isOn(peerText(settings)))
        connectPeer(settings);
    else
        dropSocket(); // a peer may serve one connection only, which others then need
}

void DeviceLink::connectPeer(const DeviceSettings &settings)
{
    // A host that polls from changing threads: a socket works in one thread only.
    if (m_socket && m_socket->thread() != QThread::currentThread())
        dropSocket();
    if (!m_socket) {
        m_socket = new QTcpSocket;
        m_socket->setReadBufferSize(socketBufferSize);
    }
    // A living connection to another peer than the settings name would report its values as the
    // configured device's.
    if (!isPeer(settings) || m_socket->state() == QAbstractSocket::ClosingState)
        m_socket->abort();
    if (m_socket->state() != QAbstractSocket::UnconnectedState)
        return;
    freePeer();
    if (StopSource::waitFor(-1, 0, pauseBeforeConnect) == StopSource::Wait::Stopped)
        return;
    m_use = std::make_unique<LineUse>(peerText(settings));
    if (!*m_use)
        return; // another program has the device since
    m_peerAddress = settings.ipAddress;
    m_peerPort = settings.tcpPort;
    // Without a connection the query that follows fails, which is all there is to do about it.
    if (connectToPeer(*m_socket, m_peerAddress, quint16(m_peerPort), connectTimeout)) {
        m_connection = affordable(fcntl(int(m_socket->socketDescriptor()), F_DUPFD_CLOEXEC, 0),
                                  DescriptorUse::Needed);
    } else {
        m_socket->abort();
        m_use.reset();
    }
}

DriverAnswer DeviceLink::query()
{
    // Without an entry nobody has to wait for the port.
    if (!m_driver.hasQuery())
        return {};
    return callDevice([this](const PortDescriptor &port, int unit) {
        return m_driver.query(port, unit, m_callback, m_context);
    });
}

DriverAnswer DeviceLink::control(CommandText &command)
{
    if (!m_driver.hasControl())
        return {};
    return callDevice([&](const PortDescriptor &port, int unit) {
        return m_driver.control(port, unit, command.data(), m_context);
    });
}

void DeviceLink::dropSocket()
{
    if (!m_socket)
        return;
    freePeer();
    // The thread of a host that called poll() may still run, and its dispatcher then knows the
    // socket: only that thread may delete it, in its event loop or at its end, which may be long
    // from now. No dispatcher knows the socket of a thread that has ended or never had one.
    QThread *home = m_socket->thread();
    if (home && home != QThread::currentThread() && QAbstractEventDispatcher::instance(home))
        m_socket->deleteLater();
    else
        delete m_socket;
    m_socket = nullptr;
}

// By a descriptor of its own: the socket's may not be touched in other threads than its own, whose
// event loop may be closing it just now.
void DeviceLink::freePeer()
{
    m_use.reset();
    if (m_connection < 0)
        return;
    shutdown(m_connection, SHUT_RDWR);
    close(m_connection);
    m_connection = -1;
}

DriverAnswer DeviceLink::callDevice(const Call &call)
{
    for (;;) {
        const DeviceSettings settings = m_host.settings();
        if (settings.communicationType != 0)
            return callOnSocket(settings, call);
        const LineUse use(settings.portName);
        if (!use)
            return { DriverAnswer::Delivery::Later, 0 };
        SerialPort *port = settings.ports->getLockedPort(settings.portName);
        if (!port)
            return {};
        const PortLock lock(*port, std::adopt_lock);
        if (!port->isOpen() && LinePause::isOn(settings.portName))
            return { DriverAnswer::Delivery::Later, 0 }; // it began just now
        // The line may have been waited for, and another one be configured since.
        const DeviceSettings current = m_host.settings();
        if (current.communicationType == 0 && current.portName == settings.portName)
            return { DriverAnswer::Delivery::Asked,
                     call({ static_cast<QIODevice *>(port), CommRead, CommWrite }, current.unit),
                     current };
    }
}

DriverAnswer DeviceLink::callOnSocket(const DeviceSettings &settings, const Call &call)
{
    const bool isPrepared = m_socket && isPeer(settings);
    const LineUse use(peerText(settings));
    if (!use || (settings.communicationType == tcpCommunication && !isPrepared))
        return { DriverAnswer::Delivery::Later, 0 };
    const int result =
        call({ static_cast<QIODevice *>(m_socket), TcpCommRead, TcpCommWrite }, settings.unit);
    // A peer that closed waits for our end too.
    if (m_socket && m_socket->state() == QAbstractSocket::UnconnectedState)
        freePeer();
    return { DriverAnswer::Delivery::Asked, result, settings };
}

bool DeviceLink::isPeer(const DeviceSettings &settings) const
{
    return settings.ipAddress == m_peerAddress && settings.tcpPort == m_peerPort;
}
