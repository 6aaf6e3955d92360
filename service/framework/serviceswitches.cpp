#include "serviceswitches.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>
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
    { "-help",      SwitchAction::Help,      Operand::None,    "-help, -h",          QT_TRANSLATE_NOOP("Service", "print this help")                                     },
};
// clang-format on

const QLatin1String userSwitch("-user");
const QLatin1String argumentsFollow("--");
const QLatin1String shortHelp("-h");
const QLatin1String longHelp("-help");

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

// With one dash and in full, as the rows have them.
QString plainForm(const QString &word)
{
    const QString plain = word.startsWith(QLatin1String("--")) ? word.mid(1) : word;
    return plain == shortHelp ? QString(longHelp) : plain;
}

/** Reads the words before "--", switch by switch. */
class SwitchReader
{
public:
    explicit SwitchReader(const QStringList &words)
        : m_words(words)
    {
    }

    ServiceCommandLine read()
    {
        while (!m_words.isEmpty() && m_line.error.isEmpty())
            m_line.error = takeSwitch();
        m_line.action = m_action.value_or(SwitchAction::Run);
        return m_line;
    }

private:
    // What is wrong with it, if anything.
    QString takeSwitch()
    {
        const QString word = m_words.takeFirst();
        if (plainForm(word) == userSwitch) {
            m_line.userScope = true;
            return {};
        }
        const SwitchRow *row = rowFor(plainForm(word));
        if (!row)
            return translated(QT_TRANSLATE_NOOP("Service", "unknown switch \"%1\"")).arg(word);
        if (m_action)
            return translated(QT_TRANSLATE_NOOP("Service", "\"%1\" is one switch too many"))
                .arg(word);
        m_action = row->action;
        if (row->operand == Operand::Number)
            return takeNumber(word);
        if (row->operand == Operand::Account && !m_words.isEmpty()
            && !m_words.first().startsWith(QLatin1Char('-')))
            m_line.account = m_words.takeFirst();
        return {};
    }

    QString takeNumber(const QString &word)
    {
        if (m_words.isEmpty())
            return translated(QT_TRANSLATE_NOOP("Service", "\"%1\" needs a number")).arg(word);
        bool isNumber = false;
        const QString number = m_words.takeFirst();
        m_line.command = number.toInt(&isNumber);
        if (isNumber)
            return {};
        return translated(
                   QT_TRANSLATE_NOOP("Service", "\"%1\": \"%2\" is no whole number from %3 to %4"))
            .arg(word, number)
            .arg(std::numeric_limits<int>::min())
            .arg(std::numeric_limits<int>::max());
    }

    QStringList m_words;
    ServiceCommandLine m_line;
    std::optional<SwitchAction> m_action;
};

} // namespace

ServiceCommandLine parseSwitches(const QList<QByteArray> &words)
{
    QStringList rest;
    for (const QByteArray &word : words) {
        rest += QString::fromUtf8(word);
        if (rest.last().toUtf8() == word)
            continue;
        // It would reach nobody as it was written: files and services get UTF-8.
        ServiceCommandLine refused;
        refused.error =
            translated(QT_TRANSLATE_NOOP("Service", "\"%1\" is not UTF-8 text")).arg(rest.last());
        return refused;
    }
    QStringList arguments;
    if (const int separator = rest.indexOf(argumentsFollow); separator >= 0) {
        arguments = rest.mid(separator + 1);
        rest = rest.mid(0, separator);
    }
    ServiceCommandLine line = SwitchReader(rest).read();
    line.arguments = arguments;
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
