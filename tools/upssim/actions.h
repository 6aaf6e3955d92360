#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

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
    LineFault,
    LineFlaky,
    Scenario,
};

/** One line of a script or of standard input, understood. */
struct Action
{
    Lever lever = Lever::Mains;
    int option = 0;          ///< on (1) or off (0); a Fault for LineFault
    QVector<double> numbers; ///< within the ranges that the action allows
    QString word;            ///< name of the scenario
};

/** Reads an action such as "mains off" or "line late 1500 3".
 *  @return nothing, with the reason in `error`, when it cannot be understood */
std::optional<Action> parseAction(const QString &text, QString *error);

/** A line of help for each action. */
QStringList actionHelp();
