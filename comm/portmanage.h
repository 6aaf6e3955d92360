#pragma once

#include "managedport.h"

#include <QMap>
#include <QMutex>
#include <QObject>
#include <QTimer>
#include <vector>

/** An open port. The device stays first: drivers take it from the first word of their handle. */
struct CommHandle
{
    enum Kind : int { Serial = 0, Hid = 2 };

    void *device; ///< SerialPort or hid_device; null while a HID device could not be opened
    int kind;     ///< Kind; every other value than Hid stands for a QIODevice
};

/**
 * Owns the ports of the process, so that clients which name the same port share it.
 *
 * Serial ports are closed every 30 seconds and opened again by the next getPortHandle().
 *
 * Threads:   all functions from any thread, but timerProc() only in its own, the application's
 *            main thread, where the timers run. Lock order: the manager's mutex, then a port's
 *            lock. The mutex is not held while a serial port is waited for or opened. Waits end
 *            early when the thread's StopSource asks. A thread without one, as the host's that
 *            draws its windows, waits LineQueue::hostPatience at most: what it wants done to a
 *            line in use is left to whoever gets the line next.
 * Ownership: owns ports and handles for the life of the process; callers borrow them.
 * Errors:    a port that does not open stays registered and is tried again at every request.
 */
class PortManage : public QObject
{
    Q_OBJECT

public:
    PortManage();
    ~PortManage() override;

    /** The one manager of the process; made at the first call, in any thread. */
    static PortManage *instance();

    /** The serial port at a device node, opened if need be; it may still be closed on return, when
     *  it does not open, a LinePause keeps everybody off, or the thread did not wait for it.
     *  @return null when `name` belongs to a HID device or the calling thread was asked to stop */
    SerialPort *getPortHandle(const QString &name);

    /** The same port with its lock held, for the caller to give back: no tick can close it before
     *  it is used. Waits for its turn, in any thread. */
    SerialPort *getLockedPort(const QString &name);

    /** The handle (not the device) of a USB HID device, which may be null inside.
     *  @return null when the ids name a serial port or the calling thread was asked to stop */
    CommHandle *getPortHandle(int vendorId, int productId);

    /** Closes and opens again, with the settings that "serial.ini" now has.
     *
     *  A HID device has no lock of its own: its one user calls this, or Close(), while none of its
     *  threads is in a transfer. */
    void ReOpen(const QString &name);
    void ReOpen(int vendorId, int productId);

    /** Closes the device but keeps its handle. */
    void Close(const QString &name);
    void Close(int vendorId, int productId);

public slots:
    /** Closes the serial ports that are not marked as in use. A port that is busy or still
     *  sends is closed as soon as it is free: this runs in the host's GUI thread and does not
     *  wait. */
    void timerProc();

private:
    static void openHid(CommHandle &handle, int vendorId, int productId);
    static void closeHid(CommHandle &handle);
    ManagedPort *findOrCreate(const QString &name);
    void doAtOnceOrLater(const QString &name, ManagedPort::Due due);
    void leave(ManagedPort &port, ManagedPort::Due due);
    void doDue();
    std::vector<ManagedPort *> serialPorts() const;

    QMap<QString, CommHandle *> handles; // guarded by mutex
    QMutex mutex;
    QTimer *timer;       // owned, as a child; every 30 s
    QTimer *m_retry;     // owned, as a child; while something is due
    bool m_tick = false; // a tick has not been noted at the ports yet; main thread only
};
