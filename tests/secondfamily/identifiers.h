#pragma once

/** Data identifiers of the 1-3 kVA models. */
namespace kx100::Id {

enum : int {
    ModelText = 5000, // one character code for each identifier from here on
    Mode = 5100,
    InputVoltage = 5101,
    InputFrequency = 5102,
    OutputVoltage = 5103,
    Load = 5104,
    BatteryVoltage = 5105,
    Capacity = 5106,
    LinePath = 5110,
    BatteryPath = 5111,
    RatedVoltage = 5200,
    BatteryType = 5201,
    CellLowVoltage = 5202,
    QuietHours = 5203,
};

} // namespace kx100::Id
