#pragma once

#include "registermap.h"

namespace registermap {

// clang-format off
/** Holding registers from address 0, ascending by identifier. Bounds and factory value are raw.
 *  The bounds of the cell voltages span both battery types; cellBounds has each one's. */
constexpr SettingRow settingRows[] = {
    { { 3000,  1, Format::Unsigned,  1,    "",    "System work mode: 1 alone, 2 parallel, 4 ECO, 6 parallel ECO, 8 self ageing" },                1,     8,     1 },
    { { 3001,  1, Format::Unsigned,  1,    "",    "Parallel device number" },                                                                     0,    10,     1 },
    { { 3002,  1, Format::Unsigned,  1,    "",    "Device address" },                                                                             0,    10,     1 },
    { { 3003,  1, Format::Signed,    1,    "V",   "Output voltage adjust" },                                                                    -20,    20,     0 },
    { { 3004,  1, Format::Unsigned,  0.1,  "Hz",  "Frequency track limit" },                                                                      5,    50,    10 },
    { { 3005,  1, Format::Unsigned,  1,    "",    "Batteries in a row" },                                                                        16,    24,    20 },
    { { 3006,  1, Format::Unsigned,  1,    "Ah",  "Battery capacity" },                                                                           1, 30000,    65 },
    { { 3007,  1, Format::Unsigned,  0.01, "V",   "Cell float voltage" },                                                                       210,   415,   225 },
    { { 3008,  1, Format::Unsigned,  0.01, "V",   "Cell boost voltage" },                                                                       220,   415,   235 },
    { { 3009,  1, Format::Unsigned,  0.01, "V",   "Cell end of discharge at 0.6 C" },                                                           160,   280,   167 },
    { { 3010,  1, Format::Unsigned,  0.01, "V",   "Cell end of discharge at 0.15 C" },                                                          165,   285,   175 },
    { { 3011,  1, Format::Unsigned,  0.01, "A",   "Charge current limit" },                                                                      50,  1200,   400 },
    { { 3012,  1, Format::Unsigned,  1,    "h",   "Boost time limit" },                                                                           1,    48,    12 },
    { { 3013,  1, Format::Unsigned,  1,    "h",   "Boost cycle" },                                                                                1,  3000,   720 },
    { { 3014,  1, Format::Unsigned,  1,    "h",   "Battery auto maintenance cycle" },                                                           720, 30000,  1440 },
    { { 3015,  1, Format::Unsigned,  1,    "VA",  "Rated power" },                                                                             6000, 20000, 20000 },
    { { 3017,  1, Format::Unsigned,  1,    "V",   "Rated input voltage" },                                                                      100,   240,   230 },
    { { 3018,  1, Format::Unsigned,  1,    "Hz",  "Rated input frequency" },                                                                     50,    60,    50 },
    { { 3019,  1, Format::Unsigned,  1,    "V",   "Rated output voltage" },                                                                     100,   240,   230 },
    { { 3020,  1, Format::Unsigned,  1,    "Hz",  "Rated output frequency" },                                                                    50,    60,    50 },
    { { 3021,  1, Format::Unsigned,  1,    "",    "Derate enable: 0 off, 1 on" },                                                                 0,     1,     0 },
    { { 3022,  1, Format::Unsigned,  1,    "",    "Input: 0 one phase, 1 three phases" },                                                         0,     1,     1 },
    { { 3023,  1, Format::Unsigned,  1,    "",    "Battery auto equalized charge: 0 off, 1 on" },                                                 0,     1,     1 },
    { { 3024,  1, Format::Unsigned,  1,    "",    "Battery auto maintenance: 0 off, 1 on" },                                                      0,     1,     0 },
    { { 3025,  1, Format::Unsigned,  1,    "",    "Rated frequency self-adaption: 0 off, 1 on" },                                                 0,     1,     1 },
    { { 3026,  1, Format::Unsigned,  1,    "",    "Bus restart after over voltage: 0 off, 1 on" },                                                0,     1,     1 },
    { { 3027,  1, Format::Unsigned,  1,    "",    "Fan fault allows buzzer: 0 off, 1 on" },                                                       0,     1,     1 },
    { { 3028,  1, Format::Unsigned,  1,    "",    "Lacking phase work: 0 off, 1 on" },                                                            0,     1,     0 },
    { { 3029,  1, Format::Unsigned,  1,    "",    "Frequency conversion mode: 0 off, 1 on" },                                                     0,     1,     0 },
    { { 3030,  1, Format::Unsigned,  1,    "",    "Output power factor: 0 is 1, 1 is 0.9" },                                                      0,     1,     1 },
    { { 3031,  1, Format::Unsigned,  1,    "",    "Display capacity: 0 off, 1 on" },                                                              0,     1,     1 },
    { { 3032,  1, Format::Unsigned,  1,    "",    "Neutral reverse alarm: 0 on, 1 off" },                                                         0,     1,     0 },
    { { 3033,  1, Format::Unsigned,  1,    "",    "Self-start: 0 on, 1 off" },                                                                    0,     1,     0 },
    { { 3034,  1, Format::Unsigned,  1,    "",    "Bypass upper limit: 0 +15 %, 1 +10 %" },                                                       0,     1,     0 },
    { { 3035,  1, Format::Unsigned,  1,    "",    "Bypass lower limit: 0 -20 %, 1 -10 %, 2 -15 %, 3 -30 %, 4 -40 %" },                            0,     4,     0 },
    { { 3036,  1, Format::Unsigned,  1,    "",    "Bypass frequency range: 0 +-5 Hz, 1 +-1 Hz, 2 +-3 Hz, 3 unlimited" },                          0,     3,     0 },
    { { 3037,  1, Format::Unsigned,  1,    "",    "Self ageing current: 0 30 %, 1 40 %, 2 50 %, 3 60 %, 4 70 %, 5 80 %, 6 90 %, 7 100 %" },       0,     7,     0 },
    { { 3038,  1, Format::Unsigned,  0.01, "",    "Battery low-voltage coefficient" },                                                          105,   125,   110 },
    { { 3039,  1, Format::Unsigned,  1,    "",    "Enable switch to inverter: 0 off, 1 on" },                                                     0,     1,     1 },
    { { 3040,  1, Format::Unsigned,  1,    "",    "Forbid bypass: 0 on, 1 off" },                                                                 0,     1,     1 },
    { { 3041,  1, Format::Unsigned,  1,    "",    "EPO function: 0 off, 1 on" },                                                                  0,     1,     1 },
    { { 3042,  1, Format::Unsigned,  1,    "",    "Allow reverse input: 0 off, 1 on" },                                                           0,     1,     0 },
    { { 3043,  1, Format::Unsigned,  1,    "",    "Output with transformer: 0 no, 1 yes" },                                                       0,     1,     0 },
    { { 3044,  1, Format::Unsigned,  1,    "",    "Input with generator: 0 no, 1 yes" },                                                          0,     1,     0 },
    { { 3045,  1, Format::Unsigned,  1,    "",    "Battery type: 0 VRLA, 1 lithium" },                                                            0,     1,     0 },
    { { 3046,  1, Format::Unsigned,  1,    "min", "Backlight time" },                                                                             1,    30,     5 },
    { { 3047,  1, Format::Unsigned,  1,    "day", "Battery maintenance cycle" },                                                                  0,  3000,   180 },
    { { 3049,  3, Format::Signed,    0.1,  "V",   "Inverter voltage rectification" },                                                          -500,   500,     0 },
    { { 3052,  3, Format::Signed,    0.1,  "V",   "Bypass voltage rectification" },                                                            -500,   500,     0 },
    { { 3055,  3, Format::Signed,    0.01, "V",   "Inverter DC rectification" },                                                               -500,   500,     0 },
    { { 3058,  3, Format::Signed,    0.1,  "V",   "Input voltage rectification" },                                                             -500,   500,     0 },
    { { 3061,  1, Format::Signed,    0.1,  "V",   "Battery voltage rectification" },                                                           -500,   500,     0 },
    { { 3063,  2, Format::Signed,    0.1,  "V",   "Input transformer rectification" },                                                         -500,   500,     0 },
    { { 3065,  2, Format::Signed,    0.1,  "V",   "Output transformer rectification" },                                                        -500,   500,     0 },
    { { 3067,  1, Format::Unsigned,  1,    "",    "Card protocol: 0 ASCII, 1 RTU, 2 Megatec" },                                                   0,     2,     1 },
    { { 3068,  1, Format::Unsigned,  0.01, "",    "Transformer turns ratio" },                                                                   40,   240,   100 },
    { { 3070,  1, Format::Unsigned,  1,    "day", "Maintenance period" },                                                                         0, 30000,   365 },
    { { 3071, 10, Format::Character, 1,    "",    "Device type" },                                                                                0, 65535,     0 },
    { { 3081, 14, Format::Character, 1,    "",    "Company name" },                                                                               0, 65535,     0 },
    { { 3095,  1, Format::Unsigned,  1,    "V",   "Input voltage high alarm" },                                                                 220,   300,   276 },
    { { 3096,  1, Format::Unsigned,  1,    "V",   "Input voltage low alarm" },                                                                  100,   220,   184 },
    { { 3097,  1, Format::Unsigned,  0.1,  "Hz",  "Input frequency high alarm" },                                                               500,   700,   550 },
    { { 3098,  1, Format::Unsigned,  0.1,  "Hz",  "Input frequency low alarm" },                                                                300,   600,   450 },
    { { 3099,  1, Format::Unsigned,  1,    "V",   "Output voltage high alarm" },                                                                220,   300,   253 },
    { { 3100,  1, Format::Unsigned,  1,    "V",   "Output voltage low alarm" },                                                                 100,   220,   207 },
    { { 3101,  1, Format::Unsigned,  1,    "V",   "Input overvoltage protection" },                                                             220,   300,   290 },
    { { 3102,  1, Format::Unsigned,  1,    "V",   "Input undervoltage protection" },                                                            100,   220,   170 },
    { { 3103,  1, Format::Unsigned,  1,    "V",   "Output overvoltage protection" },                                                            220,   300,   264 },
    { { 3104,  1, Format::Unsigned,  1,    "V",   "Output undervoltage protection" },                                                           100,   220,   196 },
};
// clang-format on

/** The bounds of a cell voltage inside its row's: a VRLA battery ends and a lithium one begins there. */
struct CellBounds
{
    int id;
    int vrlaMax;
    int lithiumMin;
};

constexpr CellBounds cellBounds[] = {
    { 3007, 235, 330 },
    { 3008, 245, 330 },
    { 3009, 185, 260 },
    { 3010, 190, 265 },
};

/** The row that `id` belongs to; null when no setting has it. */
constexpr const SettingRow *settingRow(int id)
{
    for (const SettingRow &row : settingRows) {
        if (id >= row.registers.id && id < row.registers.id + row.registers.count)
            return &row;
    }
    return nullptr;
}

} // namespace registermap
