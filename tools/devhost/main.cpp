#include "commandinput.h"
#include "devicehost.h"
#include "hostgui.h"
#include "hostoptions.h"
#include "languages.h"
#include "pluginfile.h"
#include "rundirectory.h"
#include "signalwatch.h"

#include <QApplication>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTimer>

#include <cstdio>
#include <unistd.h>

namespace {

int fail(ExitCode code, const QString &text)
{
    std::fprintf(stderr, "kx300-devhost: %s\n", qUtf8Printable(text));
    return int(code);
}

/** How a run ended; `arguments` are those of a new start, or empty. */
struct Ending
{
    int code = 0;
    QStringList arguments;
};

void connectEnds(DeviceHost &host, SignalWatch &signalWatch, double duration)
{
    const auto finish = [](int code) { QCoreApplication::exit(code); };
    const auto finishWell = [] { QCoreApplication::exit(int(ExitCode::Ok)); };
    QObject::connect(&signalWatch, &SignalWatch::caught, &host, finishWell);
    // Queued: the end may be asked for before the event loop runs.
    QObject::connect(&host, &DeviceHost::finished, &host, finish, Qt::QueuedConnection);
    if (duration > 0)
        QTimer::singleShot(int(qMin(duration * 1000, 2e9)), Qt::PreciseTimer, &host, finishWell);
}

/** Turns the code of the event loop into the program's. */
int conclude(int code, const HostOptions &options, const DeviceHost &host)
{
    if (code == int(ExitCode::Output))
        return fail(ExitCode::Output, QStringLiteral("standard output cannot be written"));
    if (code == int(ExitCode::Ok) && options.requireOnline && !host.allWereOnline())
        return fail(ExitCode::Offline, QStringLiteral("a device was never reached"));
    return code;
}

Ending run(const HostOptions &options, const QStringList &arguments, bool window)
{
    if (options.quiet)
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const QString file = options.plugin.isEmpty()
        ? defaultPlugin(RunDirectory::originalBinDirectory())
        : options.plugin;
    const LoadedPlugin plugin = loadPlugin(file);
    if (!plugin.factory)
        return { fail(ExitCode::Plugin, plugin.error), {} };
    for (const QString &missing : installCatalogues(options.language, file))
        qWarning("%s", qUtf8Printable(missing));

    SignalWatch signalWatch;
    DeviceHost host(options, *plugin.factory);
    connectEnds(host, signalWatch, options.duration);
    CommandInput input(STDIN_FILENO);
    QObject::connect(&input, &CommandInput::line, &host, &DeviceHost::command);
    QObject::connect(&input, &CommandInput::refused, &host, &DeviceHost::refuseLongLine);
    DeviceHost::Failure failure = host.open();
    std::unique_ptr<HostGui> gui;
    if (window && failure.code == ExitCode::Ok) {
        gui = std::make_unique<HostGui>(options, host);
        QObject::connect(gui.get(), &HostGui::finished, &host, &DeviceHost::finished);
        failure = gui->open();
    }
    if (failure.code != ExitCode::Ok)
        return { fail(failure.code, failure.text), {} };
    host.start();
    const int code = QCoreApplication::exec();
    host.finishOutput();
    if (code == HostGui::restart)
        return { code, gui->restartArguments(arguments) };
    return { conclude(code, options, host), {} };
}

/** Makes the application object that the run needs. It gets the program's name only: Qt would take
 *  --plugin and some others for options of its own. */
std::unique_ptr<QCoreApplication> createApplication(int &argc, char **argv, bool window)
{
    argc = 1;
    if (!window)
        return std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    return std::make_unique<QApplication>(argc, argv);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("kx300-devhost"));
    QCoreApplication::setApplicationVersion(QStringLiteral(DEVHOST_VERSION));
    QStringList arguments;
    ParsedOptions parsed;
    {
        const QCoreApplication parsing(argc, argv);
        arguments = QCoreApplication::arguments();
        parsed = parseOptions(arguments);
    }
    if (!parsed.message.isEmpty() && parsed.code == ExitCode::Ok) {
        std::fputs(qUtf8Printable(parsed.message), stdout);
        return 0;
    }
    if (parsed.code != ExitCode::Ok)
        return fail(parsed.code, parsed.message);
    HostOptions options = parsed.options;
    const bool window = HostGui::isWanted(options);
    options.devicesAreRemembered = window && options.devices.isEmpty();
    if (options.devicesAreRemembered)
        options.devices = WindowMemory().devices();
    if (!window && options.devices.isEmpty())
        return fail(ExitCode::Usage, QStringLiteral("no device: give at least one --device"));
    if (window && !HostGui::preparePlatform(options))
        return fail(ExitCode::Display, QStringLiteral("--gui: there is no display"));
    if (!RunDirectory::isActive())
        return fail(ExitCode::RunDirectory,
                    RunDirectory::enter(argv, options.driverDirectory).error);

    Ending ending;
    {
        const std::unique_ptr<QCoreApplication> application = createApplication(argc, argv, window);
        ending = run(options, arguments, window);
    }
    Outcome restarted;
    if (!ending.arguments.isEmpty())
        restarted = RunDirectory::restart(ending.arguments);
    RunDirectory::remove();
    return restarted.isGood() ? ending.code : fail(ExitCode::RunDirectory, restarted.error);
}
