#pragma once

#include "registermap.h"

namespace registermap {

// clang-format off
/** Input registers from address 0, ascending by identifier. What is missing has no meaning. */
constexpr RegisterRow measurementRows[] = {
    { 4000, 16, Format::Character, 1,    "",     "Manufacturer" },
    { 4016, 16, Format::Character, 1,    "",     "Device type" },
    { 4032, 16, Format::Character, 1,    "",     "Software version" },
    { 4064, 16, Format::Character, 1,    "",     "Serial number" },
    { 4080, 16, Format::Character, 1,    "",     "Device name" },
    { 4096,  1, Format::Unsigned,  1,    "",     "Device identifier" },
    { 4097,  1, Format::Unsigned,  1,    "",     "Version of this map" },
    { 4098,  1, Format::Unsigned,  1,    "",     "Firmware version" },
    { 4101,  1, Format::Unsigned,  1,    "",     "Battery state: 0 disconnected, 1 standby, 2 boost charge, 3 float charge, 4 discharge" },
    { 4102,  1, Format::Unsigned,  1,    "s",    "Time on battery" },
    { 4103,  1, Format::Unsigned,  1,    "min",  "Battery time left" },
    { 4105,  1, Format::Unsigned,  0.1,  "V",    "Battery voltage" },
    { 4106,  1, Format::Signed,    0.1,  "A",    "Battery current, negative while discharging" },
    { 4107,  1, Format::Signed,    0.1,  "°C",   "Battery temperature; no value without a battery" },
    { 4117,  1, Format::Unsigned,  0.1,  "%",    "Battery capacity left" },
    { 4118,  1, Format::Unsigned,  1,    "",     "Number of mains failures" },
    { 4132,  1, Format::Unsigned,  1,    "",     "Input phases" },
    { 4133,  3, Format::Unsigned,  0.1,  "V",    "Input voltage" },
    { 4136,  3, Format::Unsigned,  0.1,  "A",    "Input current" },
    { 4139,  3, Format::Unsigned,  0.01, "Hz",   "Input frequency" },
    { 4142,  3, Format::Unsigned,  0.01, "kW",   "Input power" },
    { 4145,  3, Format::Unsigned,  0.01, "",     "Input power factor" },
    { 4161,  1, Format::Unsigned,  1,    "",     "Output mode: 0 none, 1 on bypass, 2 on inverter, 3 other" },
    { 4162,  1, Format::Unsigned,  0.01, "Hz",   "Output frequency" },
    { 4163,  1, Format::Unsigned,  1,    "",     "Output phases" },
    { 4164,  3, Format::Unsigned,  0.1,  "V",    "Output voltage" },
    { 4167,  3, Format::Unsigned,  0.1,  "A",    "Output current" },
    { 4170,  3, Format::Unsigned,  0.01, "kW",   "Output active power" },
    { 4173,  3, Format::Unsigned,  0.1,  "%",    "Output load" },
    { 4176,  1, Format::Unsigned,  0.1,  "%",    "Total output load" },
    { 4177,  3, Format::Unsigned,  0.01, "",     "Output power factor" },
    { 4180,  3, Format::Unsigned,  0.01, "kVA",  "Output apparent power" },
    { 4183,  3, Format::Unsigned,  0.01, "kvar", "Output reactive power" },
    { 4190,  1, Format::Unsigned,  1,    "",     "Bypass state: 0 abnormal, 1 normal" },
    { 4191,  1, Format::Unsigned,  0.01, "Hz",   "Bypass frequency" },
    { 4192,  1, Format::Unsigned,  1,    "",     "Bypass phases" },
    { 4193,  3, Format::Unsigned,  0.1,  "V",    "Bypass voltage" },
    { 4196,  3, Format::Unsigned,  0.1,  "A",    "Bypass current" },
    { 4199,  3, Format::Unsigned,  0.01, "kW",   "Bypass power" },
    { 4202,  3, Format::Unsigned,  0.01, "",     "Bypass power factor" },
    { 4216,  1, Format::Unsigned,  1,    "",     "Flow: bypass" },
    { 4217,  1, Format::Unsigned,  1,    "",     "Flow: input" },
    { 4218,  1, Format::Unsigned,  1,    "",     "Flow: rectifier" },
    { 4219,  1, Format::Unsigned,  1,    "",     "Flow: direct current into the inverter" },
    { 4220,  1, Format::Unsigned,  1,    "",     "Flow: inverter" },
    { 4221,  1, Format::Unsigned,  1,    "",     "Flow: output" },
    { 4222,  1, Format::Unsigned,  1,    "",     "Flow: battery" },
    { 4237,  1, Format::Unsigned,  0.1,  "A",    "Inverter current" },
    { 4238,  1, Format::Signed,    0.1,  "°C",   "Rectifier temperature" },
    { 4239,  1, Format::Signed,    0.1,  "°C",   "Inverter temperature" },
    { 4240,  1, Format::Unsigned,  1,    "day",  "Running time" },
    { 4241,  1, Format::Unsigned,  1,    "",     "Working mode: 0 fault and alarm clear, 1 power on, 2 standby, 3 bypass, 4 online, 5 battery, 6 battery test, 7 fault, 8 frequency conversion, 9 ECO, 10 shutdown, 11 test" },
    { 4242,  1, Format::Unsigned,  1,    "",     "Rectifier state: 0 off, 1 soft start, 2 PFC, 3 on battery" },
    { 4243,  1, Format::Unsigned,  1,    "",     "Inverter state: 0 off, 1 soft start, 2 running" },
    { 4244,  1, Format::Unsigned,  1,    "",     "Buzzer: 0 silenced, 1 allowed" },
};
// clang-format on

} // namespace registermap
