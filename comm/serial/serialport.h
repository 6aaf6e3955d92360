#pragma once

#include "serial/linequeue.h"
#include "serial/porterror.h"
#include "serial/serialsettings.h"
#include "serial/trafficlog.h"
#include "serial/unsentoutput.h"

#include <chrono>
#include <QIODevice>
#include <QMutex>
#include <system_error>

class QFile;

/**
 * A serial port: a QIODevice on a terminal, with the lock and the traffic log of its line.
 *
 * Threads:   every use goes between Lock() and UnLock(), or under a PortLock; getPortSettings()
 *            alone may be called at any time. Reads and writes end early when the calling thread's
 *            StopSource asks.
 * Ownership: owns the file on the node, its mutex and nothing else.
 * Errors:    -1 or false; why is in errorCode and in the debug log.
 */
class SerialPort : public QIODevice
{
    Q_OBJECT

public:
    enum QueryMode : int { Polling, EventDriven };

    SerialPort();
    SerialPort(const QString &name, QueryMode mode);
    SerialPort(const QString &name, const PortSettings &settings, QueryMode mode);
    ~SerialPort() override;

    /** Opens the node `name` and sets the line.
     *  @param settings  "9600,n,8,1" or "12#3#0#0", see parseLineSettings()
     *  @param timeout   of a read, ms
     *  @return true when the port is open; else the debug log tells why, once per reason */
    bool CommOpen(const QString &name, const QString &settings, int timeout);

    /** Closes and opens again with what CommOpen() was given last. */
    bool ReOpen();

    /** Waits for the port, in turn with all who do so by a function of this class; not recursive.
     *  Client threads use PortLock, which ends with them. */
    void Lock();

    /** The same with an end. @return false when the wait was given up */
    [[nodiscard]] bool lockWithin(LineQueue::Patience patience);

    /** Gives the port back. On a port that nobody holds it locks instead: intended, callers
     *  always pair it with Lock(). */
    void UnLock();
    bool open(OpenMode mode) override;
    /** Waits for what is being sent and drops what the line does not take. */
    void close() override;
    bool isSequential() const override { return true; }
    /** Bytes waiting in the driver; 0 on error. */
    qint64 size() const override;
    /** Waits for input as long as the timeout says (its remainder below a second counts as
     *  microseconds); -1 when none came or on error. */
    qint64 bytesAvailable() const override;

    /** Reads once what the driver delivers within the timeout; public for callers that go past
     *  the QIODevice's buffer. 0 when nothing came or the line hung up. */
    qint64 readData(char *data, qint64 maxSize) override;
    /** The same into an array; empty when closed or on failure. */
    QByteArray readData(qint64 maxSize);
    qint64 writeData(const char *data, qint64 length) override;

    // Each keeps its value for the next open(), and sets an open line at once.
    virtual void setBaudRate(BaudRateType rate);
    virtual void setDataBits(DataBitsType bits);
    virtual void setParity(ParityType parity);
    virtual void setStopBits(StopBitsType bits);
    virtual void setFlowControl(FlowType flow);
    /** @param ms  rounded down to tenths of a second; wraps above 25,500 */
    virtual void setTimeout(long ms);
    virtual void setDtr(bool on);
    virtual void setRts(bool on);
    virtual void flush();
    virtual void ungetChar(char c);
    /** Keeps what an errno value stands for in errorCode, and returns it. */
    virtual unsigned long translateError(unsigned long error) const;
    /** A set of LineStatus bits; 0 when closed. */
    virtual unsigned long lineStatus();

    QString getPortName() const { return port; }
    /** The settings text last given to CommOpen(). */
    QString getPortSettings() const;
    /** A PortError::Code, or a value of errno. */
    unsigned long lastError() const { return errorCode; }
    /** True when the open device went away: only a ReOpen() helps. */
    bool isHungUp() const { return m_hungUp; }
    /** True while the driver may still send what was written; not when the line takes nothing. */
    bool isSending() const { return m_unsent.isGoingOut(descriptor()); }
    /** Writes one line to the traffic log. @param direction  1 = received, 0 = sent */
    void saveLogData(const char *data, int len, int direction);

    QMutex *mutex = nullptr; ///< the port's lock; owned, not recursive; bare, it knows no turns
    bool inUse = false;      ///< spares the port from the next idle close; guarded by *mutex

protected:
    /** Keeps why open() fails. @return false */
    bool failToOpen(std::errc error);

private:
    QString settingsText; // guarded by m_settingsMutex
    LineSettings openSettings;
    int openTimeout = 500; // ms

public:
    QString logFileName; ///< set by CommOpen()
    QString logDir;      ///< in front of the log's name, twice in its path: intended

private:
    void init();
    int descriptor() const;
    bool openFile();
    bool makeRaw();
    bool openAsStored(const char *caller);
    void applyTermios();
    void setModemLine(int line, bool on);
    void noteHangUp();
    std::chrono::milliseconds readTimeout() const;
    qint64 baud() const;
    bool waitForRoom() const;

    QFile *file = nullptr; // owned
    struct ::termios termios = {};
    SelectTimeout selectTimeout;
    PortSettings currentSettings;
    QString port;
    QueryMode queryMode = Polling;
    mutable unsigned long errorCode = PortError::NoError;
    bool m_hungUp = false;
    UnsentOutput m_unsent;
    std::error_code m_openError; // of the last open()
    TrafficLog m_log;
    LineQueue m_queue;              // of those who wait for `mutex`
    mutable QMutex m_settingsMutex; // for readers that do not hold the port
};
