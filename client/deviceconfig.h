#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/** What the host's two configuration files say about one device. */
struct DeviceConfig
{
    QString languageFlag; ///< "1" for language 0, "0" for any other: intended
    QString portName;     ///< serial port
    int address = 0;      ///< device address on the line
    int retries = 0;      ///< failed queries until the link counts as lost
    int protocol = 0;
    int interval = 0;           ///< s
    int communicationType = 0;  ///< 1 = TCP, 0 = serial port; others: see CycleSettings
    QString ipAddress;          ///< TCP peer
    int tcpPort = 0;            ///< TCP peer's port; 16 bits are used
    QMap<int, int> eventChoice; ///< event index -> record it (0 or 1)
    QStringList problems;       ///< a line each: file, key and what is wrong with it
};

/** The directory of "param.ini" and "dev.ini", without a slash at its end. */
QString configurationDirectory();

/** Reads the configuration of one device; a missing file or key reads as its default.
 *
 *  Numbers are taken as they stand, absurd ones too, and what is no number reads as 0; both are
 *  reported in `problems`.
 *  @param directory   of the two files
 *  @param deviceName  in front of every key of "dev.ini"; slashes in it make nested groups
 *  @param eventCount  number of event choices to read */
DeviceConfig readDeviceConfig(const QString &directory, const QString &deviceName, int eventCount);

/** The host's language number as it stands in "param.ini" of `directory`; 0 when it is missing. */
int readLanguage(const QString &directory);
