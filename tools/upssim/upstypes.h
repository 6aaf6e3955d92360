#pragma once

#include <QtGlobal>

namespace upssim {

/** What surrounds the UPS; a scenario pulls these levers. */
struct Surroundings
{
    bool mains = true;
    double mainsVoltage = 230;  ///< V
    double mainsFrequency = 50; ///< Hz
    bool bypass = true;         ///< the bypass breaker; its supply is the mains
    bool battery = true;        ///< the battery breaker
    bool fan = true;
    bool epo = false;       ///< emergency power off pressed
    double load = 55;       ///< % of the rated power
    double autonomy = 1200; ///< s that a full battery carries a load of 100 %
};

/** One entry of the history. */
struct HistoryRecord
{
    quint16 number;
    quint16 content; ///< 16 + event, or one of the codes from 112
    quint16 status;  ///< 1 appeared, 0 disappeared
    quint16 day;     ///< days since the first start
    quint32 second;  ///< in the day
    quint16 mode;    ///< working mode at that moment
};

/** Numbers of the events that the model raises by itself. */
namespace upsevent {
enum {
    OverTemperature = 8,
    Overload = 10,
    FanFault = 29,
    Epo = 30,
    OverloadAlarm = 51,
    BatteryDisconnected = 52,
    BatteryLow = 59,
    InputHigh = 66,
    InputFrequency = 67,
    EndOfDischarge = 70,
    TestSuccess = 71,
    ForbiddenStart = 72,
    TestFail = 73,
    MaintenanceSuccess = 76,
    MaintenanceFail = 77,
    AbnormalInput = 82,
    AbnormalBypass = 83,
    TestMode = 94,
};
}

/** History contents that are not events. */
namespace upscontent {
enum {
    FirstEvent = 16, ///< event k is content 16 + k
    Started = 112,
    FaultCleared = 113,
    HistoryCleared = 114,
    TestStarted = 116,
    TestStopped = 117,
    ManualBypass = 118,
    ManualInverter = 119,
    ManualShutDown = 120,
    ManualStart = 121,
    InputFromMains = 122,
    InputFromBattery = 123,
    OutputFromInverter = 124,
    OutputFromBypass = 125,
    OutputOff = 126,
    MaintenanceStarted = 127,
};
}

} // namespace upssim
