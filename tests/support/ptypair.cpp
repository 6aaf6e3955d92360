#include "ptypair.h"

#include <poll.h>
#include <pty.h>
#include <QFile>
#include <unistd.h>

PtyPair::PtyPair(const QString &link)
    : m_link(link)
{
    plug();
}

PtyPair::~PtyPair()
{
    unplug();
}

void PtyPair::plug()
{
    char name[128] = {};
    if (openpty(&m_master, &m_slave, name, nullptr, nullptr) != 0)
        qFatal("no pseudo-terminal");
    m_slaveName = QFile::decodeName(name);
    if (!m_link.isEmpty())
        QFile::link(m_slaveName, m_link);
}

void PtyPair::unplug()
{
    if (m_master < 0)
        return;
    if (!m_link.isEmpty())
        QFile::remove(m_link);
    close(m_slave);
    close(m_master);
    m_master = m_slave = -1;
}

termios PtyPair::settings() const
{
    termios result = {};
    if (tcgetattr(m_slave, &result) != 0)
        qFatal("no settings");
    return result;
}

void PtyPair::send(const QByteArray &bytes) const
{
    if (write(m_master, bytes.constData(), size_t(bytes.size())) != bytes.size())
        qFatal("nothing takes what was sent");
}

QByteArray PtyPair::receive(int length) const
{
    QByteArray result;
    pollfd watched = { m_master, POLLIN, 0 };
    while (result.size() < length && poll(&watched, 1, 2000) == 1) {
        char part[256];
        const ssize_t count = read(m_master, part, sizeof part);
        if (count <= 0)
            break;
        result.append(part, int(count));
    }
    return result;
}
