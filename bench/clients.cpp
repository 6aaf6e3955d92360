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

namespace {

// Of the same library that the clients loaded, found by the same bare name.
template <typename Function> Function driverFunction(const char *name)
{
    const auto function =
        reinterpret_cast<Function>(QLibrary::resolve(QStringLiteral("libkx300_g4_6-20k"), name));
    if (!function)
        qFatal("bench: the bench driver was not found");
    return function;
}

} // namespace

void BenchClients::deleteLater()
{
    for (auto &client : m_clients)
        client.release()->deleteLater();
    m_clients.clear();
}

long benchQueries()
{
    static const auto count = driverFunction<long (*)()>("benchQueries");
    return count();
}

void benchHang(bool on)
{
    driverFunction<void (*)(bool)>("benchHang")(on);
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
