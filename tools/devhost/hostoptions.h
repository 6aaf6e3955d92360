#pragma once

#include "exitcode.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

/** One device of the command line. */
struct DeviceSpec
{
    QString name; ///< unique, not empty
    QString port; ///< serial node; empty for TCP
    QString host; ///< TCP peer; empty for a port
    int tcpPort = 502;
    int address = 1;  ///< unit on the line, 1 to 247
    QString settings; ///< "9600,n,8,1"; empty leaves serial.ini alone
    int timeout = 0;  ///< ms for serial.ini; 0 leaves it alone

    bool isTcp() const { return !host.isEmpty(); }
};

/** The command line as values. */
struct HostOptions
{
    QString plugin; ///< empty: looked for beside the executable
    QString driverDirectory;
    QList<DeviceSpec> devices;
    QStringList commands; ///< texts of --send, still to be parsed against the device names
    QString eventLog;
    QString dataLog;
    QString language;
    QString screenshot;
    QSize windowSize { 1000, 640 };
    double duration = 0;        ///< s, 0: until asked to end
    double screenshotDelay = 2; ///< s after the first report
    int interval = 1;           ///< s
    int retries = 5;
    int userLevel = 1;
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

/** Reads `name=ups1,port=/dev/ttyUSB0,addr=1` or `name=ups2,tcp=127.0.0.1:1502`.
 *  @param error  set to the reason when nothing is returned */
std::optional<DeviceSpec> parseDevice(const QString &text, QString &error);

/** Reads the command line; needs a QCoreApplication for the help text. */
ParsedOptions parseOptions(const QStringList &arguments);
