#include "modbusserver.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <pty.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

namespace upssim {

namespace {

constexpr std::size_t maxConnections = 16;
constexpr int backlog = 8;

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

} // namespace

ModbusServer::ModbusServer(Simulator &simulator, int address)
    : m_simulator(simulator)
    , m_address(address)
{
}

ModbusServer::~ModbusServer()
{
    // Another simulator may have put its own link there meanwhile.
    if (!m_link.isEmpty() && QFile::symLinkTarget(m_link) == m_terminalName)
        QFile::remove(m_link);
}

Result<int> ModbusServer::listen(const QString &host, int port)
{
    m_listening.reset(modbus_new_tcp(host.toLatin1().constData(), port));
    if (m_listening)
        m_listener = Descriptor(modbus_tcp_listen(m_listening.get(), backlog));
    sockaddr_in bound {};
    socklen_t size = sizeof bound;
    if (!m_listener.valid()
        || getsockname(m_listener.number(), reinterpret_cast<sockaddr *>(&bound), &size) != 0) {
        return Failure {
            QStringLiteral("cannot listen on %1:%2: %3").arg(host).arg(port).arg(systemError())
        };
    }
    // A peer that has gone again must not keep accept() waiting.
    fcntl(m_listener.number(), F_SETFL, O_RDWR | O_NONBLOCK);
    m_listenNotifier =
        std::make_unique<QSocketNotifier>(m_listener.number(), QSocketNotifier::Read);
    connect(m_listenNotifier.get(), &QSocketNotifier::activated, this, [this] { accept(); });
    return int(ntohs(bound.sin_port));
}

void ModbusServer::accept()
{
    int listener = m_listener.number();
    Descriptor line(modbus_tcp_accept(m_listening.get(), &listener));
    if (!line.valid() || fcntl(line.number(), F_SETFL, O_RDWR | O_NONBLOCK) != 0)
        return;
    if (m_connections.size() >= maxConnections)
        makeRoom();
    auto *const link =
        new ModbusLink(m_simulator, modbus::Framing::Tcp, std::move(line), m_address, this);
    m_connections.push_back(link);
    connect(link, &ModbusLink::closed, this, [this, link] { remove(link); });
}

// Peers that only hold their place shut nobody out.
void ModbusServer::makeRoom()
{
    const auto isLessIdle = [](const ModbusLink *left, const ModbusLink *right) {
        return left->idleTime() < right->idleTime();
    };
    remove(*std::max_element(m_connections.begin(), m_connections.end(), isLessIdle));
}

void ModbusServer::remove(ModbusLink *link)
{
    m_connections.erase(std::remove(m_connections.begin(), m_connections.end(), link),
                        m_connections.end());
    link->deleteLater();
}

Result<Done> ModbusServer::openTerminal(const QString &link)
{
    int master = -1;
    int slave = -1;
    termios settings {};
    settings.c_cflag = CREAD | CLOCAL;
    cfmakeraw(&settings);
    cfsetspeed(&settings, B9600);
    char name[PATH_MAX] = {};
    if (openpty(&master, &slave, name, &settings, nullptr) != 0)
        return Failure { QStringLiteral("cannot open a pseudo-terminal: %1").arg(systemError()) };
    Descriptor line(master);
    m_terminal = Descriptor(slave);
    for (const int descriptor : { master, slave })
        fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    fcntl(master, F_SETFL, O_RDWR | O_NONBLOCK); // a client that does not read must not stop us

    if (QFileInfo(link).isSymLink())
        QFile::remove(link);
    if (::symlink(name, QFile::encodeName(link).constData()) != 0)
        return Failure { QStringLiteral("cannot make the link %1: %2").arg(link, systemError()) };
    m_link = link;
    m_terminalName = QFile::symLinkTarget(link);
    new ModbusLink(m_simulator, modbus::Framing::Rtu, std::move(line), m_address, this);
    return Done {};
}

} // namespace upssim
