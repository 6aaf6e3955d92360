#pragma once

#include "outcome.h"

#include <QCoreApplication>
#include <QList>
#include <QString>

#include <optional>

/** One device that the host is to monitor. */
struct DeviceSpec
{
    Q_DECLARE_TR_FUNCTIONS(DeviceSpec)

public:
    QString name; ///< unique, not empty
    QString port; ///< serial node; empty for TCP
    QString host; ///< TCP peer; empty for a port
    int tcpPort = 502;
    int address = 1;  ///< unit on the line, 1 to 247; 0 and 255 stand for a TCP peer itself
    QString settings; ///< "9600,n,8,1"; empty leaves serial.ini alone
    int timeout = 0;  ///< ms for serial.ini; 0 leaves it alone

    bool isTcp() const { return !host.isEmpty(); }

    /** False for units that nothing at the end of its line or connection can have. */
    bool hasUsableAddress() const;

    /** Where it is, in words: "/dev/ttyUSB0, address 1". */
    QString place() const;

    /** The text that parseDevice() reads as this device. */
    QString text() const;

    bool operator==(const DeviceSpec &other) const { return text() == other.text(); }
};

/** A device, or why a text describes none. */
struct ParsedDevice
{
    std::optional<DeviceSpec> device;
    QString error;
};

/** Reads `name=ups1,port=/dev/ttyUSB0,addr=1` or `name=ups2,tcp=127.0.0.1:1502`. */
ParsedDevice parseDevice(const QString &text);

/** Whether a device can be one more beside others: its name is its own, and no other device on its
 *  port asks for another setting of the line. */
Outcome checkBeside(const DeviceSpec &device, const QList<DeviceSpec> &others);

/** What the rates, parities, sizes and stop bits of a line's settings can be. */
constexpr int lineRates[] = { 50,   75,   110,  134,  150,   200,   300,   600,   1200,
                              1800, 2400, 4800, 9600, 19200, 38400, 57600, 115200 };
constexpr char lineParities[] = "noesm";
constexpr char lineDataBits[] = "5678";
constexpr char lineStopBits[] = "12";
