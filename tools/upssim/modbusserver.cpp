#include "modbusserver.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <pty.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int maxConnections = 16;
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

int ModbusServer::listen(const QString &host, int port, QString *error)
{
    m_listening.reset(modbus_new_tcp(host.toLatin1().constData(), port));
    if (m_listening)
        m_listener = Descriptor(modbus_tcp_listen(m_listening.get(), backlog));
    sockaddr_in bound {};
    socklen_t size = sizeof bound;
    if (!m_listener.valid()
        || getsockname(m_listener.number(), reinterpret_cast<sockaddr *>(&bound), &size) != 0) {
        *error =
            QStringLiteral("cannot listen on %1:%2: %3").arg(host).arg(port).arg(systemError());
        return 0;
    }
    m_listenNotifier =
        std::make_unique<QSocketNotifier>(m_listener.number(), QSocketNotifier::Read);
    connect(m_listenNotifier.get(), &QSocketNotifier::activated, this, [this] { accept(); });
    return ntohs(bound.sin_port);
}

void ModbusServer::accept()
{
    int listener = m_listener.number();
    Descriptor line(modbus_tcp_accept(m_listening.get(), &listener));
    ModbusContext context(modbus_new_tcp("127.0.0.1", 0), modbus_free);
    if (!line.valid() || !context || m_connections >= maxConnections)
        return;
    ++m_connections;
    auto *const link = new ModbusLink(m_simulator, Framing::Tcp, std::move(context),
                                      std::move(line), m_address, this);
    connect(link, &ModbusLink::closed, this, [this, link] {
        --m_connections;
        link->deleteLater();
    });
}

bool ModbusServer::openTerminal(const QString &link, QString *error)
{
    int master = -1;
    int slave = -1;
    termios settings {};
    settings.c_cflag = CREAD | CLOCAL;
    cfmakeraw(&settings);
    cfsetspeed(&settings, B9600);
    char name[PATH_MAX] = {};
    if (openpty(&master, &slave, name, &settings, nullptr) != 0) {
        *error = QStringLiteral("cannot open a pseudo-terminal: %1").arg(systemError());
        return false;
    }
    Descriptor line(master);
    m_terminal = Descriptor(slave);
    for (const int descriptor : { master, slave })
        fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    fcntl(master, F_SETFL, O_RDWR | O_NONBLOCK); // a client that does not read must not stop us

    if (QFileInfo(link).isSymLink())
        QFile::remove(link);
    if (!QFile::link(QString::fromLocal8Bit(name), link)) {
        *error = QStringLiteral("cannot make the link %1 (is something else there?)").arg(link);
        return false;
    }
    m_link = link;
    m_terminalName = QFile::symLinkTarget(link);
    ModbusContext context(modbus_new_rtu(name, 9600, 'N', 8, 1), modbus_free);
    if (!context) {
        *error = QStringLiteral("cannot set up libmodbus: %1").arg(systemError());
        return false;
    }
    new ModbusLink(m_simulator, Framing::Rtu, std::move(context), std::move(line), m_address, this);
    return true;
}
