#include "hostoptions.h"

#include "hostcommand.h"

#include <QCommandLineParser>
#include <QRegularExpression>

namespace {

enum class Needs { Nothing, Value };

struct OptionRow
{
    const char *name;
    Needs needs;
    const char *value;
    const char *text;
    const char *standard;
};

// clang-format off
constexpr OptionRow optionRows[] = {
    { "plugin",           Needs::Value,   "FILE",  "The plug-in; default: ../lib beside this program, then where it is installed.", "" },
    { "device",           Needs::Value,   "SPEC",  "A device, repeatable; a window can do without, and remembers those that are added in it: name=N,port=PORT[,addr=1][,settings=9600,n,8,1][,timeout=1000] or name=N,tcp=HOST[:502][,addr=1].", "" },
    { "interval",         Needs::Value,   "S",     "Seconds from 1 to 86400 between two polls of a device, and between two reports of it in the text.", "1" },
    { "retries",          Needs::Value,   "N",     "Failed polls, 1 to 1000, until a device counts as lost.", "5" },
    { "poll",             Needs::Nothing, "",      "Call poll() of the clients instead of starting them as threads.", "" },
    { "driver-dir",       Needs::Value,   "DIR",   "The directory of the driver library; default: where drivers are installed, then LD_LIBRARY_PATH.", "" },
    { "duration",         Needs::Value,   "S",     "End after S seconds; 0: when asked to.", "0" },
    { "require-online",   Needs::Nothing, "",      "Fail at the end when a device was never reached.", "" },
    { "json",             Needs::Nothing, "",      "Print one JSON object a line instead of text.", "" },
    { "quiet",            Needs::Nothing, "",      "Keep the debug lines of the plug-in off standard error.", "" },
    { "send",             Needs::Value,   "CMD",   "Send a command once the clients run, repeatable: \"NAME ID [VALUE]\"; \"5 NAME ID\" or \"@5 NAME ID\" waits 5 s.", "" },
    { "event-log",        Needs::Value,   "FILE",  "Append the events to a CSV file.", "" },
    { "data-log",         Needs::Value,   "FILE",  "Append a row for each report to a CSV file.", "" },
    { "gui",              Needs::Nothing, "",      "Show the window (the default with a display).", "" },
    { "headless",         Needs::Nothing, "",      "Show no window.", "" },
    { "language",         Needs::Value,   "LANG",  "Language of the texts, for example zh_CN; default: English.", "" },
    { "user-level",       Needs::Value,   "N",     "Rights of the user at start, 0 to 9: 0 may only look.", "1" },
    { "window-size",      Needs::Value,   "WxH",   "Size of the window; default: as it was left.", "" },
    { "palette",          Needs::Value,   "NAME",  "Colours: \"light\" or \"dark\"; default: the desktop's.", "" },
    { "screenshot",       Needs::Value,   "FILE",  "Save a picture of each tab of the first device as FILE-TAB.png, then end.", "" },
    { "screenshot-after", Needs::Value,   "S",     "Seconds from the first report to the pictures.", "2" },
    { "screenshot-unreached", Needs::Nothing, "",  "Take the pictures whether or not the device answers.", "" },
    { "screenshot-dialogs", Needs::Nothing, "",    "Take pictures of dialogs and of a history download, too.", "" },
};
// clang-format on

QString label(const char *text)
{
    return QString::fromLatin1(text);
}

/** The help of the exit codes and of the commands, below the options. */
QString helpTail()
{
    QString text =
        QStringLiteral("\nCommands on standard input:\n"
                       "  [@S] NAME ID [VALUE]   e.g. \"ups1 1003\", \"@5 ups1 2016 3005,18\"\n"
                       "  devices                the devices and their states\n"
                       "  quit\n"
                       "Each is answered on standard output: accepted, or what is wrong with it. "
                       "\"accepted\"\nmeans that the plug-in queued it; it reports the outcome of "
                       "1045 only (event 1042).\nWatch the values for that of any other.\n"
                       "\n    ID  Effect                                      VALUE\n")
        + commandHelp() + QStringLiteral("\nExit codes:\n");
    for (const ExitCodeText &row : exitCodeTexts)
        text += QStringLiteral("  %1  %2\n").arg(int(row.code), 2).arg(label(row.text));
    return text;
}

/** Reads numbers out of the parsed command line and keeps the first complaint. */
class NumberReader
{
public:
    explicit NumberReader(const QCommandLineParser &parser)
        : m_parser(parser)
    {
    }

    double number(const char *option, double least, double most)
    {
        bool ok = false;
        const QString text = m_parser.value(label(option));
        const double value = text.toDouble(&ok);
        if (ok && value >= least && value <= most)
            return value;
        refuse(option, "number", least, most);
        return least;
    }

    int whole(const char *option, int least, int most)
    {
        const double value = number(option, least, most);
        if (double(int(value)) != value)
            refuse(option, "whole number", least, most);
        return int(value);
    }

    void complain(const QString &text)
    {
        if (m_error.isEmpty())
            m_error = text;
    }

    QString error() const { return m_error; }

private:
    void refuse(const char *option, const char *what, double least, double most)
    {
        complain(QStringLiteral("--%1: \"%2\" is no %3 from %4 to %5")
                     .arg(label(option), m_parser.value(label(option)), label(what))
                     .arg(least, 0, 'f', 0)
                     .arg(most, 0, 'f', 0));
    }

    const QCommandLineParser &m_parser;
    QString m_error;
};

void readDevices(const QStringList &texts, HostOptions &options, NumberReader &reader)
{
    for (const QString &text : texts) {
        const ParsedDevice parsed = parseDevice(text);
        if (!parsed.device) {
            reader.complain(QStringLiteral("--device %1: %2").arg(text, parsed.error));
            continue;
        }
        const Outcome fits = checkBeside(*parsed.device, options.devices);
        if (!fits.isGood())
            reader.complain(fits.error);
        options.devices << *parsed.device;
    }
}

void readWindowSize(const QString &text, HostOptions &options, NumberReader &reader)
{
    static const QRegularExpression form(QStringLiteral(R"(^(\d{2,5})x(\d{2,5})$)"));
    const QRegularExpressionMatch match = form.match(text);
    if (match.hasMatch())
        options.windowSize = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    else
        reader.complain(
            QStringLiteral(
                "--window-size: \"%1\" is no size such as 1000x640, from 10x10 to 99999x99999")
                .arg(text));
}

void defineOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Loads the UPS plug-in like its host does, polls devices and prints what "
                       "the plug-in posts."));
    for (const OptionRow &row : optionRows) {
        QString text = label(row.text);
        if (*row.standard)
            text += QStringLiteral(" Default: %1.").arg(label(row.standard));
        QCommandLineOption option(label(row.name), text);
        if (row.needs == Needs::Value) {
            option.setValueName(label(row.value));
            option.setDefaultValue(label(row.standard));
        }
        parser.addOption(option);
    }
}

/** What a repeatable option was given; the empty default stands for "not given". */
QStringList given(const QCommandLineParser &parser, const char *option)
{
    return parser.isSet(label(option)) ? parser.values(label(option)) : QStringList();
}

HostOptions readValues(const QCommandLineParser &parser, NumberReader &reader)
{
    HostOptions options;
    options.plugin = parser.value(label("plugin"));
    options.driverDirectory = parser.value(label("driver-dir"));
    options.commands = given(parser, "send");
    options.eventLog = parser.value(label("event-log"));
    options.dataLog = parser.value(label("data-log"));
    options.language = parser.value(label("language"));
    options.screenshot = parser.value(label("screenshot"));
    options.palette = parser.value(label("palette"));
    if (!QStringList({ QString(), label("light"), label("dark") }).contains(options.palette))
        reader.complain(QStringLiteral("--palette: \"%1\" is neither \"light\" nor \"dark\"")
                            .arg(options.palette));
    options.screenshotUnreached = parser.isSet(label("screenshot-unreached"));
    options.screenshotDialogs = parser.isSet(label("screenshot-dialogs"));
    options.duration = reader.number("duration", 0, 1e6);
    options.screenshotDelay = reader.number("screenshot-after", 0, 3600);
    options.interval = reader.whole("interval", 1, 86400);
    options.retries = reader.whole("retries", 1, 1000);
    options.userLevel = reader.whole("user-level", 0, 9);
    options.json = parser.isSet(label("json"));
    options.quiet = parser.isSet(label("quiet"));
    options.poll = parser.isSet(label("poll"));
    options.gui = parser.isSet(label("gui"));
    options.headless = parser.isSet(label("headless"));
    options.requireOnline = parser.isSet(label("require-online"));
    if (parser.isSet(label("window-size")))
        readWindowSize(parser.value(label("window-size")), options, reader);
    readDevices(given(parser, "device"), options, reader);
    if (options.devices.isEmpty() && (options.headless || !options.screenshot.isEmpty()))
        reader.complain(QStringLiteral("no device: give at least one --device"));
    if (options.headless && (options.gui || !options.screenshot.isEmpty()))
        reader.complain(QStringLiteral("--headless goes with neither --gui nor --screenshot"));
    return options;
}

} // namespace

ParsedOptions parseOptions(const QStringList &arguments)
{
    for (const QString &argument : arguments)
        if (argument.section(QLatin1Char('='), 0, 0) == QLatin1String("-plugin"))
            return { {},
                     QStringLiteral(
                         "-plugin is Qt's own option and is not taken here: the UPS "
                         "plug-in is named with --plugin, and Qt's generic plug-ins with "
                         "the variable QT_QPA_GENERIC_PLUGINS"),
                     ExitCode::Usage };
    QCommandLineParser parser;
    defineOptions(parser);
    // Qt's own one would offer the options of Qt, which are not taken.
    const QCommandLineOption help({ QStringLiteral("h"), QStringLiteral("help") },
                                  QStringLiteral("Show this help."));
    parser.addOption(help);
    const QCommandLineOption version = parser.addVersionOption();
    if (!parser.parse(arguments))
        return { {}, parser.errorText(), ExitCode::Usage };
    if (parser.isSet(help))
        return { {}, parser.helpText() + helpTail(), ExitCode::Ok };
    if (parser.isSet(version))
        return { {},
                 QStringLiteral("%1 %2\n").arg(QCoreApplication::applicationName(),
                                               QCoreApplication::applicationVersion()),
                 ExitCode::Ok };
    NumberReader reader(parser);
    if (!parser.positionalArguments().isEmpty())
        reader.complain(
            QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().first()));
    const HostOptions options = readValues(parser, reader);
    if (!reader.error().isEmpty())
        return { {}, reader.error(), ExitCode::Usage };
    return { options, {}, ExitCode::Ok };
}
