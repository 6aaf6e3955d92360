#pragma once

#include "parameterrow.h"

/**
 * The option lists of the 6-20 kVA models' settings.
 *
 * A value is part of the device protocol: lists in an odd order, and the parameters whose
 * "Enable" is 0, are so on purpose.
 */
namespace kx300 {

// clang-format off
constexpr OptionRow systemWorkMode[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Stand alone"), 1 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Parallel operation"), 2 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "ECO"), 4 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Parallels ECO"), 6 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Self ageing"), 8 },
};

constexpr OptionRow ratedPower[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "6000"), 6000 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "10000"), 10000 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "20000"), 20000 },
};

constexpr OptionRow ratedVoltage[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "100"), 100 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "110"), 110 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "120"), 120 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "125"), 125 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "200"), 200 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "208"), 208 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "220"), 220 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "230"), 230 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "240"), 240 },
};

constexpr OptionRow ratedFrequency[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "50"), 50 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "60"), 60 },
};

constexpr OptionRow disableFirst[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Disable"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Enable"), 1 },
};

constexpr OptionRow derateOutputPf[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "1"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "0.9"), 1 },
};

constexpr OptionRow enableFirst[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Enable"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Disable"), 1 },
};

constexpr OptionRow connection[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Unconnect"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Connect"), 1 },
};

constexpr OptionRow snmpProtocol[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Modbus ascii"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Modbus rtu"), 1 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Megatec"), 2 },
};

constexpr OptionRow batteryType[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "VRLA battery"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Lithium battery"), 1 },
};

constexpr OptionRow chargeCurrentLimit[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "0.5"), 0.5f },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "1.0"), 1 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "2.0"), 2 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "3.0"), 3 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "4.0"), 4 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "5.0"), 5 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "6.0"), 6 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "7.0"), 7 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "8.0"), 8 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "9.0"), 9 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "10.0"), 10 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "11.0"), 11 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "12.0"), 12 },
};

constexpr OptionRow bypassVoltageUpperLimit[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "+15"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "+10"), 1 },
};

constexpr OptionRow bypassVoltageLowerLimit[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "-20"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "-10"), 1 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "-15"), 2 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "-30"), 3 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "-40"), 4 },
};

constexpr OptionRow bypassFrequencyRange[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "+-5"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "+-1"), 1 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "+-3"), 2 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Unlimited"), 3 },
};

constexpr OptionRow selfAgeingCurrentPercent[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "30"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "40"), 1 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "50"), 2 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "60"), 3 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "70"), 4 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "80"), 5 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "90"), 6 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "100"), 7 },
};

constexpr OptionRow deviceTypeSelect[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input one phase"), 0 },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input three phase"), 1 },
};
// clang-format on

} // namespace kx300
