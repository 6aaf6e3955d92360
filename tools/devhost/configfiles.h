#pragma once

#include "devicespec.h"

#include <QStringList>

/** What the plug-in reads from the host's configuration files. */
struct HostConfiguration
{
    int language = 0; ///< 0 English, 1 Chinese
    int interval = 1; ///< s
    int retries = 5;
    int eventCount = 0; ///< number of event texts; every one of them is chosen for recording
    QList<DeviceSpec> devices;
};

/** Writes param.ini and dev.ini below `applicationDirectory`, where the plug-in looks for them. */
Outcome writeConfiguration(const QString &applicationDirectory,
                           const HostConfiguration &configuration);

/** Removes these files and their directories, as far as nothing else is in them. */
void removeConfiguration(const QString &applicationDirectory);

/** What became of serial.ini. */
struct SerialSettings
{
    QStringList notes; ///< on values that were replaced
    Outcome outcome;
};

/** Sets the line settings that devices ask for in serial.ini of the working directory; every other
 *  line stays, since other hosts and people share the file. */
SerialSettings writeSerialSettings(const QList<DeviceSpec> &devices);
