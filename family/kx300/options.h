#pragma once

#include "parameterrow.h"

/**
 * The texts of the 6-20 kVA models' states.
 *
 * A value is part of the device protocol: lists in an odd order, and the parameters whose
 * "Enable" is 0, are so on purpose.
 */
namespace kx300 {

// clang-format off
constexpr OptionRow workingMode[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Fault and alarm clear"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Power on"), 1 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Standby"), 2 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Bypass"), 3 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Online"), 4 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery"), 5 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery test"), 6 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Fault"), 7 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Frequency conversion"), 8 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "ECO"), 9 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Shutdown"), 10 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Test"), 11 },
};

constexpr OptionRow batteryStatus[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Disconnect"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Standby"), 1 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Equalized charge"), 2 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Float charge"), 3 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Discharge"), 4 },
};

constexpr OptionRow inverterStatus[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Off"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Soft start"), 1 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Normal run"), 2 },
};

constexpr OptionRow rectifierStatus[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Off"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Soft start"), 1 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "PFC mode"), 2 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery mode"), 3 },
};

constexpr OptionRow outputLoadStatus[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "None"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Load on bypass"), 1 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Load on inverter"), 2 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Load on other"), 3 },
};

constexpr OptionRow bypassState[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Abnormal"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Normal"), 1 },
};

// clang-format on

} // namespace kx300
