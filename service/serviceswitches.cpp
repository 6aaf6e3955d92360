#include "serviceswitches.h"

#include <QCoreApplication>

#include <algorithm>
#include <optional>

namespace {

enum class Operand { None, Account, Number };

struct SwitchRow
{
    const char *word;
    SwitchAction action;
    Operand operand;
    const char *form; // as the help shows it
    const char *text;
};

// clang-format off
constexpr SwitchRow switchRows[] = {
    { "-install",   SwitchAction::Install,   Operand::Account, "-install [ACCOUNT]", QT_TRANSLATE_NOOP("Service", "install the service; what follows \"--\" is passed to it") },
    { "-uninstall", SwitchAction::Uninstall, Operand::None,    "-uninstall",         QT_TRANSLATE_NOOP("Service", "stop and remove the service")                         },
    { "-exec",      SwitchAction::Exec,      Operand::None,    "-exec",              QT_TRANSLATE_NOOP("Service", "run in the foreground")                               },
    { "-terminate", SwitchAction::Terminate, Operand::None,    "-terminate",         QT_TRANSLATE_NOOP("Service", "stop the service")                                    },
    { "-pause",     SwitchAction::Pause,     Operand::None,    "-pause",             QT_TRANSLATE_NOOP("Service", "pause the service")                                   },
    { "-resume",    SwitchAction::Resume,    Operand::None,    "-resume",            QT_TRANSLATE_NOOP("Service", "resume the paused service")                           },
    { "-command",   SwitchAction::Command,   Operand::Number,  "-command N",         QT_TRANSLATE_NOOP("Service", "send the command N to the service")                   },
    { "-version",   SwitchAction::Version,   Operand::None,    "-version",           QT_TRANSLATE_NOOP("Service", "print the version")                                   },
    { "-help",      SwitchAction::Help,      Operand::None,    "-help",              QT_TRANSLATE_NOOP("Service", "print this help")                                     },
};
// clang-format on

const QLatin1String userSwitch("-user");
const QLatin1String argumentsFollow("--");

QString translated(const char *text)
{
    return QCoreApplication::translate("Service", text);
}

const SwitchRow *rowFor(const QString &word)
{
    const auto row =
        std::find_if(std::begin(switchRows), std::end(switchRows),
                     [&word](const SwitchRow &r) { return word == QLatin1String(r.word); });
    return row == std::end(switchRows) ? nullptr : row;
}

// Reads the words of one switch from the front; the text of what is wrong with them, if anything.
QString takeSwitch(QStringList &words, std::optional<SwitchAction> &action,
                   ServiceCommandLine &line)
{
    const QString word = words.takeFirst();
    if (word == userSwitch) {
        line.userScope = true;
        return {};
    }
    const SwitchRow *row = rowFor(word);
    if (!row)
        return translated(QT_TRANSLATE_NOOP("Service", "unknown switch \"%1\"")).arg(word);
    if (action)
        return translated(QT_TRANSLATE_NOOP("Service", "\"%1\" is one switch too many")).arg(word);
    action = row->action;
    if (row->operand == Operand::Account && !words.isEmpty()
        && !words.first().startsWith(QLatin1Char('-')))
        line.account = words.takeFirst();
    if (row->operand != Operand::Number)
        return {};
    bool isNumber = false;
    line.command = words.isEmpty() ? 0 : words.takeFirst().toInt(&isNumber);
    return isNumber ? QString()
                    : translated(QT_TRANSLATE_NOOP("Service", "\"%1\" needs a number")).arg(word);
}

} // namespace

ServiceCommandLine parseSwitches(const QStringList &words)
{
    ServiceCommandLine line;
    QStringList rest = words;
    const int separator = rest.indexOf(argumentsFollow);
    if (separator >= 0) {
        line.arguments = rest.mid(separator + 1);
        rest = rest.mid(0, separator);
    }
    std::optional<SwitchAction> action;
    while (!rest.isEmpty() && line.error.isEmpty())
        line.error = takeSwitch(rest, action, line);
    line.action = action.value_or(SwitchAction::Run);
    return line;
}

QString switchHelp(const QString &name)
{
    QStringList lines {
        translated(QT_TRANSLATE_NOOP("Service", "Switches of the service \"%1\" (none: start it):"))
            .arg(name)
    };
    for (const SwitchRow &row : switchRows)
        lines +=
            QStringLiteral("  %1 %2").arg(QLatin1String(row.form), -20).arg(translated(row.text));
    lines += QStringLiteral("  %1 %2")
                 .arg(userSwitch, -20)
                 .arg(translated(QT_TRANSLATE_NOOP(
                     "Service", "with any of them: the user's services, also for root")));
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
