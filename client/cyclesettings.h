#pragma once

#include <QString>

class PortManage;

/** What one cycle goes by: a copy of the client's settings, taken when the cycle starts. */
struct CycleSettings
{
    QString deviceName;
    int protocol = 0;
    int retries = 0;
    QString ipAddress;
    int tcpPort = 0;
    QString manufacturer;
    QString portName;
    QString portSettings;
    int address = 0;
    int communicationType = 0; ///< 1 connects a socket; every value but 0 queries over it
    PortManage *ports = nullptr;
};

/** The communication type that connects a TCP peer. */
constexpr int tcpCommunication = 1;

/** The TCP peer as "10.0.0.5:502". */
inline QString peerText(const CycleSettings &settings)
{
    return QStringLiteral("%1:%2").arg(settings.ipAddress, QString::number(settings.tcpPort));
}
