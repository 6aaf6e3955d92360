#pragma once

#include "hostcommand.h"
#include "hostdevice.h"
#include "linewriter.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QObject>

#include <memory>
#include <vector>

class CollectThread;

/**
 * The host without a window: its devices, what it prints, its logs and its commands.
 *
 * Threads:   main thread.
 * Ownership: owns the devices; they go when it goes.
 * Errors:    open() returns a text; later failures are reported on standard error, once each.
 */
class DeviceHost : public QObject
{
    Q_OBJECT

public:
    DeviceHost(const HostOptions &options, CollectThread &factory);
    ~DeviceHost() override;

    /** A failure of the start. */
    struct Failure
    {
        ExitCode code = ExitCode::Ok;
        QString text;
    };

    /** Writes the configuration, opens the logs, makes the clients and checks the commands. */
    Failure open();

    /** Starts the clients and the commands of --send. */
    void start();

    const std::vector<std::unique_ptr<HostDevice>> &devices() const { return m_devices; }
    bool allWereOnline() const;

    /** Hands a command to a device. */
    void control(HostDevice &device, int id, const QString &value);

public slots:
    /** Carries out a typed line. */
    void command(const QString &line);

signals:
    /** An event was taken, printed and logged. */
    void posted(HostDevice *device, const HostEvent &event);
    void logged(const LogEntry &entry);
    /** Somebody asked for the end.
     *  @param code  an ExitCode; a plain number, so that it can be queued */
    void finished(int code);

private:
    Failure writeFiles() const;
    Failure openLogs();
    Failure parseCommands();
    void take(HostDevice &device, const HostEvent &event);
    void schedule(const HostCommand &command);
    void print(HostDevice &device, const HostEvent &event);
    void printReport(HostDevice &device, const HostEvent &event);
    void printDevices();
    void log(HostDevice &device, const HostEvent &event);
    void writeLog(LineWriter &log, const QStringList &fields);
    void writeOut(const QByteArray &line);
    /** The report of a device that was shown as text last. */
    struct PrintedReport
    {
        QStringList row;
        QElapsedTimer age;
    };

    HostDevice *device(const QString &name) const;
    QStringList names() const;

    HostOptions m_options;
    CollectThread &m_factory;
    QDeadlineTimer m_end; // of --duration
    std::vector<std::unique_ptr<HostDevice>> m_devices;
    QList<HostCommand> m_commands;
    QMap<QString, PrintedReport> m_printed; // by device
    LineWriter m_out;
    LineWriter m_eventLog;
    LineWriter m_dataLog;
};
