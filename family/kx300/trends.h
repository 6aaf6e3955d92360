#pragma once

#include "kx300/identifiers.h"
#include "trendrow.h"

/** The values of the 6-20 kVA models whose course is kept. */
namespace kx300 {

// clang-format off
constexpr TrendRow trendRows[] = {
    { QT_TRANSLATE_NOOP("TrendPanel", "Load"),            Id::TotalLoad,         0,                "%", 0, 100, 0,                             0                              },
    { QT_TRANSLATE_NOOP("TrendPanel", "Battery charge"),  Id::RemainingCapacity, 0,                "%", 0, 100, 0,                             0                              },
    { QT_TRANSLATE_NOOP("TrendPanel", "Battery voltage"), Id::BatteryVoltage,    0,                "V", 0, 0,   0,                             0                              },
    { QT_TRANSLATE_NOOP("TrendPanel", "Input voltage"),   Id::InputVoltage,      Id::InputPhases,  "V", 0, 0,   Id::InputVoltageLowAlarmPoint,  Id::InputVoltageHighAlarmPoint  },
    { QT_TRANSLATE_NOOP("TrendPanel", "Output voltage"),  Id::OutputVoltage,     Id::OutputPhases, "V", 0, 0,   Id::OutputVoltageLowAlarmPoint, Id::OutputVoltageHighAlarmPoint },
};
// clang-format on

} // namespace kx300
