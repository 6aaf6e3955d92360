#pragma once

#include <QString>
#include <QStringList>

/** A command to the host itself or to a device, as typed or as given with --send. */
struct HostCommand
{
    enum class Kind { Nothing, Control, Devices, Quit, Wrong };

    Kind kind = Kind::Nothing;
    double delay = 0; ///< s
    QString device;
    int id = 0;
    QString value;
    QString error; ///< for Wrong
};

/** Reads `[control] [@S|S] NAME ID [VALUE]`, `devices` or `quit`.
 *
 *  A plain number in front is a delay unless a device of that name follows; VALUE is all the rest.
 *  A number that is in no row of the commands is refused: a driver would get an empty command.
 *  @param devices  the known names; they may hold blanks */
HostCommand parseCommand(const QString &line, const QStringList &devices);

/** The commands as lines of a table: number, effect, value. */
QString commandHelp();
