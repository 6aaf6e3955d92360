#include "hostoptions.h"

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
    { "device",           Needs::Value,   "SPEC",  "A device, repeatable: name=N,port=PORT[,addr=1][,settings=9600,n,8,1][,timeout=1000] or name=N,tcp=HOST[:502][,addr=1].", "" },
    { "interval",         Needs::Value,   "S",     "Seconds between two polls of a device, and between two reports of it in the text.", "1" },
    { "retries",          Needs::Value,   "N",     "Failed polls until a device counts as lost.", "5" },
    { "poll",             Needs::Nothing, "",      "Call poll() of the clients instead of starting them as threads.", "" },
    { "driver-dir",       Needs::Value,   "DIR",   "Where the driver library is; wins over ../lib and LD_LIBRARY_PATH.", "" },
    { "duration",         Needs::Value,   "S",     "End after S seconds.", "0" },
    { "require-online",   Needs::Nothing, "",      "Fail at the end when a device was never reached.", "" },
    { "json",             Needs::Nothing, "",      "Print one JSON object a line instead of text.", "" },
    { "quiet",            Needs::Nothing, "",      "Keep the debug lines of the plug-in off standard error.", "" },
    { "send",             Needs::Value,   "CMD",   "Send a command once the clients run, repeatable: \"NAME ID [VALUE]\"; \"5 NAME ID\" or \"@5 NAME ID\" waits 5 s.", "" },
    { "event-log",        Needs::Value,   "FILE",  "Append the events to a CSV file.", "" },
    { "data-log",         Needs::Value,   "FILE",  "Append a row for each report to a CSV file.", "" },
    { "gui",              Needs::Nothing, "",      "Show the window (the default with a display).", "" },
    { "headless",         Needs::Nothing, "",      "Show no window.", "" },
    { "language",         Needs::Value,   "LANG",  "Language of the texts, for example zh_CN.", "" },
    { "user-level",       Needs::Value,   "N",     "Rights of the user at start: 0 may only look.", "1" },
    { "window-size",      Needs::Value,   "WxH",   "Size of the window.", "1000x640" },
    { "screenshot",       Needs::Value,   "FILE",  "Save a picture of each tab of the first device as FILE-TAB.png, then end.", "" },
    { "screenshot-after", Needs::Value,   "S",     "Seconds from the first report to the pictures.", "2" },
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
                       "  [@S] NAME ID [VALUE]   e.g. \"ups1 1003\", \"ups1 2016 3005,18\"\n"
                       "  devices                the devices and their states\n"
                       "  quit\n\nExit codes:\n");
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
        complain(QStringLiteral("--%1: \"%2\" is no number from %3 to %4")
                     .arg(label(option), text)
                     .arg(least)
                     .arg(most));
        return least;
    }

    int whole(const char *option, int least, int most)
    {
        const double value = number(option, least, most);
        if (double(int(value)) != value)
            complain(QStringLiteral("--%1 takes a whole number").arg(label(option)));
        return int(value);
    }

    void complain(const QString &text)
    {
        if (m_error.isEmpty())
            m_error = text;
    }

    QString error() const { return m_error; }

private:
    const QCommandLineParser &m_parser;
    QString m_error;
};

/** "key=value" pairs parted by commas; a part without "=" belongs to the value before it,
 *  because the settings of a port hold commas themselves. */
QList<QPair<QString, QString>> keysAndValues(const QString &text)
{
    QList<QPair<QString, QString>> pairs;
    for (const QString &part : text.split(QLatin1Char(','))) {
        const int equals = part.indexOf(QLatin1Char('='));
        if (equals < 0 && !pairs.isEmpty())
            pairs.last().second += QLatin1Char(',') + part;
        else
            pairs.append({ part.left(qMax(equals, 0)).trimmed(), part.mid(equals + 1).trimmed() });
    }
    return pairs;
}

/** Parts "127.0.0.1:1502", "[::1]:1502" or "host" into host and port. */
bool readPeer(const QString &text, DeviceSpec &device)
{
    static const QRegularExpression form(
        QStringLiteral(R"(^(?:\[([^\]]+)\]|([^:\[\]]+))(?::(\d{1,5}))?$)"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return false;
    device.host = match.captured(1) + match.captured(2);
    if (!match.captured(3).isEmpty())
        device.tcpPort = match.captured(3).toInt();
    return device.tcpPort >= 1 && device.tcpPort <= 65535;
}

bool readWhole(const QString &text, int least, int most, int &number)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok || value < least || value > most)
        return false;
    number = value;
    return true;
}

/** @return the reason why the pair is refused, empty when it was taken */
QString takePair(const QString &key, const QString &value, DeviceSpec &device)
{
    bool good = !value.isEmpty();
    if (key == QLatin1String("name"))
        device.name = value;
    else if (key == QLatin1String("port"))
        device.port = value;
    else if (key == QLatin1String("tcp"))
        good = readPeer(value, device);
    else if (key == QLatin1String("addr"))
        good = readWhole(value, 1, 247, device.address);
    else if (key == QLatin1String("settings"))
        device.settings = value;
    else if (key == QLatin1String("timeout"))
        good = readWhole(value, 1, 60000, device.timeout);
    else
        return QStringLiteral("unknown key \"%1\"").arg(key);
    return good ? QString() : QStringLiteral("%1=%2 is not usable").arg(key, value);
}

void readDevices(const QStringList &texts, HostOptions &options, NumberReader &reader)
{
    QStringList names;
    for (const QString &text : texts) {
        QString error;
        const std::optional<DeviceSpec> device = parseDevice(text, error);
        if (!device) {
            reader.complain(QStringLiteral("--device %1: %2").arg(text, error));
            continue;
        }
        if (names.contains(device->name))
            reader.complain(QStringLiteral("two devices are named \"%1\"").arg(device->name));
        names << device->name;
        options.devices << *device;
    }
    if (options.devices.isEmpty())
        reader.complain(QStringLiteral("no device: give at least one --device"));
}

void readWindowSize(const QString &text, HostOptions &options, NumberReader &reader)
{
    static const QRegularExpression form(QStringLiteral(R"(^(\d{2,5})x(\d{2,5})$)"));
    const QRegularExpressionMatch match = form.match(text);
    if (match.hasMatch())
        options.windowSize = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    else
        reader.complain(QStringLiteral("--window-size: \"%1\" is no size like 1000x640").arg(text));
}

void defineOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Loads the UPS plug-in like its host does, polls devices and prints what "
                       "the plug-in posts."));
    for (const OptionRow &row : optionRows) {
        QCommandLineOption option(label(row.name), label(row.text));
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
    options.duration = reader.number("duration", 0, 1e6);
    options.screenshotDelay = reader.number("screenshot-after", 0, 3600);
    options.interval = reader.whole("interval", 0, 86400);
    options.retries = reader.whole("retries", 1, 1000);
    options.userLevel = reader.whole("user-level", 0, 9);
    options.json = parser.isSet(label("json"));
    options.quiet = parser.isSet(label("quiet"));
    options.poll = parser.isSet(label("poll"));
    options.gui = parser.isSet(label("gui"));
    options.headless = parser.isSet(label("headless"));
    options.requireOnline = parser.isSet(label("require-online"));
    readWindowSize(parser.value(label("window-size")), options, reader);
    readDevices(given(parser, "device"), options, reader);
    if (options.headless && (options.gui || !options.screenshot.isEmpty()))
        reader.complain(QStringLiteral("--headless goes with neither --gui nor --screenshot"));
    return options;
}

} // namespace

std::optional<DeviceSpec> parseDevice(const QString &text, QString &error)
{
    DeviceSpec device;
    for (const auto &[key, value] : keysAndValues(text)) {
        error = takePair(key, value, device);
        if (!error.isEmpty())
            return {};
    }
    if (device.name.isEmpty())
        error = QStringLiteral("it has no name");
    else if (device.port.isEmpty() == device.host.isEmpty())
        error = QStringLiteral("it needs either port= or tcp=");
    else if (device.isTcp() && (!device.settings.isEmpty() || device.timeout > 0))
        error = QStringLiteral("settings= and timeout= belong to a port");
    else
        return device;
    return {};
}

ParsedOptions parseOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    defineOptions(parser);
    const QCommandLineOption help = parser.addHelpOption();
    if (!parser.parse(arguments))
        return { {}, parser.errorText(), ExitCode::Usage };
    if (parser.isSet(help))
        return { {}, parser.helpText() + helpTail(), ExitCode::Ok };
    NumberReader reader(parser);
    if (!parser.positionalArguments().isEmpty())
        reader.complain(
            QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().first()));
    const HostOptions options = readValues(parser, reader);
    if (!reader.error().isEmpty())
        return { {}, reader.error(), ExitCode::Usage };
    return { options, {}, ExitCode::Ok };
}
