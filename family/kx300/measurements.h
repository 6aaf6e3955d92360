#pragma once

#include "kx300/identifiers.h"
#include "kx300/options.h"

/**
 * What is measured on the 6-20 kVA models, a table for each panel.
 *
 * Columns: label, data identifier, display type, number of text identifiers, unit, scale, lowest
 * and highest raw value (none), options. Misspellings are part of the vocabulary.
 */
namespace kx300 {

// clang-format off
constexpr ParameterRow deviceRows[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Running time:"),          Id::RunningTime,         IntegerValue,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Day"), 0, 0, 0, {}          },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Working mode:"),          Id::WorkingMode,         OptionValue,   0, "",                                          0, 0, 0, workingMode },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Modbus decode version:"), Id::ModbusDecodeVersion, IntegerValue,  0, "",                                          0, 0, 0, {}          },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Device Identifier:"),     Id::DeviceIdentifier,    IntegerValue,  0, "",                                          0, 0, 0, {}          },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Device name:"),           Id::NameText,            TextValue,    16, "",                                          0, 0, 0, {}          },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Device type:"),           Id::TypeText,            TextValue,    16, "",                                          0, 0, 0, {}          },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Device manufacturer:"),   Id::ManufacturerText,    TextValue,    16, "",                                          0, 0, 0, {}          },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Firmware version:"),      Id::FirmwareVersion,     IntegerValue,  0, "",                                          0, 0, 0, {}          },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Software version:"),      Id::SoftwareVersionText, TextValue,    16, "",                                          0, 0, 0, {}          },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Serial number:"),         Id::SerialNumberText,    TextValue,    16, "",                                          0, 0, 0, {}          },
};

constexpr ParameterRow batteryRows[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery voltage:"),     Id::BatteryVoltage,     OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),   0, 0, 0, {}            },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery current:"),     Id::BatteryCurrent,     OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "A"),   0, 0, 0, {}            },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery temperature:"), Id::BatteryTemperature, OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "℃"),   0, 0, 0, {}            },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Remaining time:"),      Id::RemainingTime,      IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Min"), 0, 0, 0, {}            },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Remaining capacity:"),  Id::RemainingCapacity,  OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "%"),   0, 0, 0, {}            },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery status:"),      Id::BatteryStatus,      OptionValue,  0, "",                                          0, 0, 0, batteryStatus },
};

constexpr ParameterRow recInvRows[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Inverter current:"),      Id::InverterCurrent,      OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "A"), 0, 0, 0, {}              },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Inverter temperature:"),  Id::InverterTemperature,  OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "℃"), 0, 0, 0, {}              },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Inverter status:"),       Id::InverterStatus,       OptionValue, 0, "",                                        0, 0, 0, inverterStatus  },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Rectifier temperature:"), Id::RectifierTemperature, OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "℃"), 0, 0, 0, {}              },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Rectifier status:"),      Id::RectifierStatus,      OptionValue, 0, "",                                        0, 0, 0, rectifierStatus },
};

constexpr ParameterRow inputRows[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input voltage:"),   Id::InputVoltage,     ThreePhases, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),  0, 0, 0, {} },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input current:"),   Id::InputCurrent,     ThreePhases, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "A"),  0, 0, 0, {} },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input frequency:"), Id::InputFrequency,   OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Hz"), 0, 0, 0, {} },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input PF:"),        Id::InputPowerFactor, OneDecimal,  0, "",                                         0, 0, 0, {} },
};

constexpr ParameterRow outputRows[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output voltage:"),         Id::OutputVoltage,       OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),   0, 0, 0, {}               },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output current:"),         Id::OutputCurrent,       OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "A"),   0, 0, 0, {}               },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output frequency:"),       Id::OutputFrequency,     OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Hz"),  0, 0, 0, {}               },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output PF:"),              Id::OutputPowerFactor,   OneDecimal,  0, "",                                          0, 0, 0, {}               },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output apparent power:"),  Id::OutputApparentPower, OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "kVA"), 0, 0, 0, {}               },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output active power:"),    Id::OutputActivePower,   OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "kW"),  0, 0, 0, {}               },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output reactive power:"),  Id::OutputReactivePower, OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "kVA"), 0, 0, 0, {}               },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output load percentage:"), Id::OutputLoad,          OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "%"),   0, 0, 0, {}               },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output load status:"),     Id::OutputMode,          OptionValue, 0, "",                                          0, 0, 0, outputLoadStatus },
};

constexpr ParameterRow bypassRows[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Bypass voltage:"),   Id::BypassVoltage,     OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),  0, 0, 0, {}          },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Bypass current:"),   Id::BypassCurrent,     OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "A"),  0, 0, 0, {}          },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Bypass frequency:"), Id::BypassFrequency,   OneDecimal,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Hz"), 0, 0, 0, {}          },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Bypass PF:"),        Id::BypassPowerFactor, OneDecimal,  0, "",                                         0, 0, 0, {}          },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Bypass state:"),     Id::BypassState,       OptionValue, 0, "",                                         0, 0, 0, bypassState },
};
// clang-format on

} // namespace kx300
