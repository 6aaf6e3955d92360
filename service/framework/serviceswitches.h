#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

/** What a service program is asked to do by its command line. */
enum class SwitchAction {
    Run, // no switch: run as the service, or ask the manager to
    Install,
    Uninstall,
    Exec,
    Terminate,
    Pause,
    Resume,
    Command,
    Version,
    Help
};

/** The parts of a command line; when `error` is not empty, nothing else counts. */
struct ServiceCommandLine
{
    SwitchAction action = SwitchAction::Run;
    bool userScope = false; // "-user"
    QString account;        // of "-install"; empty: the default
    int command = 0;        // of "-command"
    QStringList arguments;  // all after "--": the program's own
    QString error;
};

/** Takes each switch with one dash or two.
 *
 *  @param words  without the program's name; as they came, since the locale of a service is not
 *                that of who installed it: UTF-8, or refused */
ServiceCommandLine parseSwitches(const QList<QByteArray> &words);

/** What "-help" prints: one line a switch. */
QString switchHelp(const QString &name);
