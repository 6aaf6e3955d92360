#pragma once

#include "actions.h"

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
 *  follows a "#" are skipped.
 *  @return nothing, with the line and the reason in `error`, when a line is wrong */
std::optional<Script> parseScript(const QString &text, QString *error);

/** The scenario `name`; nothing when there is none. */
std::optional<Script> scenario(const QString &name);

/** The names that scenario() knows, and what each is. */
QStringList scenarioNames();
QStringList scenarioHelp();
