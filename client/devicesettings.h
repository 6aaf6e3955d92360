#pragma once

#include <QMap>
#include <QString>

class PortManage;

/** All that a client is configured with; what a cycle goes by is a copy. */
struct DeviceSettings
{
    QString deviceName;
    QString languageFlag; ///< "1" for language 0, "0" for any other: intended; kept for the host
    QString portName;     ///< serial port
    QString portSettings; ///< of that port, as its manager knows them
    int unit = 1;         ///< Modbus unit, the device's address on the line
    int retries = 5;      ///< failed queries until the link counts as lost
    int protocol = 0;
    int interval = 0;           ///< s
    int communicationType = 0;  ///< 1 connects a socket; every value but 0 queries over it
    QString ipAddress;          ///< TCP peer
    int tcpPort = 0;            ///< TCP peer's port; 16 bits are used
    QMap<int, int> eventChoice; ///< event -> record it (0 or 1), kept for the host
    PortManage *ports = nullptr;
};

/** The communication type that connects a TCP peer. */
constexpr int tcpCommunication = 1;

/** The TCP peer as "10.0.0.5:502". */
inline QString peerText(const DeviceSettings &settings)
{
    return settings.ipAddress + QLatin1Char(':') + QString::number(settings.tcpPort);
}

/** How other programs find the device. */
inline QString deviceLocation(const DeviceSettings &settings)
{
    return settings.communicationType == tcpCommunication ? peerText(settings) : settings.portName;
}
