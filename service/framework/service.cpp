#include "service.h"

#include "managernotice.h"
#include "servicecontroller.h"
#include "serviceinstaller.h"
#include "servicepaths.h"
#include "servicerun.h"
#include "serviceswitches.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace {

struct RequestRow
{
    SwitchAction action;
    ServiceAction request;
};

// clang-format off
constexpr RequestRow requestRows[] = {
    { SwitchAction::Run,       ServiceAction::Start   },
    { SwitchAction::Terminate, ServiceAction::Stop    },
    { SwitchAction::Pause,     ServiceAction::Pause   },
    { SwitchAction::Resume,    ServiceAction::Resume  },
    { SwitchAction::Command,   ServiceAction::Command },
};
// clang-format on

ServiceScope scopeOf(const ServiceCommandLine &line)
{
    return geteuid() == 0 && !line.userScope ? ServiceScope::System : ServiceScope::User;
}

// The words of the command line without the program's name.
QList<QByteArray> wordsOf(int argc, char **argv)
{
    QList<QByteArray> words;
    for (int i = 1; i < argc; ++i)
        words += argv[i];
    return words;
}

// Whether a user's request may have failed because it went to the wrong manager.
bool isElsewhere(ServiceError error)
{
    return error == ServiceError::UnitMissing || error == ServiceError::NotSupported
        || error == ServiceError::NotReachable;
}

QString translated(const char *text)
{
    return QCoreApplication::translate("Service", text);
}

// Prints to the stream that fits the outcome; nothing for an empty text.
ServiceExit report(bool ok, const QString &text)
{
    if (!text.isEmpty())
        fprintf(ok ? stdout : stderr, "%s\n", qUtf8Printable(text));
    return ok ? ServiceExit::Success : ServiceExit::RequestFailed;
}

} // namespace

Service::Service(int &argc, char **argv, const QString &name)
    : m_argc(argc)
    , m_argv(argv)
    , m_name(name)
    , m_description(name)
{
}

Service::~Service() = default;

bool Service::processCommand(int)
{
    return false;
}

int Service::exec()
{
    std::unique_ptr<QCoreApplication> application;
    if (!QCoreApplication::instance())
        application = std::make_unique<QCoreApplication>(m_argc, m_argv);
    ServiceCommandLine line = parseSwitches(wordsOf(m_argc, m_argv));
    if (line.error.isEmpty() && !isServiceName(m_name))
        line.error =
            translated(QT_TRANSLATE_NOOP("Service", "\"%1\" is not the name of a service."))
                .arg(m_name);
    if (!line.error.isEmpty()) {
        fprintf(stderr, "%s\n%s", qUtf8Printable(line.error), qUtf8Printable(switchHelp(m_name)));
        return int(ServiceExit::Usage);
    }
    m_arguments = line.arguments;
    return carryOut(line);
}

int Service::carryOut(const ServiceCommandLine &line)
{
    switch (line.action) {
    case SwitchAction::Install:
        return int(install(line));
    case SwitchAction::Uninstall:
        return int(uninstall(line));
    case SwitchAction::Exec:
        return run(line);
    case SwitchAction::Version:
        return int(report(true, QStringLiteral("%1 %2").arg(m_name, m_version).trimmed()));
    case SwitchAction::Help:
        return int(report(true, switchHelp(m_name).trimmed()));
    case SwitchAction::Run:
        return isStartedByManager() ? run(line) : int(control(line));
    case SwitchAction::Terminate:
    case SwitchAction::Pause:
    case SwitchAction::Resume:
    case SwitchAction::Command:
        return int(control(line));
    }
    Q_UNREACHABLE();
}

ServiceExit Service::install(const ServiceCommandLine &line)
{
    const ServiceResult result =
        installService({ m_name, m_description, QCoreApplication::applicationFilePath(),
                         m_arguments, line.account, m_stopLimit, scopeOf(line) });
    return report(result.ok(), result.text);
}

ServiceExit Service::uninstall(const ServiceCommandLine &line)
{
    return conclude(line, uninstallService(m_name, scopeOf(line)));
}

int Service::run(const ServiceCommandLine &line)
{
    ServiceRun run(m_name, scopeOf(line),
                   { [this] { return start(); }, [this] { stop(); }, [this] { return pause(); },
                     [this] { return resume(); },
                     [this](int command) { return processCommand(command); } });
    return run.exec(m_stopLimit);
}

ServiceExit Service::control(const ServiceCommandLine &line)
{
    if (line.action == SwitchAction::Run && !m_arguments.isEmpty())
        report(false,
               translated(QT_TRANSLATE_NOOP("Service",
                                            "A start takes no arguments: what follows \"--\" "
                                            "counts with \"-install\" and \"-exec\".")));
    ServiceController controller(m_name);
    controller.setScope(scopeOf(line));
    const auto row = std::find_if(std::begin(requestRows), std::end(requestRows),
                                  [&line](const RequestRow &r) { return r.action == line.action; });
    controller.carryOut({ row->request, line.command });
    return conclude(line, controller.lastResult());
}

ServiceExit Service::conclude(const ServiceCommandLine &line, const ServiceResult &result)
{
    const bool mayBeSystems =
        isElsewhere(result.error) && !line.userScope && scopeOf(line) == ServiceScope::User;
    if (mayBeSystems && isInstalledForSystem(m_name))
        return report(
            false,
            translated(QT_TRANSLATE_NOOP("Service",
                                         "The service \"%1\" belongs to the system: not allowed."))
                .arg(m_name));
    return report(result.ok(), result.text);
}
