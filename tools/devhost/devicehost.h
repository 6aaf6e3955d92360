#pragma once

#include "hostdevice.h"
#include "hostprinter.h"

#include <QDeadlineTimer>

#include <memory>
#include <vector>

class CollectThread;

/** A device outside the host's list, or why there is none. */
struct MadeDevice
{
    std::unique_ptr<HostDevice> device;
    Outcome outcome;
};

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
    struct [[nodiscard]] Failure
    {
        ExitCode code = ExitCode::Ok;
        QString text;
    };

    /** Writes the configuration, opens the logs, makes the clients and checks the commands. */
    Failure open();

    /** Starts the clients and the commands of --send. */
    void start();

    const std::vector<std::unique_ptr<HostDevice>> &devices() const { return m_devices; }
    HostDevice *device(const QString &name) const;
    QList<DeviceSpec> specs() const;
    bool allWereOnline() const;

    /** Why no driver serves the devices; empty when one does, or before the first device. */
    QString driverFault() const { return m_driverFault; }

    /** Adds a device and starts it when the others run. */
    Outcome add(const DeviceSpec &spec);
    /** Puts a device in the place of another; both may have one name. */
    Outcome replace(HostDevice &old, const DeviceSpec &spec);
    void remove(HostDevice &device);

    /** Makes a device that nobody else sees, for a test of its line. */
    MadeDevice makeProbe(const DeviceSpec &spec);
    /** Takes a device that is no longer wanted and waits for its client in the background. */
    void giveBack(std::unique_ptr<HostDevice> device);

    /** Hands a command to a device. */
    void control(HostDevice &device, int id, const QString &value);

    /** Waits a moment for the reader of standard output; before the end. */
    void finishOutput() { m_printer.finish(); }

public slots:
    /** Carries out a typed line and answers it. */
    void command(const QString &line);
    /** Answers a line that was too long to be taken. */
    void refuseLongLine();

signals:
    void added(HostDevice *device, int index);
    /** The device is about to be given back; nothing of it may be used afterwards. */
    void leaving(HostDevice *device);
    /** An event was taken, printed and logged. */
    void posted(HostDevice *device, const HostEvent &event);
    /** Somebody asked for the end.
     *  @param code  an ExitCode; a plain number, so that it can be queued */
    void finished(int code);

private:
    Outcome writeFiles(const QList<DeviceSpec> &specs) const;
    Outcome insert(const DeviceSpec &spec, int index);
    Failure parseCommands();
    void take(HostDevice &device, const HostEvent &event);
    void schedule(const HostCommand &command);
    void checkDriverOnce();
    HostDevice::Drive drive() const;
    QStringList names() const;

    HostOptions m_options;
    CollectThread &m_factory;
    QDeadlineTimer m_end; // of --duration
    std::vector<std::unique_ptr<HostDevice>> m_devices;
    std::vector<std::unique_ptr<HostDevice>> m_leaving; // until their clients are deleted
    QList<HostCommand> m_commands;
    HostPrinter m_printer;
    QString m_driverFault;
    bool m_isDriverChecked = false;
    bool m_isRunning = false;
};
