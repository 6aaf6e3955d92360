#include "hostcommand.h"

#include "hostvocabulary.h"

#include <algorithm>
#include <iterator>

using namespace HostContract;

namespace {

constexpr double longestDelay = 86400;

struct CommandRow
{
    int id;
    const char *effect;
    const char *value; ///< what it means; empty: none is needed
};

// clang-format off
constexpr CommandRow commandRows[] = {
    { ClearFaultCommand,       "clear the fault",                            "" },
    { ClearHistoryCommand,     "clear the device's history",                 "" },
    { SelfTestCommand,         "battery test",                               "" },
    { DischargeCommand,        "battery test (discharge)",                   "" },
    { DischargeToLowCommand,   "battery maintenance: discharge to low",      "" },
    { CancelTaskCommand,       "cancel test or maintenance",                 "" },
    { ShutdownCommand,         "shut down: THE OUTPUT STOPS",                "" },
    { StartupCommand,          "start up",                                   "" },
    { BuzzerOnCommand,         "buzzer on",                                  "" },
    { BuzzerOffCommand,        "buzzer off",                                 "" },
    { SetTimeCommand,          "set the time (the driver gets no text)",     "TIME" },
    { WakeupCommand,           "wake up",                                    "" },
    { ShutdownToBypassCommand, "shut the inverter down: LOAD TO BYPASS",     "" },
    { TurnBypassCommand,       "LOAD TO BYPASS",                             "" },
    { TurnInverterCommand,     "load to the inverter",                       "" },
    { UpgradeCommand,          "close the port for an upgrade",              "" },
    { DownloadHistoryCommand,  "download the history",                       "FILE (CSV)" },
    { SetParameterCommand,     "change a setting",                           "ID,RAW of the driver, e.g. 3005,18" },
};
// clang-format on

bool isKnown(int id)
{
    return std::any_of(std::begin(commandRows), std::end(commandRows),
                       [id](const CommandRow &row) { return row.id == id; });
}

HostCommand wrong(const QString &error)
{
    HostCommand command;
    command.kind = HostCommand::Kind::Wrong;
    command.error = error;
    return command;
}

/** The longest name with which the text begins as a whole word. */
QString leadingDevice(const QString &text, const QStringList &devices)
{
    QString found;
    for (const QString &name : devices)
        if ((text == name || text.startsWith(name + QLatin1Char(' ')))
            && name.size() > found.size())
            found = name;
    return found;
}

/** Cuts the first word off. */
QString takeWord(QString &text)
{
    const QString word = text.section(QLatin1Char(' '), 0, 0);
    text = text.mid(word.size()).trimmed();
    return word;
}

/** Cuts a delay off, unless the text begins with a device; s. */
double takeDelay(QString &text, const QStringList &devices)
{
    if (!leadingDevice(text, devices).isEmpty())
        return 0;
    QString after = text;
    QString delay = takeWord(after);
    if (delay.startsWith(QLatin1Char('@')))
        delay.remove(0, 1);
    if (delay.endsWith(QLatin1Char('s')))
        delay.chop(1);
    bool ok = false;
    const double seconds = delay.toDouble(&ok);
    if (!ok || seconds < 0 || seconds > longestDelay)
        return 0;
    text = after;
    return seconds;
}

/** What the host does itself; nothing for a command to a device. */
HostCommand::Kind ownKind(const QString &text)
{
    if (text == QLatin1String("quit") || text == QLatin1String("exit"))
        return HostCommand::Kind::Quit;
    return text == QLatin1String("devices") ? HostCommand::Kind::Devices
                                            : HostCommand::Kind::Nothing;
}

} // namespace

HostCommand parseCommand(const QString &line, const QStringList &devices)
{
    QString rest = line.trimmed();
    HostCommand command;
    command.kind = ownKind(rest);
    if (rest.isEmpty() || command.kind != HostCommand::Kind::Nothing)
        return command;
    if (rest.startsWith(QLatin1String("control ")) && leadingDevice(rest, devices).isEmpty())
        takeWord(rest);
    command.delay = takeDelay(rest, devices);
    command.device = leadingDevice(rest, devices);
    if (command.device.isEmpty())
        return wrong(QStringLiteral("\"%1\": no device of that name; there is %2")
                         .arg(line.trimmed(), devices.join(QLatin1String(", "))));
    rest = rest.mid(command.device.size()).trimmed();
    bool ok = false;
    const QString number = takeWord(rest);
    command.id = number.toInt(&ok);
    if (!ok)
        return wrong(QStringLiteral("\"%1\": \"%2\" is no command number (see --help)")
                         .arg(line.trimmed(), number));
    if (!isKnown(command.id))
        return wrong(QStringLiteral("%1 is no command (see --help)").arg(command.id));
    command.value = rest;
    command.kind = HostCommand::Kind::Control;
    return command;
}

QString commandHelp()
{
    QString text;
    for (const CommandRow &row : commandRows) {
        const QString line = QStringLiteral("  %1  %2  %3")
                                 .arg(row.id)
                                 .arg(QLatin1String(row.effect), -42)
                                 .arg(QLatin1String(row.value));
        text += QStringLiteral("  ") + line.trimmed() + QLatin1Char('\n');
    }
    return text;
}
