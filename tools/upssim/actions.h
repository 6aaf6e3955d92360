#pragma once

#include "result.h"

#include <QStringList>
#include <QVector>

namespace upssim {

/** What an action acts on. */
enum class Lever {
    Mains,
    MainsVoltage,
    MainsFrequency,
    Bypass,
    Battery,
    Charge,
    Autonomy,
    Load,
    Fan,
    Epo,
    Flag,
    Setting,
    Command,
    Register,
    FreeRegisters,
    Refuse,
    LineFault,
    LineFlaky,
    Scenario,
    ShowRegister,
    ShowEvents,
    ShowWrite,
    ShowState,
};

/** One line of a script or of standard input, understood. */
struct Action
{
    Lever lever = Lever::Mains;
    int option = 0;          ///< on (1) or off (0); a Fault for LineFault
    QVector<double> numbers; ///< within the ranges that the action allows
    QString word;            ///< name of the scenario
};

/** Reads an action such as "mains off" or "line late 1500 3". */
Result<Action> parseAction(const QString &text);

/** A line of help for each action. */
QStringList actionHelp();

} // namespace upssim
