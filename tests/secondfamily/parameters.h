#pragma once

#include "identifiers.h"
#include "parameterrow.h"

/** The parameters of the 1-3 kVA models. */
namespace kx100 {

// clang-format off
constexpr OptionRow modes[] = {
    { QT_TRANSLATE_NOOP("kx100", "Line"),    0 },
    { QT_TRANSLATE_NOOP("kx100", "Battery"), 1 },
};

constexpr OptionRow batteryTypes[] = {
    { QT_TRANSLATE_NOOP("kx100", "Lead"),    0 },
    { QT_TRANSLATE_NOOP("kx100", "Lithium"), 1 },
};

constexpr ParameterRow deviceRows[] = {
    { QT_TRANSLATE_NOOP("kx100", "Model:"), Id::ModelText, TextValue,   8, "", 0, 0, 0, {}    },
    { QT_TRANSLATE_NOOP("kx100", "Mode:"),  Id::Mode,      OptionValue, 0, "", 0, 0, 0, modes },
};

constexpr ParameterRow inputRows[] = {
    { QT_TRANSLATE_NOOP("kx100", "Mains voltage:"),   Id::InputVoltage,   OneDecimal, 0, "V",  0, 0, 0, {} },
    { QT_TRANSLATE_NOOP("kx100", "Mains frequency:"), Id::InputFrequency, OneDecimal, 0, "Hz", 0, 0, 0, {} },
};

constexpr ParameterRow outputRows[] = {
    { QT_TRANSLATE_NOOP("kx100", "Outlet voltage:"), Id::OutputVoltage, OneDecimal,   0, "V", 0, 0, 0, {} },
    { QT_TRANSLATE_NOOP("kx100", "Outlet load:"),    Id::Load,          IntegerValue, 0, "%", 0, 0, 0, {} },
};

constexpr ParameterRow batteryRows[] = {
    { QT_TRANSLATE_NOOP("kx100", "Pack voltage:"), Id::BatteryVoltage, OneDecimal,   0, "V", 0, 0, 0, {} },
    { QT_TRANSLATE_NOOP("kx100", "Pack charge:"),  Id::Capacity,       IntegerValue, 0, "%", 0, 0, 0, {} },
};

constexpr ParameterRow basicConfigRows[] = {
    { QT_TRANSLATE_NOOP("kx100", "Rated voltage:"), Id::RatedVoltage, IntegerValue, 0, "V", 1, 220, 240, {} },
    { QT_TRANSLATE_NOOP("kx100", "Quiet hours:"),   Id::QuietHours,   IntegerValue, 0, "h", 1,   0,  12, {} },
};

// Other than with the first family, the cells' ranges are on this page.
constexpr ParameterRow batteryConfigRows[] = {
    { QT_TRANSLATE_NOOP("kx100", "Pack type:"),        Id::BatteryType,    OptionValue, 0, "",  1,     0,   0, batteryTypes },
    { QT_TRANSLATE_NOOP("kx100", "Cell low voltage:"), Id::CellLowVoltage, TwoDecimals, 0, "V", 0.01f, 0,   0, {}           },
};

constexpr CellRangeRow cellRanges[] = {
    { Id::CellLowVoltage, { { 170, 190 }, { 280, 300 } } },
};
// clang-format on

} // namespace kx100
