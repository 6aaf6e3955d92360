#include "unitfile.h"

#include <QVector>

#include <algorithm>

namespace {

const QLatin1String mark("# Written by a service program's \"-install\".");

// Time for the manager to see the end of a service that ends itself at its limit.
constexpr std::chrono::seconds stopReserve { 1 };

struct EscapeRow
{
    char character;
    const char *escaped;
};

// clang-format off
constexpr EscapeRow escapeRows[] = {
    { '\\', "\\\\" },
    { '"',  "\\\"" },
    { '\n', "\\n"  },
    { '\t', "\\t"  },
    { '%',  "%%"   },
};
// clang-format on

QString escaped(QChar character)
{
    for (const EscapeRow &row : escapeRows) {
        if (character == QLatin1Char(row.character))
            return QLatin1String(row.escaped);
    }
    return character;
}

QString quoted(const QString &word)
{
    QString result;
    for (const QChar character : word)
        result += escaped(character);
    return QLatin1Char('"') + result + QLatin1Char('"');
}

QString commandLine(const UnitDescription &unit)
{
    // Variables are not expanded in the program's path, so there a '$' must stay single.
    QStringList words { quoted(unit.program) };
    if (!unit.arguments.isEmpty())
        words += QStringLiteral("\"--\"");
    for (const QString &argument : unit.arguments)
        words += quoted(QString(argument).replace(QLatin1Char('$'), QLatin1String("$$")));
    return words.join(QLatin1Char(' '));
}

} // namespace

QString unitFileText(const UnitDescription &unit)
{
    const bool system = unit.scope == ServiceScope::System;
    const auto stopSeconds = std::chrono::ceil<std::chrono::seconds>(unit.stopLimit) + stopReserve;
    const QString account =
        unit.account.isEmpty() ? QString() : QStringLiteral("User=%1\n").arg(unit.account);
    QString description = unit.description.simplified();
    description.replace(QLatin1Char('%'), QLatin1String("%%"));
    // Exit codes after which another start would end the same way are not worth one; the runtime
    // folder stays, since a refused second instance must not take it from the first.
    const QStringList lines {
        mark,
        QStringLiteral("[Unit]"),
        QStringLiteral("Description=") + description,
        QString(),
        QStringLiteral("[Service]"),
        QStringLiteral("Type=notify"),
        QStringLiteral("ExecStart=") + commandLine(unit),
        QStringLiteral("RuntimeDirectory=") + unit.name,
        QStringLiteral("RuntimeDirectoryMode=0700"),
        QStringLiteral("RuntimeDirectoryPreserve=yes"),
        QStringLiteral("TimeoutStopSec=") + QString::number(stopSeconds.count()),
        QStringLiteral("Restart=on-failure"),
        QStringLiteral("RestartPreventExitStatus=2 3 4 5"),
        account,
        QStringLiteral("[Install]"),
        QStringLiteral("WantedBy=")
            + (system ? QStringLiteral("multi-user.target") : QStringLiteral("default.target")),
    };
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

bool fitsUnitFile(const QString &word)
{
    const QVector<uint> characters = word.toUcs4();
    return std::none_of(characters.begin(), characters.end(), [](uint character) {
        return character == '\r' || QChar::isNonCharacter(character);
    });
}

bool isOwnUnitFile(const QString &text)
{
    return text.startsWith(mark);
}
