#include "commandinput.h"
#include "devicehost.h"
#include "hostoptions.h"
#include "pluginfile.h"
#include "rundirectory.h"
#include "signalwatch.h"

#include <QApplication>
#include <QFileInfo>
#include <QTimer>

#include <cstdio>
#include <unistd.h>

namespace {

int fail(ExitCode code, const QString &text)
{
    std::fprintf(stderr, "devhost: %s\n", qUtf8Printable(text));
    return int(code);
}

int run(const HostOptions &options)
{
    const QString file = options.plugin.isEmpty()
        ? defaultPlugin(RunDirectory::originalBinDirectory())
        : options.plugin;
    const LoadedPlugin plugin = loadPlugin(file);
    if (!plugin.factory)
        return fail(ExitCode::Plugin, plugin.error);

    SignalWatch signalWatch;
    CommandInput input(STDIN_FILENO);
    DeviceHost host(options, *plugin.factory);
    const auto finish = [](int code) { QCoreApplication::exit(code); };
    QObject::connect(&signalWatch, &SignalWatch::caught, &host,
                     [finish] { finish(int(ExitCode::Ok)); });
    QObject::connect(&input, &CommandInput::line, &host, &DeviceHost::command);
    // Queued: the end may be asked for before the event loop runs.
    QObject::connect(&host, &DeviceHost::finished, &host, finish, Qt::QueuedConnection);

    const DeviceHost::Failure failure = host.open();
    if (failure.code != ExitCode::Ok)
        return fail(failure.code, failure.text);
    if (options.duration > 0)
        QTimer::singleShot(int(qMin(options.duration * 1000, 2e9)), &host,
                           [finish] { finish(int(ExitCode::Ok)); });
    host.start();
    const int code = QCoreApplication::exec();
    if (code == int(ExitCode::Output))
        return fail(ExitCode::Output, QStringLiteral("standard output cannot be written"));
    if (code == int(ExitCode::Ok) && options.requireOnline && !host.allWereOnline())
        return fail(ExitCode::Offline, QStringLiteral("a device was never reached"));
    return code;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("devhost"));
    HostOptions options;
    {
        const QCoreApplication parsing(argc, argv);
        const ParsedOptions parsed = parseOptions(parsing.arguments());
        if (!parsed.message.isEmpty() && parsed.code == ExitCode::Ok) {
            std::fputs(qUtf8Printable(parsed.message), stdout);
            return 0;
        }
        if (parsed.code != ExitCode::Ok)
            return fail(parsed.code, parsed.message);
        options = parsed.options;
    }
    if (!RunDirectory::isActive())
        return fail(ExitCode::RunDirectory, RunDirectory::enter(argv, options.driverDirectory));

    int code = 0;
    {
        const QCoreApplication application(argc, argv);
        code = run(options);
    }
    RunDirectory::remove();
    return code;
}
