#include "reachcheck.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {
constexpr int patienceMs = 5000;
}

void ReachCheck::start(const DeviceSpec &spec)
{
    m_socket.disconnect(this);
    m_patience.disconnect(this);
    m_socket.abort();
    m_isRunning = true;
    if (!spec.isTcp())
        return checkPort(spec);
    connect(&m_socket, &QTcpSocket::connected, this, [this, spec] {
        finish(true, tr("the peer is there, but unit %1 does not answer").arg(spec.address));
    });
    connect(
        &m_socket, &QTcpSocket::errorOccurred, this, [this](QAbstractSocket::SocketError error) {
            finish(false,
                   error == QAbstractSocket::ConnectionRefusedError
                       ? tr("the connection is refused")
                       : error == QAbstractSocket::HostNotFoundError ? tr("there is no such host")
                                                                     : m_socket.errorString());
        });
    connect(&m_patience, &QTimer::timeout, this,
            [this] { finish(false, tr("the peer does not answer")); });
    m_patience.setSingleShot(true);
    m_patience.start(patienceMs);
    m_socket.connectToHost(spec.host, quint16(spec.tcpPort));
}

void ReachCheck::checkPort(const DeviceSpec &spec)
{
    // Not opened: that would move its lines, and another program may use it.
    const QByteArray name = QFile::encodeName(spec.port);
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0)
        finish(false, tr("there is no such port"));
    else if (!S_ISCHR(status.st_mode))
        finish(false, tr("that is no port"));
    else if (::access(name.constData(), R_OK | W_OK) != 0)
        finish(false,
               tr("no permission; the port belongs to the group \"%1\"")
                   .arg(QFileInfo(spec.port).group()));
    else
        finish(true, tr("nobody answers at address %1: rate, parity and cable?").arg(spec.address));
}

void ReachCheck::finish(bool isOpen, const QString &text)
{
    m_patience.stop();
    if (!std::exchange(m_isRunning, false))
        return;
    emit finished(isOpen, text);
    m_socket.abort();
}
