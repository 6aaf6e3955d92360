#pragma once

#include "commandtable.h"
#include "cyclesettings.h"
#include "driverbinding.h"

#include <functional>
#include <optional>

class QTcpSocket;

/**
 * Carries the driver's calls to the device: picks the transport, holds a serial port's lock for
 * the whole call and keeps the TCP connection.
 *
 * Threads:   the polling thread; blocks as long as the driver, a lock or a connection does, all
 *            but the driver ended early by the thread's StopSource. The destructor in any thread
 *            while nobody polls.
 * Ownership: owns the socket, which lives in the polling thread; borrows ports and driver.
 * Errors:    a call that cannot be made, for want of a port, a socket or a driver entry, is 0.
 */
class DeviceLink
{
public:
    /** @param context  handed to the driver, and by it to its data callback */
    DeviceLink(const DriverBinding &driver, DataCallback callback, void *context);
    ~DeviceLink();
    DeviceLink(const DeviceLink &) = delete;
    DeviceLink &operator=(const DeviceLink &) = delete;

    /** Connects a TCP peer unless that is done: after 5 s, waiting up to 30 s for it.
     *  Anything but TCP needs no preparation. */
    void prepare(const CycleSettings &settings);

    /** @return non-zero when the device answered */
    int query(const CycleSettings &settings);

    /** @return 1 when the driver carried the command out; nothing when a stop came before it was
     *          asked */
    std::optional<int> control(const CycleSettings &settings, CommandText &command);

    /** Closes the connection, at once for the peer. In any thread while nobody polls. */
    void dropSocket();

private:
    using Call = std::function<int(const PortDescriptor &)>;

    void freePeer();
    std::optional<int> callDevice(const CycleSettings &settings, const Call &call);
    int callOnSocket(const Call &call);
    std::optional<int> callOnPort(const CycleSettings &settings, const Call &call);
    bool isPeer(const CycleSettings &settings) const;

    const DriverBinding &m_driver;
    DataCallback m_callback;
    void *m_context;
    QTcpSocket *m_socket = nullptr;
    int m_connection = -1; // second descriptor of m_socket's connection, owned; -1 without one
    QString m_peerAddress; // that m_socket was last connected to
    int m_peerPort = 0;
};
