#pragma once

#include "kx300/identifiers.h"
#include "kx300/settingoptions.h"

/**
 * The settings of the 6-20 kVA models, a table for each settings table.
 *
 * Columns: label, data identifier, display type, number of text identifiers, unit, scale, lowest
 * and highest raw value (both 0: no range), options. Misspellings are part of the vocabulary.
 */
namespace kx300 {

// clang-format off
constexpr ParameterRow basicConfigRows[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "System work mode:"),                 Id::SystemWorkMode,                OptionValue,  0, "",                                           1,       0,    0, systemWorkMode },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Cell float voltage:"),               Id::CellFloatVoltage,              TwoDecimals,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.01f, 210,  235, {}             },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Cell boost voltage:"),               Id::CellBoostVoltage,              TwoDecimals,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.01f, 220,  245, {}             },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Cell Eod voltage for 0.6c:"),        Id::CellEodVoltageFor06c,          TwoDecimals,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.01f, 160,  185, {}             },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Cell Eod voltage for 0.15c:"),       Id::CellEodVoltageFor015c,         TwoDecimals,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.01f, 165,  190, {}             },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Boost cycle:"),                      Id::BoostCycle,                    IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Hour"), 1,       1, 3000, {}             },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Rated power:"),                      Id::RatedPower,                    OptionValue,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "VA"),   1,       0,    0, ratedPower     },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Rated input voltage:"),              Id::RatedInputVoltage,             OptionValue,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    1,       0,    0, ratedVoltage   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Rated input frequency:"),            Id::RatedInputFrequency,           OptionValue,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Hz"),   1,       0,    0, ratedFrequency },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Rated output voltage:"),             Id::RatedOutputVoltage,            OptionValue,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    1,       0,    0, ratedVoltage   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Rated output frequency:"),           Id::RatedOutputFrequency,          OptionValue,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Hz"),   1,       0,    0, ratedFrequency },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Derate rate enable:"),               Id::DerateRateEnable,              OptionValue,  0, "",                                           1,       0,    0, disableFirst   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Rated frequency self-adaption:"),    Id::RatedFrequencySelfAdaption,    OptionValue,  0, "",                                           1,       0,    0, disableFirst   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Bus restart after over voltage:"),   Id::BusRestartAfterOverVoltage,    OptionValue,  0, "",                                           1,       0,    0, disableFirst   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Fan fault allow buzzer on:"),        Id::FanFaultAllowBuzzerOn,         OptionValue,  0, "",                                           1,       0,    0, disableFirst   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Lacking phase work:"),               Id::LackingPhaseWork,              OptionValue,  0, "",                                           1,       0,    0, disableFirst   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Frequency conversion mode:"),        Id::FrequencyConversionMode,       OptionValue,  0, "",                                           1,       0,    0, disableFirst   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Derate output PF:"),                 Id::DerateOutputPf,                OptionValue,  0, "",                                           1,       0,    0, derateOutputPf },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Display capacity:"),                 Id::DisplayCapacity,               OptionValue,  0, "",                                           1,       0,    0, disableFirst   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "LN connection reverse alarm:"),      Id::LnConnectionReverseAlarm,      OptionValue,  0, "",                                           1,       0,    0, enableFirst    },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Power-on self-start:"),              Id::PowerOnSelfStart,              OptionValue,  0, "",                                           1,       0,    0, enableFirst    },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Enable switch inverter:"),           Id::EnableSwitchInverter,          OptionValue,  0, "",                                           1,       0,    0, disableFirst   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Forbid bypass:"),                    Id::ForbidBypass,                  OptionValue,  0, "",                                           1,       0,    0, enableFirst    },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "EPO function enable:"),              Id::EpoFunctionEnable,             OptionValue,  0, "",                                           1,       0,    0, disableFirst   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Allow reverse input:"),              Id::AllowReverseInput,             OptionValue,  0, "",                                           1,       0,    0, disableFirst   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output with transformer:"),          Id::OutputWithTransformer,         OptionValue,  0, "",                                           1,       0,    0, connection     },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input with generator:"),             Id::InputWithGenerator,            OptionValue,  0, "",                                           1,       0,    0, connection     },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "LCD backlight lighten time:"),       Id::LcdBacklightLightenTime,       IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Min"),  1,       1,   30, {}             },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "SNMP card communicaiton protocol:"), Id::SnmpCardProtocol, OptionValue,  0, "",                                           1,       0,    0, snmpProtocol   },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Transformer coil turns ratio:"),     Id::TransformerCoilTurnsRatio,     OneDecimal,   0, "",                                           0.01f,  40,  240, {}             },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input voltage high alarm point:"),   Id::InputVoltageHighAlarmPoint,    IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    1,     220,  300, {}             },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input voltage low alarm point:"),    Id::InputVoltageLowAlarmPoint,     IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    1,     100,  220, {}             },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input frequency high alarm point:"), Id::InputFrequencyHighAlarmPoint,  OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Hz"),   0.1f,  500,  700, {}             },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input frequency low alarm point:"),  Id::InputFrequencyLowAlarmPoint,   OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Hz"),   0.1f,  300,  600, {}             },
};

constexpr ParameterRow batteryConfigRows[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output voltage high alarm point:"),       Id::OutputVoltageHighAlarmPoint,       IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    1,     220,   300, {}           },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output voltage low alarm point:"),        Id::OutputVoltageLowAlarmPoint,        IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    1,     100,   220, {}           },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input overvoltage protection point:"),    Id::InputOvervoltageProtectionPoint,   IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    1,     220,   300, {}           },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input undervoltage protection point:"),   Id::InputUndervoltageProtectionPoint,  IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    1,     100,   220, {}           },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output overvoltage protection point:"),   Id::OutputOvervoltageProtectionPoint,  IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    1,     220,   300, {}           },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output undervoltage protection point:"),  Id::OutputUndervoltageProtectionPoint, IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    1,     100,   220, {}           },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery numbers:"),                       Id::BatteryNumbers,                    IntegerValue, 0, "",                                           1,      16,    24, {}           },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery AH:"),                            Id::BatteryAh,                         IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "AH"),   1,       1, 30000, {}           },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery auto maintenance cycle:"),        Id::BatteryAutoMaintenanceCycle,       IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Hour"), 1,     720, 30000, {}           },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery auto equalized charge:"),         Id::BatteryAutoEqualizedCharge,        OptionValue,  0, "",                                           1,       0,     0, disableFirst },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery auto maintenance:"),              Id::BatteryAutoMaintenance,            OptionValue,  0, "",                                           1,       0,     0, disableFirst },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery low-voltage alarm coefficient:"), Id::BatteryLowVoltageAlarmCoefficient, TwoDecimals,  0, "",                                           0.01f, 105,   125, {}           },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery type:"),                          Id::BatteryType,                       OptionValue,  0, "",                                           1,       0,     0, batteryType  },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery maintenance cycle:"),             Id::BatteryMaintenanceCycle,           IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Day"),  1,       0,  3000, {}           },
};

constexpr ParameterRow adjustConfigRows[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output voltage adjust:"),                           Id::OutputVoltageAdjust,                     IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    1,     0,  0, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Frequency track limit:"),                           Id::FrequencyTrackLimit,                     OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Hz"),   0.1f,  5, 50, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Charge current limit:"),                            Id::ChargeCurrentLimit,                      OptionValue,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "A"),    0.01f, 0,  0, chargeCurrentLimit       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Boost time limit:"),                                Id::BoostTimeLimit,                          IntegerValue, 0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Hour"), 1,     1, 48, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Bypass voltage upper limit:"),                      Id::BypassVoltageUpperLimit,                 OptionValue,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "%"),    1,     0,  0, bypassVoltageUpperLimit  },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Bypass voltage lower limit:"),                      Id::BypassVoltageLowerLimit,                 OptionValue,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "%"),    1,     0,  0, bypassVoltageLowerLimit  },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Bypass frequency range:"),                          Id::BypassFrequencyRange,                    OptionValue,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "Hz"),   1,     0,  0, bypassFrequencyRange     },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Self ageing current percent:"),                     Id::SelfAgeingCurrentPercent,                OptionValue,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "%"),    1,     0,  0, selfAgeingCurrentPercent },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Inverter voltage rectification:"),                  Id::InverterVoltageCorrection,               OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.1f,  0,  0, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Bypass voltage rectification:"),                    Id::BypassVoltageCorrection,                 OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.1f,  0,  0, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Inverter DC voltage rectification:"),               Id::InverterDcVoltageCorrection,             TwoDecimals,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.01f, 0,  0, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input Phase A voltage rectification:"),             Id::InputPhaseAVoltageCorrection,            OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.1f,  0,  0, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input Phase B voltage rectification:"),             Id::InputPhaseBVoltageCorrection,            OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.1f,  0,  0, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input Phase C voltage rectification:"),             Id::InputPhaseCVoltageCorrection,            OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.1f,  0,  0, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Battery voltage rectification:"),                   Id::BatteryVoltageCorrection,                OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.1f,  0,  0, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input with transformer voltage rectification 1:"),  Id::InputWithTransformerVoltageCorrection1,  OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.1f,  0,  0, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Input with transformer voltage rectification 2:"),  Id::InputWithTransformerVoltageCorrection2,  OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.1f,  0,  0, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output with transformer voltage rectification 1:"), Id::OutputWithTransformerVoltageCorrection1, OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.1f,  0,  0, {}                       },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Output with transformer voltage rectification 2:"), Id::OutputWithTransformerVoltageCorrection2, OneDecimal,   0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "V"),    0.1f,  0,  0, {}                       },
};

constexpr ParameterRow devInfoConfigRows[] = {
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Parallel device number:"), Id::ParallelDeviceNumber, IntegerValue,  0, "",                                          1, 0, 10, {}               },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Device address:"),         Id::DeviceAddress,        IntegerValue,  0, "",                                          1, 0, 10, {}               },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Device type select:"),     Id::DeviceTypeSelect,     OptionValue,   0, "",                                          1, 0,  0, deviceTypeSelect },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "UPS maintenance period:"), Id::UpsMaintenancePeriod, IntegerValue,  0, QT_TRANSLATE_NOOP("tavo_6_20k_View", "day"), 1, 0,  0, {}               },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Device type:"),            Id::TypeSetting,          TextValue,    10, "",                                          1, 0,  0, {}               },
    { QT_TRANSLATE_NOOP("tavo_6_20k_View", "Company name:"),           Id::CompanyName,          TextValue,    14, "",                                          1, 0,  0, {}               },
};

/** The settings whose range follows the battery type. */
constexpr CellRangeRow cellRanges[] = {
    //                        VRLA          lithium
    { Id::CellFloatVoltage,      { { 210, 235 }, { 330, 415 } } },
    { Id::CellBoostVoltage,      { { 220, 245 }, { 330, 415 } } },
    { Id::CellEodVoltageFor06c,  { { 160, 185 }, { 260, 280 } } },
    { Id::CellEodVoltageFor015c, { { 165, 190 }, { 265, 285 } } },
};
// clang-format on

} // namespace kx300
