#include "clients.h"

#include <QFile>
#include <QLibrary>

#include <fcntl.h>
#include <pty.h>
#include <sys/resource.h>
#include <termios.h>
#include <unistd.h>

BenchClients::BenchClients(int count)
{
    rlimit files {};
    getrlimit(RLIMIT_NOFILE, &files);
    files.rlim_cur = files.rlim_max;
    setrlimit(RLIMIT_NOFILE, &files);
    for (int i = 0; i < count; ++i) {
        int master = -1;
        int slave = -1;
        char name[128] = "";
        if (openpty(&master, &slave, name, nullptr, nullptr) != 0)
            qFatal("bench: no pseudo-terminal for client %d", i);
        close(slave);
        m_masters.push_back(master);
        auto client = std::make_unique<tavoClient>();
        client->deviceName = QStringLiteral("ups%1").arg(i);
        client->setPort(QString::fromLatin1(name), QStringLiteral("9600,n,8,1"));
        m_clients.push_back(std::move(client));
    }
}

BenchClients::~BenchClients()
{
    m_clients.clear();
    for (int master : m_masters)
        close(master);
}

long benchQueries()
{
    // The same library that the clients loaded, found by the same bare name.
    static const auto count = reinterpret_cast<long (*)()>(
        QLibrary::resolve(QStringLiteral("libkx300_g4_6-20k"), "benchQueries"));
    if (!count)
        qFatal("bench: the bench driver was not found");
    return count();
}

double memoryKiB(const char *key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(int(qstrlen(key)) + 1).simplified().split(' ').first().toDouble();
    }
    return 0;
}
