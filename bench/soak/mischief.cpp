#include "mischief.h"

#include "collectthread.h"

#include <QCoreApplication>
#include <QFile>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr off_t hugeLog = 3'000'000'000; // bytes, none of them on the disk

// In the sanitizers' builds.
QProcessEnvironment environmentOfHosts()
{
    auto environment = QProcessEnvironment::systemEnvironment();
    const auto add = [&environment](const QString &name, const char *option) {
        environment.insert(name, environment.value(name) + QLatin1String(option));
    };
    add(QStringLiteral("ASAN_OPTIONS"), ":detect_leaks=0"); // nothing is given back
    add(QStringLiteral("TSAN_OPTIONS"), ":atexit_sleep_ms=0");
    return environment;
}

} // namespace

Mischief::Mischief(const QStringList &files)
    : m_files(files)
{
    m_host.setProcessEnvironment(environmentOfHosts());
    m_host.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_host, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &Mischief::takeExit);
}

Mischief::~Mischief()
{
    stop();
    for (const QString &file : m_files) {
        QFile::remove(file);
        QFile::remove(file + QLatin1String(".bak.log"));
    }
}

void Mischief::start()
{
    m_isStopping = false;
    startHost();
}

void Mischief::stop()
{
    m_isStopping = true;
    m_host.waitForFinished(-1);
}

// Mostly while threads begin; now and then once TCP clients are connected.
void Mischief::startHost()
{
    const unsigned time = m_random() % (m_random() % 8 ? 300 : 9000);
    m_host.start(
        QCoreApplication::applicationFilePath(),
        { QCoreApplication::arguments().at(1), QStringLiteral("--exit"), QString::number(time) });
}

void Mischief::takeExit()
{
    ++m_exits;
    if (m_host.exitStatus() != QProcess::NormalExit || m_host.exitCode() != 0) {
        ++m_failedExits;
        std::fprintf(stderr, "a host that exits FAILED: %s\n", m_host.readAll().constData());
    }
    if (!m_isStopping)
        QTimer::singleShot(100, this, [this] {
            if (!m_isStopping && m_host.state() == QProcess::NotRunning)
                startHost();
        });
}

void Mischief::spoilAFile()
{
    ++m_spoiltFiles;
    const QString &file = m_files.at(int(m_random() % unsigned(m_files.size())));
    const QByteArray name = QFile::encodeName(file);
    unlink(name.constData());
    switch (m_random() % 4) {
    case 0:
        mkfifo(name.constData(), 0600);
        break;
    case 1:
        static_cast<void>(QFile(file).open(QIODevice::WriteOnly));
        if (file.endsWith(QLatin1String(".log")))
            static_cast<void>(truncate(name.constData(), hugeLog));
        break;
    case 2:
        if (QFile text(file); text.open(QIODevice::WriteOnly))
            text.write("[dev]\npts\\0\\param=hello\nnonsense\nLanguage=x\n");
        break;
    default:
        break; // removed
    }
}

// The devices with these names are on TCP, or in no file.
void runAndExit(CollectThread &plugin, int milliseconds)
{
    for (const char *name : { "ups1", "ups6", "ups11", "ups16", "a", "b", "c", "d" }) {
        CollectThread *client = plugin.create(nullptr);
        client->deviceName = QString::fromLatin1(name);
        client->loadConfig();
        client->start();
    }
    usleep(useconds_t(milliseconds) * 1000);
    exit(0);
}
