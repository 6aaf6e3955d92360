// A simulated UPS as a Modbus server, for developers, tests and demonstrations.

#include "console.h"
#include "modbusserver.h"
#include "simulator.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTime>
#include <QTimer>

#include <climits>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/signalfd.h>
#include <unistd.h>

using namespace upssim;

namespace {

constexpr int tick = 100; // ms
constexpr int failure = 1;

struct Code
{
    int code;
    const char *text;
};

// clang-format off
constexpr Code contents[] = {
    { upscontent::FirstEvent + upsevent::OverTemperature,     "over temperature" },
    { upscontent::FirstEvent + upsevent::Overload,            "overload" },
    { upscontent::FirstEvent + upsevent::FanFault,            "fan fault" },
    { upscontent::FirstEvent + upsevent::Epo,                 "emergency power off" },
    { upscontent::FirstEvent + upsevent::OverloadAlarm,       "overload alarm" },
    { upscontent::FirstEvent + upsevent::BatteryDisconnected, "battery disconnected" },
    { upscontent::FirstEvent + upsevent::BatteryLow,          "battery voltage low" },
    { upscontent::FirstEvent + upsevent::InputHigh,           "input voltage high" },
    { upscontent::FirstEvent + upsevent::InputFrequency,      "input frequency abnormal" },
    { upscontent::FirstEvent + upsevent::EndOfDischarge,      "end of discharge" },
    { upscontent::FirstEvent + upsevent::TestSuccess,         "battery test passed" },
    { upscontent::FirstEvent + upsevent::ForbiddenStart,      "start-up forbidden" },
    { upscontent::FirstEvent + upsevent::TestFail,            "battery test failed" },
    { upscontent::FirstEvent + upsevent::MaintenanceSuccess,  "battery maintenance done" },
    { upscontent::FirstEvent + upsevent::MaintenanceFail,     "battery maintenance failed" },
    { upscontent::FirstEvent + upsevent::AbnormalInput,       "mains abnormal" },
    { upscontent::FirstEvent + upsevent::AbnormalBypass,      "bypass abnormal" },
    { upscontent::FirstEvent + upsevent::TestMode,            "test mode" },
    { upscontent::Started, "started" },
    { upscontent::FaultCleared, "fault cleared" },
    { upscontent::HistoryCleared, "history cleared" },
    { upscontent::TestStarted, "battery test" },
    { upscontent::TestStopped, "battery test stopped" },
    { upscontent::ManualBypass, "transfer to bypass asked for" },
    { upscontent::ManualInverter, "transfer to inverter asked for" },
    { upscontent::ManualShutDown, "shut down" },
    { upscontent::ManualStart, "start-up" },
    { upscontent::InputFromMains, "input from mains" },
    { upscontent::InputFromBattery, "input from battery" },
    { upscontent::OutputFromInverter, "output from inverter" },
    { upscontent::OutputFromBypass, "output from bypass" },
    { upscontent::OutputOff, "output off" },
    { upscontent::MaintenanceStarted, "battery maintenance" },
};
// clang-format on

// One line on standard output, at once: whoever started the simulator waits for it.
void say(const QString &line)
{
    std::printf("%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

int fail(const QString &message)
{
    std::fprintf(stderr, "kx300-upssim: %s\n", qUtf8Printable(message));
    return failure;
}

QString describe(const HistoryRecord &record)
{
    const QString time =
        QTime(0, 0).addSecs(int(record.second)).toString(QStringLiteral("hh:mm:ss"));
    for (const Code &content : contents) {
        if (content.code == record.content) {
            return QStringLiteral("%1  %2%3")
                .arg(time, QString::fromLatin1(content.text),
                     record.status ? QString() : QStringLiteral(": over"));
        }
    }
    return QStringLiteral("%1  event %2%3")
        .arg(time)
        .arg(record.content - upscontent::FirstEvent)
        .arg(record.status ? QString() : QStringLiteral(": over"));
}

// SIGINT and SIGTERM as a descriptor; they end the event loop, not the process.
int signalDescriptor()
{
    sigset_t endings;
    sigemptyset(&endings);
    sigaddset(&endings, SIGINT);
    sigaddset(&endings, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &endings, nullptr);
    return signalfd(-1, &endings, SFD_CLOEXEC | SFD_NONBLOCK);
}

void addOptions(QCommandLineParser &parser)
{
    // clang-format off
    parser.addOptions({
        { QStringLiteral("tcp"), QStringLiteral("Serve Modbus TCP there, for example 127.0.0.1:1502; port 0 is any free port."), QStringLiteral("ip:port") },
        { QStringLiteral("pty"), QStringLiteral("Serve Modbus RTU on a pseudo-terminal with this symbolic link."), QStringLiteral("link") },
        { QStringLiteral("address"), QStringLiteral("Device address, 1 to 247. Default: 1."), QStringLiteral("address"), QStringLiteral("1") },
        { QStringLiteral("scenario"), QStringLiteral("Play this scenario. Default: normal."), QStringLiteral("name") },
        { QStringLiteral("script"), QStringLiteral("Play the script in this file."), QStringLiteral("file") },
        { QStringLiteral("seed"), QStringLiteral("Seed of the small movements, 0 to 4294967295. Default: 1."), QStringLiteral("number"), QStringLiteral("1") },
        { QStringLiteral("verbose"), QStringLiteral("Print every change of the UPS.") },
    });
    // clang-format on
    parser.addHelpOption();
    parser.addVersionOption();
    const QString indent = QStringLiteral("\n  ");
    parser.setApplicationDescription(
        QStringLiteral("Simulates a three-phase UPS as a Modbus server.\n\nScenarios:") + indent
        + scenarioHelp().join(indent)
        + QStringLiteral("\n\nActions, a line each, on standard input (and, after the time in "
                         "seconds, in scripts):")
        + indent + actionHelp().join(indent) + indent + QStringLiteral("quit"));
}

Result<quint32> wholeNumber(const QCommandLineParser &parser, const char *option, quint32 least,
                            quint32 most)
{
    bool numeric = false;
    const QString text = parser.value(QLatin1String(option));
    const quint32 number = text.toUInt(&numeric);
    if (numeric && number >= least && number <= most)
        return number;
    return Failure { QStringLiteral("--%1: \"%2\" is no whole number from %3 to %4")
                         .arg(QLatin1String(option), text)
                         .arg(least)
                         .arg(most) };
}

// The script that the options ask for; an empty one when they ask for none.
Result<Script> chosenScript(const QCommandLineParser &parser)
{
    const QString name = parser.value(QStringLiteral("scenario"));
    const QString fileName = parser.value(QStringLiteral("script"));
    if (!name.isEmpty() && !fileName.isEmpty())
        return Failure { QStringLiteral("--scenario and --script exclude each other") };
    if (fileName.isEmpty())
        return scenario(name.isEmpty() ? QStringLiteral("normal") : name);
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return Failure { QStringLiteral("%1: %2").arg(fileName, file.errorString()) };
    const Result<Script> script = parseScript(QString::fromUtf8(file.readAll()));
    if (!script)
        return Failure { QStringLiteral("%1: %2").arg(fileName, script.error()) };
    return script;
}

struct Chosen
{
    int address;
    quint32 seed;
    Script script;
};

Result<Chosen> readOptions(const QCommandLineParser &parser)
{
    if (!parser.positionalArguments().isEmpty())
        return Failure { QStringLiteral("unexpected argument \"%1\" (see --help)")
                             .arg(parser.positionalArguments().first()) };
    const Result<quint32> address = wholeNumber(parser, "address", 1, 247);
    const Result<quint32> seed = wholeNumber(parser, "seed", 0, UINT_MAX);
    for (const Result<quint32> &number : { address, seed })
        if (!number)
            return Failure { number.error() };
    const Result<Script> script = chosenScript(parser);
    if (!script)
        return Failure { script.error() };
    return Chosen { int(*address), *seed, *script };
}

Result<Done> openTcp(const QString &where, ModbusServer &server)
{
    const QString host = where.section(QLatin1Char(':'), 0, 0);
    bool numeric = false;
    const int asked = where.section(QLatin1Char(':'), 1).toUShort(&numeric);
    if (host.isEmpty() || !numeric)
        return Failure { QStringLiteral("--tcp: \"%1\" is no address with a port from 0 to 65535, "
                                        "such as 127.0.0.1:1502")
                             .arg(where) };
    const Result<int> port = server.listen(host, asked);
    if (!port)
        return Failure { port.error() };
    say(QStringLiteral("tcp %1:%2").arg(host).arg(*port));
    return Done {};
}

// Opens what the options ask for and says where.
Result<Done> openLines(const QCommandLineParser &parser, ModbusServer &server)
{
    const QString tcp = parser.value(QStringLiteral("tcp"));
    const QString link = parser.value(QStringLiteral("pty"));
    if (tcp.isEmpty() && link.isEmpty())
        return Failure { QStringLiteral("nothing to serve: give --tcp, --pty or both") };
    if (!tcp.isEmpty()) {
        const Result<Done> opened = openTcp(tcp, server);
        if (!opened)
            return opened;
    }
    if (link.isEmpty())
        return Done {};
    const Result<Done> opened = server.openTerminal(link);
    if (opened)
        say(QStringLiteral("pty %1").arg(link));
    return opened;
}

} // namespace

int main(int argc, char *argv[])
{
    const int signalFile = signalDescriptor();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kx300-upssim"));
    QCoreApplication::setApplicationVersion(QStringLiteral(UPSSIM_VERSION));
    QCommandLineParser parser;
    addOptions(parser);
    parser.process(application);

    const Result<Chosen> chosen = readOptions(parser);
    if (!chosen)
        return fail(chosen.error());

    Simulator simulator(chosen->seed, QTime::currentTime().msecsSinceStartOfDay() / 1000.0);
    if (parser.isSet(QStringLiteral("verbose")))
        simulator.model().onRecord = [](const HistoryRecord &record) { say(describe(record)); };
    ModbusServer server(simulator, chosen->address);
    const Result<Done> opened = openLines(parser, server);
    if (!opened)
        return fail(opened.error());
    simulator.play(chosen->script);

    QSocketNotifier signalNotifier(signalFile, QSocketNotifier::Read);
    QObject::connect(&signalNotifier, &QSocketNotifier::activated, &application,
                     &QCoreApplication::quit);
    const Console console(simulator, STDIN_FILENO, say);
    QElapsedTimer clock;
    clock.start();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &application,
                     [&] { simulator.advance(double(clock.restart()) / 1000); });
    timer.start(tick);
    say(QStringLiteral("ready"));
    return QCoreApplication::exec();
}
