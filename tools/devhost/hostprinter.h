#pragma once

#include "hostcommand.h"
#include "hostoptions.h"
#include "linewriter.h"
#include "textoutput.h"

#include <QElapsedTimer>
#include <QMap>

class HostDevice;
struct HostEvent;
struct LogEntry;

/**
 * What the host prints on standard output, as text or as JSON, and writes into its CSV logs.
 *
 * Threads: main thread.
 * Errors:  open() returns them; later ones are reported on standard error, once each.
 */
class HostPrinter : public QObject
{
    Q_OBJECT

public:
    HostPrinter(const HostOptions &options, int descriptor);

    /** Opens the logs that the options name. */
    Outcome open(const QStringList &dataTitles);

    void printEvent(HostDevice &device, const HostEvent &event);
    void printState(const HostDevice &device);

    /** The answer to a command that was handed to its device, or that waits for its time. */
    void printCommand(const HostCommand &command, bool accepted);
    void printWaiting(const HostCommand &command);
    /** The answer to a line that is no command. */
    void printRefusal(const QString &line, const QString &error);

    void log(const LogEntry &entry);

    /** Waits a moment for the reader of standard output. */
    void finish();

signals:
    /** Standard output is closed or full. */
    void failed();

private:
    void printReport(HostDevice &device, const HostEvent &event);
    static void write(LineWriter &log, const QStringList &fields);

    /** The report of a device that was shown as text last. */
    struct PrintedReport
    {
        QStringList row;
        QElapsedTimer age;
    };

    HostOptions m_options;
    QMap<QString, PrintedReport> m_printed; // by device
    TextOutput m_out;
    LineWriter m_eventLog;
    LineWriter m_dataLog;
};
