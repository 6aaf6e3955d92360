#pragma once

#include "devicesettings.h"

#include <QStringList>

/** What the host's two configuration files say about one device. */
struct DeviceConfig
{
    DeviceSettings settings; ///< without what the files do not give: port settings and manager
    QStringList problems;    ///< a line each: file, key and what is wrong with it
};

/** Reads the configuration of one device; a missing file or key reads as its default.
 *
 *  Numbers are taken as they stand, absurd ones too, and what is no number reads as 0; both are
 *  reported in `problems`.
 *  @param directory   of "param.ini" and "dev.ini"
 *  @param deviceName  in front of every key of "dev.ini"; slashes in it make nested groups
 *  @param eventCount  number of event choices to read */
DeviceConfig readDeviceConfig(const QString &directory, const QString &deviceName, int eventCount);
