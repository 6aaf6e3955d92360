#pragma once

#include "servicetypes.h"

#include <QStringList>

#include <chrono>

/** What a unit file says of a service of ours. */
struct UnitDescription
{
    QString name;
    QString description; // one line for people
    QString program;     // absolute path; installService() tells what the manager takes
    QStringList arguments;
    QString account; // empty: the manager's default
    std::chrono::milliseconds stopLimit { 0 };
    ServiceScope scope = ServiceScope::System;
};

/** The text of the unit file: blanks, quotes, '%', '$' and '\' reach the program unchanged. */
QString unitFileText(const UnitDescription &unit);

/** False for what the manager takes in no unit file: a carriage return ends its lines, and it knows
 *  code points that are no characters (U+FFFF and the like) from broken text as little as we do. */
bool fitsUnitFile(const QString &word);

/** True when unitFileText() wrote it, so that it may be replaced or removed. */
bool isOwnUnitFile(const QString &text);
