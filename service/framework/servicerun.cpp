#include "servicerun.h"

#include "managernotice.h"
#include "servicepaths.h"
#include "stopsignals.h"

#include <QCoreApplication>
#include <QTimer>

namespace {

// That of the manager, if it made one for us.
QString ownRuntimeDirectory(ServiceScope scope, const QString &name)
{
    const QString given = qEnvironmentVariable("RUNTIME_DIRECTORY").section(QLatin1Char(':'), 0, 0);
    return isStartedByManager() && !given.isEmpty() ? given : runtimeDirectory(scope, name);
}

void tell(const QByteArray &lines)
{
    if (!noticeManager(lines))
        qWarning("The service manager cannot be told %s.", lines.constData());
}

ControlReply refused(const char *text)
{
    return { false, QCoreApplication::translate("Service", text) };
}

} // namespace

ServiceRun::ServiceRun(const QString &name, ServiceScope scope, ServiceCallbacks callbacks)
    : m_name(name)
    , m_scope(scope)
    , m_callbacks(std::move(callbacks))
    , m_server([this](const ControlRequest &request) { return answer(request); })
{
}

int ServiceRun::exec(std::chrono::milliseconds stopLimit)
{
    logToJournal();
    const ServiceExit occupied = occupy();
    if (occupied != ServiceExit::Success)
        return int(occupied);
    StopSignals stopSignals([this] { askForEnd(); }, stopLimit, int(ServiceExit::StopHung));
    if (!stopSignals.isValid())
        qWarning("%s cannot watch for signals.", qUtf8Printable(m_name));
    m_signals = &stopSignals;
    if (m_callbacks.start())
        return loop();
    qCritical("%s did not start.", qUtf8Printable(m_name));
    return int(ServiceExit::StartFailed);
}

ServiceExit ServiceRun::occupy()
{
    const QString folder = ownRuntimeDirectory(m_scope, m_name);
    if (folder.isEmpty()) {
        qCritical("%s has no runtime folder: XDG_RUNTIME_DIR is not set.", qUtf8Printable(m_name));
        return ServiceExit::NoControlSocket;
    }
    const auto locked = m_lock.take(folder);
    const auto listening = locked == InstanceLock::Outcome::Locked
        ? m_server.listen(folder + QStringLiteral("/control"))
        : ControlServer::Outcome::Failed;
    if (listening == ControlServer::Outcome::Listening)
        return ServiceExit::Success;
    if (locked == InstanceLock::Outcome::Taken || listening == ControlServer::Outcome::Taken) {
        qCritical("%s is already running.", qUtf8Printable(m_name));
        return ServiceExit::AlreadyRunning;
    }
    const bool unlocked = locked == InstanceLock::Outcome::Failed;
    const QString why = unlocked ? m_lock.errorString() : m_server.errorString();
    qCritical("%s cannot listen: %s", qUtf8Printable(m_name), qUtf8Printable(why));
    return ServiceExit::NoControlSocket;
}

int ServiceRun::loop()
{
    QTimer signOfLife;
    QObject::connect(&signOfLife, &QTimer::timeout, [] { tell("WATCHDOG=1"); });
    if (const auto interval = watchdogInterval(); interval.count() > 0)
        signOfLife.start(interval);
    tell("READY=1\nSTATUS=Running");
    // A start that ran events has swallowed the quit.
    const int code = m_stopAsked ? int(ServiceExit::Success) : QCoreApplication::exec();
    tell("STOPPING=1\nSTATUS=Stopping");
    m_signals->request(); // also when the program itself ended the loop: stop() is limited
    m_callbacks.stop();
    return code;
}

void ServiceRun::askForEnd()
{
    m_stopAsked = true;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
}

ControlReply ServiceRun::answer(const ControlRequest &request)
{
    switch (request.verb) {
    case ControlVerb::State:
        return { true, m_paused ? QStringLiteral("paused") : QStringLiteral("running") };
    case ControlVerb::Pause:
        return changePause(true);
    case ControlVerb::Resume:
        return changePause(false);
    case ControlVerb::Terminate:
        m_signals->request();
        return { true, {} };
    case ControlVerb::Command:
        return m_callbacks.processCommand(request.command)
            ? ControlReply { true, {} }
            : refused(QT_TRANSLATE_NOOP("Service", "it does not know this command"));
    }
    Q_UNREACHABLE();
}

ControlReply ServiceRun::changePause(bool paused)
{
    if (paused == m_paused)
        return { true, QStringLiteral("unchanged") };
    if (!(paused ? m_callbacks.pause() : m_callbacks.resume()))
        return refused(QT_TRANSLATE_NOOP("Service", "it refuses to pause or resume"));
    m_paused = paused;
    tell(paused ? "STATUS=Paused" : "STATUS=Running");
    return { true, {} };
}
