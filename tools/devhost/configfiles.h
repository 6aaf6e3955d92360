#pragma once

#include "hostoptions.h"

/** What the plug-in reads from the host's configuration files. */
struct HostConfiguration
{
    int language = 0; ///< 0 English, 1 Chinese
    int interval = 1; ///< s
    int retries = 5;
    int eventCount = 0; ///< number of event texts; every one of them is chosen for recording
    QList<DeviceSpec> devices;
};

/** Writes param.ini and dev.ini below `applicationDirectory`, where the plug-in looks for them.
 *  @return the reason of a failure with the file's name, empty when they are complete */
QString writeConfiguration(const QString &applicationDirectory,
                           const HostConfiguration &configuration);

/** Sets the line settings that a device asks for in serial.ini of the working directory; the
 *  settings of other ports stay, since other hosts may share the file.
 *  @return notes on values that had to be replaced, and the reason of a failure */
QStringList writeSerialSettings(const QList<DeviceSpec> &devices, QString &error);
