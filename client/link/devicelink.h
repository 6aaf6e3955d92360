#pragma once

#include "commands/commandtext.h"
#include "devicesettings.h"
#include "link/driverbinding.h"

#include <functional>
#include <memory>

class CycleHost;
class LineUse;
class QTcpSocket;

/** What came of a call of the driver. */
struct DriverAnswer
{
    enum class Delivery {
        Asked,    ///< the driver gave `result`
        NotAsked, ///< there was no entry or no port, or a stop came before
        Later,    ///< the device is held, or the settings name a peer that is not connected
    };

    Delivery delivery = Delivery::NotAsked;
    int result = 0;             ///< the driver's own; 0 when it was not asked
    DeviceSettings settings {}; ///< that named the device when it was asked
};

/**
 * Carries the driver's calls to the device: picks the transport, holds a serial port's lock for
 * the whole call and keeps the TCP connection.
 *
 * The settings may change while a lock or a connection is waited for: each call goes to the device
 * that they name when it is made, or to none.
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
    DeviceLink(CycleHost &host, const DriverBinding &driver, DataCallback callback, void *context);
    ~DeviceLink();
    DeviceLink(const DeviceLink &) = delete;
    DeviceLink &operator=(const DeviceLink &) = delete;

    /** Connects a TCP peer unless that is done: after 5 s, waiting up to 30 s for it.
     *  Anything but TCP needs no preparation. */
    void prepare();

    /** Has the driver read all values; its result is not 0 when the device answered. */
    DriverAnswer query();

    /** Has the driver carry one command out; its result is 1 when it did. */
    DriverAnswer control(CommandText &command);

    /** Closes the connection, at once for the peer. In any thread while nobody polls. */
    void dropSocket();

private:
    using Call = std::function<int(const PortDescriptor &, int unit)>;

    void freePeer();
    void connectPeer(const DeviceSettings &settings);
    DriverAnswer callDevice(const Call &call);
    DriverAnswer callOnSocket(const DeviceSettings &settings, const Call &call);
    bool isPeer(const DeviceSettings &settings) const;

    CycleHost &m_host;
    const DriverBinding &m_driver;
    DataCallback m_callback;
    void *m_context;
    QTcpSocket *m_socket = nullptr;
    std::unique_ptr<LineUse> m_use; // of the peer, while m_socket is connected to it
    int m_connection = -1; // second descriptor of m_socket's connection, owned; -1 without one
    QString m_peerAddress; // that m_socket was last connected to
    int m_peerPort = 0;
};
