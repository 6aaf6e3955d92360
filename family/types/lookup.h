#pragma once

#include "family.h"

#include <QCoreApplication>
#include <QString>

#include <algorithm>

/** The row of a command; for a number without one a row that sends the driver an empty command. */
inline CommandRow commandRow(const Family &family, int command)
{
    const auto *row = std::find_if(family.commands.begin(), family.commands.end(),
                                   [command](const CommandRow &r) { return r.command == command; });
    return row != family.commands.end() ? *row
                                        : CommandRow { command, CommandForm::Empty, 0, "", {} };
}

/** The row of the command whose button has this object name; null when there is none. */
inline const CommandRow *buttonRow(const Family &family, const QString &name)
{
    const auto *row =
        std::find_if(family.commands.begin(), family.commands.end(), [&name](const CommandRow &r) {
            return *r.button.name != '\0' && name == QLatin1String(r.button.name);
        });
    return row != family.commands.end() ? row : nullptr;
}

/** A text of a table in the current language; an empty one stays so, where translate() would give
 *  the catalogue's header. */
inline QString translated(const char *context, const char *text)
{
    return *text == '\0' ? QString() : QCoreApplication::translate(context, text);
}
