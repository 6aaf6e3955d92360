#pragma once

#include "actions.h"

namespace upssim {

/** Actions with their times, in order. */
struct Script
{
    struct Step
    {
        double time; ///< s since the script's start
        Action action;
    };
    QVector<Step> steps;
};

/** Reads a script: a line for each step, "TIME ACTION", times ascending; empty lines and what
 *  follows a "#" are skipped. A failure names the line. */
Result<Script> parseScript(const QString &text);

/** The scenario `name`; a failure names those that there are. */
Result<Script> scenario(const QString &name);

/** What each scenario is. */
QStringList scenarioHelp();

} // namespace upssim
