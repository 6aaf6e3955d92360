#include "devicelink.h"

#include "comm/commio.h"
#include "comm/portlock.h"
#include "comm/portmanage.h"
#include "comm/stopsource.h"
#include "comm/tcpconnect.h"

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

DeviceLink::DeviceLink(const DriverBinding &driver, DataCallback callback, void *context)
    : m_driver(driver)
    , m_callback(callback)
    , m_context(context)
{
}

DeviceLink::~DeviceLink()
{
    dropSocket();
}

void DeviceLink::prepare(const CycleSettings &settings)
{
    if (settings.communicationType != tcpCommunication) {
        dropSocket(); // a peer may serve one connection only, which others then need
        return;
    }
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
    m_peerAddress = settings.ipAddress;
    m_peerPort = settings.tcpPort;
    // Without a connection the query that follows fails, which is all there is to do about it.
    if (!connectToPeer(*m_socket, m_peerAddress, quint16(m_peerPort), connectTimeout))
        m_socket->abort();
    else
        m_connection = fcntl(int(m_socket->socketDescriptor()), F_DUPFD_CLOEXEC, 0);
}

int DeviceLink::query(const CycleSettings &settings)
{
    // Without an entry nobody has to wait for the port.
    if (!m_driver.hasQuery())
        return 0;
    const auto call = [&](const PortDescriptor &port) {
        return m_driver.query(port, settings.address, m_callback, m_context);
    };
    return callDevice(settings, call).value_or(0);
}

std::optional<int> DeviceLink::control(const CycleSettings &settings, CommandText &command)
{
    if (!m_driver.hasControl())
        return 0;
    const auto call = [&](const PortDescriptor &port) {
        return m_driver.control(port, settings.address, command.data(), m_context);
    };
    return callDevice(settings, call);
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
    if (m_connection < 0)
        return;
    shutdown(m_connection, SHUT_RDWR);
    close(m_connection);
    m_connection = -1;
}

std::optional<int> DeviceLink::callDevice(const CycleSettings &settings, const Call &call)
{
    if (settings.communicationType == 0)
        return callOnPort(settings, call);
    return callOnSocket(call);
}

int DeviceLink::callOnSocket(const Call &call)
{
    const int result = call({ static_cast<QIODevice *>(m_socket), TcpCommRead, TcpCommWrite });
    // A peer that closed waits for our end too.
    if (m_socket && m_socket->state() == QAbstractSocket::UnconnectedState)
        freePeer();
    return result;
}

std::optional<int> DeviceLink::callOnPort(const CycleSettings &settings, const Call &call)
{
    SerialPort *port = settings.ports->getLockedPort(settings.portName);
    if (!port)
        return {};
    const PortLock lock(*port, std::adopt_lock);
    return call({ static_cast<QIODevice *>(port), CommRead, CommWrite });
}

bool DeviceLink::isPeer(const CycleSettings &settings) const
{
    return settings.ipAddress == m_peerAddress && settings.tcpPort == m_peerPort;
}
