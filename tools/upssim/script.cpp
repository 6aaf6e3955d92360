#include "script.h"

#include <algorithm>

namespace upssim {

namespace {

struct Scenario
{
    const char *name;
    const char *help;
    const char *script;
};

constexpr Scenario scenarios[] = {
    { "normal", "mains and battery are fine", "" },
    { "mains-failure", "the mains fail at 5 s, the battery gets low, the mains return at 40 s",
      "0 battery charge 100\n"
      "0 autonomy 22\n"
      "5 mains off\n"
      "40 mains on\n" },
    { "battery-discharge", "the mains stay away until after the end of discharge",
      "0 battery charge 100\n"
      "0 autonomy 22\n"
      "5 mains off\n"
      "60 mains on\n" },
    { "overload", "the load goes to 130 % and, after 10 s, to the bypass",
      "5 load 130\n"
      "25 load 55\n"
      "30 command 12  # clear fault\n" },
    { "bypass", "the load is transferred to the bypass and back",
      "5 command 10\n"
      "35 command 11\n" },
    { "fan-fault", "the fan stops, the inverter gets hot, the load goes to the bypass",
      "5 fan off\n"
      "50 fan on\n"
      "80 command 12  # clear fault\n" },
    { "communication-loss", "no replies from 5 s to 65 s",
      "5 line silent\n"
      "65 line ok\n" },
    { "flaky-line", "a fifth of the replies is lost or garbled", "0 line flaky 0.2\n" },
    { "stopped", "the UPS is shut down", "0 command 4\n" },
};

QStringList scenarioNames()
{
    QStringList names;
    for (const Scenario &entry : scenarios)
        names.append(QString::fromLatin1(entry.name));
    return names;
}

// "TIME ACTION", no earlier than `earliest`.
Result<Script::Step> parseStep(const QString &line, double earliest)
{
    bool numeric = false;
    const double time = line.section(QLatin1Char(' '), 0, 0).toDouble(&numeric);
    // Written so that "nan" is refused too.
    if (!numeric || !(time >= earliest))
        return Failure { QStringLiteral("no time, or an earlier one than the line before") };
    const Result<Action> action = parseAction(line.section(QLatin1Char(' '), 1));
    if (!action)
        return Failure { action.error() };
    return Script::Step { time, *action };
}

} // namespace

Result<Script> parseScript(const QString &text)
{
    Script script;
    const QStringList lines = text.split(QLatin1Char('\n'));
    double last = 0;
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines[i].section(QLatin1Char('#'), 0, 0).simplified();
        if (line.isEmpty())
            continue;
        const Result<Script::Step> step = parseStep(line, last);
        if (!step)
            return Failure { QStringLiteral("line %1: %2").arg(i + 1).arg(step.error()) };
        script.steps.append(*step);
        last = step->time;
    }
    return script;
}

Result<Script> scenario(const QString &name)
{
    const auto isNamed = [&name](const Scenario &entry) {
        return name == QLatin1String(entry.name);
    };
    const auto found = std::find_if(std::begin(scenarios), std::end(scenarios), isNamed);
    if (found != std::end(scenarios))
        return parseScript(QString::fromLatin1(found->script));
    return Failure { QStringLiteral("unknown scenario \"%1\"; there are: %2")
                         .arg(name, scenarioNames().join(QStringLiteral(", "))) };
}

QStringList scenarioHelp()
{
    QStringList lines;
    for (const Scenario &entry : scenarios) {
        lines.append(QStringLiteral("%1 %2")
                         .arg(QLatin1String(entry.name), -20)
                         .arg(QLatin1String(entry.help)));
    }
    return lines;
}

} // namespace upssim
