#pragma once

#include <QList>
#include <QString>

/** A serial port of this machine. */
struct SerialPortInfo
{
    QString node;        ///< "/dev/ttyUSB0"
    QString description; ///< maker and product of an adapter, or the driver; may be empty
};

/** The ports that have hardware behind them, as sysfs tells them, by name.
 *  @param sysfs  "/sys", or a copy of its class/tty for tests */
QList<SerialPortInfo> serialPorts(const QString &sysfs = QStringLiteral("/sys"));
