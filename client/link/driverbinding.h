#pragma once

#include "modbus/driverapi.h"

#include <QLibrary>

#include <memory>

/**
 * The protocol driver of one client: a library loaded at run time and its two entry points.
 *
 * Apart from the client so that a missing driver, or a missing entry, is one object's concern and
 * reads as a failed call everywhere else.
 *
 * Threads:   load() and unload() while no call is under way; query() and control() in the polling
 *            thread only, where they block as long as the driver does.
 * Ownership: owns the library; port descriptors stay the caller's.
 * Errors:    reported in the log where they happen; a call that cannot be made returns 0, and so
 *            does one in which the driver throws.
 */
class DriverBinding
{
public:
    /** @param library  bare name of the driver, without the platform's suffix */
    explicit DriverBinding(const char *library)
        : m_name(QString::fromLatin1(library))
    {
    }
    ~DriverBinding() { unload(); }
    DriverBinding(const DriverBinding &) = delete;
    DriverBinding &operator=(const DriverBinding &) = delete;

    /** Loads the driver, unless it is loaded; a missing entry is no failure.
     *  @return false when there is no such library, or the file is none */
    bool load();

    /** Tells whether the driver is loaded and has the entry. */
    bool hasQuery() const { return m_query != nullptr; }
    bool hasControl() const { return m_control != nullptr; }

    /** Unloads the driver; without one nothing happens. */
    void unload();

    /** Has the driver read all data of the device at `unit`.
     *  @param context  handed to `callback` with every value
     *  @return non-zero when the device answered; 0 also without the entry or without a device */
    int query(PortDescriptor port, int unit, DataCallback callback, void *context) const;

    /** Has the driver carry out one command.
     *  @param command  zero-terminated, 50 bytes that the driver may write to
     *  @return the driver's result; 0 also without the entry or without a device */
    int control(PortDescriptor port, int unit, char *command, void *context) const;

private:
    const QString m_name;
    std::unique_ptr<QLibrary> m_library;
    QueryFunction m_query = nullptr;
    ControlFunction m_control = nullptr;
};
