#include "exampleservice.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>

#include <csignal>

namespace {

const QLatin1String logOption("log=");
constexpr int hangCommand = 13;
constexpr int crashCode = 42;

} // namespace

ExampleService::ExampleService(int &argc, char **argv, const QString &name)
    : Service(argc, argv, name)
{
    setDescription(QStringLiteral("Example service \"%1\"").arg(name));
    setVersion(QStringLiteral("1.0"));
    setStopLimit(std::chrono::milliseconds(3'000));
}

bool ExampleService::start()
{
    if (isAskedTo("slow"))
        QThread::sleep(1);
    if (isAskedTo("deaf"))
        signal(SIGTERM, SIG_IGN);
    if (isAskedTo("crash"))
        QTimer::singleShot(0, [] { QCoreApplication::exit(crashCode); });
    log(QStringLiteral("start ") + arguments().join(QLatin1Char('|')));
    return !isAskedTo("fail");
}

void ExampleService::stop()
{
    log(QStringLiteral("stop"));
    while (isAskedTo("stuck"))
        QThread::sleep(1);
}

bool ExampleService::pause()
{
    log(QStringLiteral("pause"));
    return true;
}

bool ExampleService::resume()
{
    log(QStringLiteral("resume"));
    return true;
}

bool ExampleService::processCommand(int command)
{
    log(QStringLiteral("command %1").arg(command));
    while (command == hangCommand && isAskedTo("hang"))
        QThread::sleep(1);
    return command >= 0;
}

bool ExampleService::isAskedTo(const char *misbehave) const
{
    return arguments().contains(QLatin1String(misbehave));
}

void ExampleService::log(const QString &text)
{
    qInfo("%s", qUtf8Printable(text));
    for (const QString &argument : arguments()) {
        if (!argument.startsWith(logOption))
            continue;
        QFile file(argument.mid(logOption.size()));
        if (!file.open(QIODevice::Append) || file.write(text.toUtf8() + '\n') < 0)
            qWarning("%s: %s", qUtf8Printable(file.fileName()), qUtf8Printable(file.errorString()));
    }
}
