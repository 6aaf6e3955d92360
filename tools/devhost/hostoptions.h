#pragma once

#include "devicespec.h"
#include "exitcode.h"

#include <QSize>
#include <QString>
#include <QStringList>

/** The command line as values. */
struct HostOptions
{
    QString plugin; ///< empty: looked for beside the executable
    QString driverDirectory;
    QList<DeviceSpec> devices; ///< may be empty for a window, where they can be added
    QStringList commands;      ///< texts of --send, still to be parsed against the device names
    QString eventLog;
    QString dataLog;
    QString language;
    QString palette; ///< "light", "dark" or empty for the desktop's
    QString screenshot;
    QSize windowSize;           ///< invalid: the last one, or the standard
    double duration = 0;        ///< s, 0: until asked to end
    double screenshotDelay = 2; ///< s after the first report
    int interval = 1;           ///< s
    int retries = 5;
    int userLevel = 1;
    bool devicesAreRemembered = false; ///< they are the window's own
    bool screenshotUnreached = false;
    bool screenshotDialogs = false;
    bool json = false;
    bool quiet = false;
    bool poll = false;
    bool gui = false;
    bool headless = false;
    bool requireOnline = false;
};

/** A parsed command line, or the text that ends the program. */
struct ParsedOptions
{
    HostOptions options;
    QString message; ///< not empty: show it and end with `code`
    ExitCode code = ExitCode::Ok;
};

/** Reads the command line; needs a QCoreApplication for the help text. */
ParsedOptions parseOptions(const QStringList &arguments);
