#pragma once

#include <QString>

/** What host and plug-ins call things by: numbers and keys of the host contract. */
namespace HostContract {

/** Types of the events that a client posts beside the commands of its view; the numbers are
 *  contract. */
enum Event : int {
    ParameterRequestEvent = 1029,
    LinkRestoredEvent = 1040,
    LinkLostEvent = 1041,
    HistoryDownloadedEvent = 1042,
    StatusChangedEvent = 2001,
    FlagChangedEvent = 2006,
    DataReportEvent = 2007,
    AbnormalInputEvent = 2009,
    BatteryLowEvent = 2010,
};

/** Numbers of the control commands, and types of the events by which a view asks for them; the
 *  numbers are contract. */
enum Command : int {
    ClearFaultCommand = 1001,
    ClearHistoryCommand = 1002,
    SelfTestCommand = 1003,
    DischargeCommand = 1004,
    DischargeToLowCommand = 1005,
    CancelTaskCommand = 1006,
    ShutdownCommand = 1007,
    StartupCommand = 1008,
    BuzzerOnCommand = 1009,
    BuzzerOffCommand = 1010,
    SetTimeCommand = 1011,
    WakeupCommand = 1013,
    ShutdownToBypassCommand = 1015,
    TurnBypassCommand = 1016,
    TurnInverterCommand = 1017,
    UpgradeCommand = 1018,
    DownloadHistoryCommand = 1045,
    SetParameterCommand = 2016,
};

/** The communication state; the numbers are contract. */
enum LinkState : int { LinkUnknown = -1, LinkUp = 0, LinkLost = 1 };

/** Keys of the maps that events carry, and of the device information map; spellings are bound by
 *  name. */
namespace Key {

// Events
inline QString name()
{
    return QStringLiteral("name");
}
inline QString protocol()
{
    return QStringLiteral("protocol");
}
inline QString port()
{
    return QStringLiteral("port");
}
inline QString time()
{
    return QStringLiteral("timeStr");
}
inline QString description()
{
    return QStringLiteral("desc");
}
inline QString state()
{
    return QStringLiteral("state");
}
inline QString lost()
{
    return QStringLiteral("lost");
}
inline QString alarmId()
{
    return QStringLiteral("alarmId");
}
inline QString alarmState()
{
    return QStringLiteral("alarmState");
}
inline QString alarmAppeared()
{
    return QStringLiteral("dis_alarm");
}
inline QString data()
{
    return QStringLiteral("data");
}

// Requests and results of commands
inline QString controlId()
{
    return QStringLiteral("controlId");
}
inline QString controlValue()
{
    return QStringLiteral("controlValue");
}
inline QString result()
{
    return QStringLiteral("result");
}
inline QString nodeName()
{
    return QStringLiteral("nodeName");
}
inline QString nodeValue()
{
    return QStringLiteral("nodeValue");
}

// Device information, which has "name" and "state" too
inline QString manufacturer()
{
    return QStringLiteral("IdentManufacturer");
}
inline QString model()
{
    return QStringLiteral("upsIdentModel");
}
inline QString portInfo()
{
    return QStringLiteral("portInfo");
}
inline QString unit()
{
    return QStringLiteral("upsAddr");
}
inline QString load()
{
    return QStringLiteral("upsLoad");
}

} // namespace Key

} // namespace HostContract
