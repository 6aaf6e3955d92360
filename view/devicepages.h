#pragma once

#include "deviceoptions.h"

/**
 * The parameters of the 6-20 kVA models, a table for each panel and settings table.
 *
 * Columns: label, data identifier, display type, number of text identifiers, unit, scale, lowest
 * and highest raw value (both 0: no range), options. Misspellings are part of the vocabulary.
 */
class DevicePages : protected DeviceOptions
{
    Q_DECLARE_TR_FUNCTIONS(tavo_6_20k_View)

public:
    // clang-format off
    static constexpr ParameterRow deviceRows[] = {
        { QT_TR_NOOP("Running time:"),          4240, IntegerValue,  0, QT_TR_NOOP("Day"), 0, 0, 0, {}          },
        { QT_TR_NOOP("Working mode:"),          4241, OptionValue,   0, "",                1, 0, 0, workingMode },
        { QT_TR_NOOP("Modbus decode version:"), 4097, IntegerValue,  0, "",                0, 0, 0, {}          },
        { QT_TR_NOOP("Device Identifier:"),     4096, IntegerValue,  0, "",                0, 0, 0, {}          },
        { QT_TR_NOOP("Device name:"),           4080, TextValue,    16, "",                0, 0, 0, {}          },
        { QT_TR_NOOP("Device type:"),           4016, TextValue,    16, "",                0, 0, 0, {}          },
        { QT_TR_NOOP("Device manufacturer:"),   4000, TextValue,    16, "",                0, 0, 0, {}          },
        { QT_TR_NOOP("Firmware version:"),      4098, IntegerValue,  0, "",                0, 0, 0, {}          },
        { QT_TR_NOOP("Software version:"),      4032, TextValue,    16, "",                0, 0, 0, {}          },
        { QT_TR_NOOP("Serial number:"),         4064, TextValue,    16, "",                0, 0, 0, {}          },
    };

    static constexpr ParameterRow batteryRows[] = {
        { QT_TR_NOOP("Battery voltage:"),     4105, OneDecimal,   0, QT_TR_NOOP("V"),   0, 0, 0, {}            },
        { QT_TR_NOOP("Battery current:"),     4106, OneDecimal,   0, QT_TR_NOOP("A"),   0, 0, 0, {}            },
        { QT_TR_NOOP("Battery temperature:"), 4107, OneDecimal,   0, QT_TR_NOOP("℃"),   0, 0, 0, {}            },
        { QT_TR_NOOP("Remaining time:"),      4103, IntegerValue, 0, QT_TR_NOOP("Min"), 0, 0, 0, {}            },
        { QT_TR_NOOP("Remaining capacity:"),  4117, OneDecimal,   0, QT_TR_NOOP("%"),   0, 0, 0, {}            },
        { QT_TR_NOOP("Battery status:"),      4101, OptionValue,  0, "",                0, 0, 0, batteryStatus },
    };

    static constexpr ParameterRow recInvRows[] = {
        { QT_TR_NOOP("Inverter current:"),      4237, OneDecimal,  0, QT_TR_NOOP("A"), 0, 0, 0, {}              },
        { QT_TR_NOOP("Inverter temperature:"),  4239, OneDecimal,  0, QT_TR_NOOP("℃"), 0, 0, 0, {}              },
        { QT_TR_NOOP("Inverter status:"),       4243, OptionValue, 0, "",              0, 0, 0, inverterStatus  },
        { QT_TR_NOOP("Rectifier temperature:"), 4238, OneDecimal,  0, QT_TR_NOOP("℃"), 0, 0, 0, {}              },
        { QT_TR_NOOP("Rectifier status:"),      4242, OptionValue, 0, "",              0, 0, 0, rectifierStatus },
    };

    static constexpr ParameterRow inputRows[] = {
        { QT_TR_NOOP("Input voltage:"),   4133, ThreePhases, 0, QT_TR_NOOP("V"),  0, 0, 0, {} },
        { QT_TR_NOOP("Input current:"),   4136, ThreePhases, 0, QT_TR_NOOP("A"),  0, 0, 0, {} },
        { QT_TR_NOOP("Input frequency:"), 4139, OneDecimal,  0, QT_TR_NOOP("Hz"), 0, 0, 0, {} },
        { QT_TR_NOOP("Input PF:"),        4145, OneDecimal,  0, "",               0, 0, 0, {} },
    };

    static constexpr ParameterRow outputRows[] = {
        { QT_TR_NOOP("Output voltage:"),         4164, OneDecimal,  0, QT_TR_NOOP("V"),   0, 0, 0, {}               },
        { QT_TR_NOOP("Output current:"),         4167, OneDecimal,  0, QT_TR_NOOP("A"),   0, 0, 0, {}               },
        { QT_TR_NOOP("Output frequency:"),       4162, OneDecimal,  0, QT_TR_NOOP("Hz"),  0, 0, 0, {}               },
        { QT_TR_NOOP("Output PF:"),              4177, OneDecimal,  0, "",                0, 0, 0, {}               },
        { QT_TR_NOOP("Output apparent power:"),  4180, OneDecimal,  0, QT_TR_NOOP("kVA"), 0, 0, 0, {}               },
        { QT_TR_NOOP("Output active power:"),    4170, OneDecimal,  0, QT_TR_NOOP("kW"),  0, 0, 0, {}               },
        { QT_TR_NOOP("Output reactive power:"),  4183, OneDecimal,  0, QT_TR_NOOP("kVA"), 0, 0, 0, {}               },
        { QT_TR_NOOP("Output load percentage:"), 4173, OneDecimal,  0, QT_TR_NOOP("%"),   0, 0, 0, {}               },
        { QT_TR_NOOP("Output load status:"),     4161, OptionValue, 0, "",                0, 0, 0, outputLoadStatus },
    };

    static constexpr ParameterRow bypassRows[] = {
        { QT_TR_NOOP("Bypass voltage:"),   4193, OneDecimal,  0, QT_TR_NOOP("V"),  0, 0, 0, {}          },
        { QT_TR_NOOP("Bypass current:"),   4196, OneDecimal,  0, QT_TR_NOOP("A"),  0, 0, 0, {}          },
        { QT_TR_NOOP("Bypass frequency:"), 4191, OneDecimal,  0, QT_TR_NOOP("Hz"), 0, 0, 0, {}          },
        { QT_TR_NOOP("Bypass PF:"),        4202, OneDecimal,  0, "",               0, 0, 0, {}          },
        { QT_TR_NOOP("Bypass state:"),     4190, OptionValue, 0, "",               0, 0, 0, bypassState },
    };

    static constexpr ParameterRow basicConfigRows[] = {
        { QT_TR_NOOP("System work mode:"),                 3000, OptionValue,  0, "",                     1,   0,    0, systemWorkMode },
        { QT_TR_NOOP("Cell float voltage:"),               3007, TwoDecimals,  0, QT_TR_NOOP("V"),    0.01f, 210,  235, {}             },
        { QT_TR_NOOP("Cell boost voltage:"),               3008, TwoDecimals,  0, QT_TR_NOOP("V"),    0.01f, 220,  245, {}             },
        { QT_TR_NOOP("Cell Eod voltage for 0.6c:"),        3009, TwoDecimals,  0, QT_TR_NOOP("V"),    0.01f, 160,  185, {}             },
        { QT_TR_NOOP("Cell Eod voltage for 0.15c:"),       3010, TwoDecimals,  0, QT_TR_NOOP("V"),    0.01f, 165,  190, {}             },
        { QT_TR_NOOP("Boost cycle:"),                      3013, IntegerValue, 0, QT_TR_NOOP("Hour"),     1,   1, 3000, {}             },
        { QT_TR_NOOP("Rated power:"),                      3015, OptionValue,  0, QT_TR_NOOP("VA"),       1,   0,    0, ratedPower     },
        { QT_TR_NOOP("Rated input voltage:"),              3017, OptionValue,  0, QT_TR_NOOP("V"),        1,   0,    0, ratedVoltage   },
        { QT_TR_NOOP("Rated input frequency:"),            3018, OptionValue,  0, QT_TR_NOOP("Hz"),       1,   0,    0, ratedFrequency },
        { QT_TR_NOOP("Rated output voltage:"),             3019, OptionValue,  0, QT_TR_NOOP("V"),        1,   0,    0, ratedVoltage   },
        { QT_TR_NOOP("Rated output frequency:"),           3020, OptionValue,  0, QT_TR_NOOP("Hz"),       1,   0,    0, ratedFrequency },
        { QT_TR_NOOP("Derate rate enable:"),               3021, OptionValue,  0, "",                     1,   0,    0, disableFirst   },
        { QT_TR_NOOP("Rated frequency self-adaption:"),    3025, OptionValue,  0, "",                     1,   0,    0, disableFirst   },
        { QT_TR_NOOP("Bus restart after over voltage:"),   3026, OptionValue,  0, "",                     1,   0,    0, disableFirst   },
        { QT_TR_NOOP("Fan fault allow buzzer on:"),        3027, OptionValue,  0, "",                     1,   0,    0, disableFirst   },
        { QT_TR_NOOP("Lacking phase work:"),               3028, OptionValue,  0, "",                     1,   0,    0, disableFirst   },
        { QT_TR_NOOP("Frequency conversion mode:"),        3029, OptionValue,  0, "",                     1,   0,    0, disableFirst   },
        { QT_TR_NOOP("Derate output PF:"),                 3030, OptionValue,  0, "",                     1,   0,    0, derateOutputPf },
        { QT_TR_NOOP("Display capacity:"),                 3031, OptionValue,  0, "",                     1,   0,    0, disableFirst   },
        { QT_TR_NOOP("LN connection reverse alarm:"),      3032, OptionValue,  0, "",                     1,   0,    0, enableFirst    },
        { QT_TR_NOOP("Power-on self-start:"),              3033, OptionValue,  0, "",                     1,   0,    0, enableFirst    },
        { QT_TR_NOOP("Enable switch inverter:"),           3039, OptionValue,  0, "",                     1,   0,    0, disableFirst   },
        { QT_TR_NOOP("Forbid bypass:"),                    3040, OptionValue,  0, "",                     1,   0,    0, enableFirst    },
        { QT_TR_NOOP("EPO function enable:"),              3041, OptionValue,  0, "",                     1,   0,    0, disableFirst   },
        { QT_TR_NOOP("Allow reverse input:"),              3042, OptionValue,  0, "",                     1,   0,    0, disableFirst   },
        { QT_TR_NOOP("Output with transformer:"),          3043, OptionValue,  0, "",                     1,   0,    0, connection     },
        { QT_TR_NOOP("Input with generator:"),             3044, OptionValue,  0, "",                     1,   0,    0, connection     },
        { QT_TR_NOOP("LCD backlight lighten time:"),       3046, IntegerValue, 0, QT_TR_NOOP("Min"),      1,   1,   30, {}             },
        { QT_TR_NOOP("SNMP card communicaiton protocol:"), 3067, OptionValue,  0, "",                     1,   0,    0, snmpProtocol   },
        { QT_TR_NOOP("Transformer coil turns ratio:"),     3068, OneDecimal,   0, "",                 0.01f,  40,  240, {}             },
        { QT_TR_NOOP("Input voltage high alarm point:"),   3095, IntegerValue, 0, QT_TR_NOOP("V"),        1, 220,  300, {}             },
        { QT_TR_NOOP("Input voltage low alarm point:"),    3096, IntegerValue, 0, QT_TR_NOOP("V"),        1, 100,  220, {}             },
        { QT_TR_NOOP("Input frequency high alarm point:"), 3097, OneDecimal,   0, QT_TR_NOOP("Hz"),    0.1f, 500,  700, {}             },
        { QT_TR_NOOP("Input frequency low alarm point:"),  3098, OneDecimal,   0, QT_TR_NOOP("Hz"),    0.1f, 300,  600, {}             },
    };

    static constexpr ParameterRow batteryConfigRows[] = {
        { QT_TR_NOOP("Output voltage high alarm point:"),       3099, IntegerValue, 0, QT_TR_NOOP("V"),        1, 220,   300, {}           },
        { QT_TR_NOOP("Output voltage low alarm point:"),        3100, IntegerValue, 0, QT_TR_NOOP("V"),        1, 100,   220, {}           },
        { QT_TR_NOOP("Input overvoltage protection point:"),    3101, IntegerValue, 0, QT_TR_NOOP("V"),        1, 220,   300, {}           },
        { QT_TR_NOOP("Input undervoltage protection point:"),   3102, IntegerValue, 0, QT_TR_NOOP("V"),        1, 100,   220, {}           },
        { QT_TR_NOOP("Output overvoltage protection point:"),   3103, IntegerValue, 0, QT_TR_NOOP("V"),        1, 220,   300, {}           },
        { QT_TR_NOOP("Output undervoltage protection point:"),  3104, IntegerValue, 0, QT_TR_NOOP("V"),        1, 100,   220, {}           },
        { QT_TR_NOOP("Battery numbers:"),                       3005, IntegerValue, 0, "",                     1,  16,    24, {}           },
        { QT_TR_NOOP("Battery AH:"),                            3006, IntegerValue, 0, QT_TR_NOOP("AH"),       1,   1, 30000, {}           },
        { QT_TR_NOOP("Battery auto maintenance cycle:"),        3014, IntegerValue, 0, QT_TR_NOOP("Hour"),     1, 720, 30000, {}           },
        { QT_TR_NOOP("Battery auto equalized charge:"),         3023, OptionValue,  0, "",                     1,   0,     0, disableFirst },
        { QT_TR_NOOP("Battery auto maintenance:"),              3024, OptionValue,  0, "",                     1,   0,     0, disableFirst },
        { QT_TR_NOOP("Battery low-voltage alarm coefficient:"), 3038, TwoDecimals,  0, "",                 0.01f, 105,   125, {}           },
        { QT_TR_NOOP("Battery type:"),                          3045, OptionValue,  0, "",                     1,   0,     0, batteryType  },
        { QT_TR_NOOP("Battery maintenance cycle:"),             3047, IntegerValue, 0, QT_TR_NOOP("Day"),      1,   0,  3000, {}           },
    };

    static constexpr ParameterRow adjustConfigRows[] = {
        { QT_TR_NOOP("Output voltage adjust:"),                           3003, IntegerValue, 0, QT_TR_NOOP("V"),        1, 0,  0, {}                       },
        { QT_TR_NOOP("Frequency track limit:"),                           3004, OneDecimal,   0, QT_TR_NOOP("Hz"),    0.1f, 5, 50, {}                       },
        { QT_TR_NOOP("Charge current limit:"),                            3011, OptionValue,  0, QT_TR_NOOP("A"),    0.01f, 0,  0, chargeCurrentLimit       },
        { QT_TR_NOOP("Boost time limit:"),                                3012, IntegerValue, 0, QT_TR_NOOP("Hour"),     1, 1, 48, {}                       },
        { QT_TR_NOOP("Bypass voltage upper limit:"),                      3034, OptionValue,  0, QT_TR_NOOP("%"),        1, 0,  0, bypassVoltageUpperLimit  },
        { QT_TR_NOOP("Bypass voltage lower limit:"),                      3035, OptionValue,  0, QT_TR_NOOP("%"),        1, 0,  0, bypassVoltageLowerLimit  },
        { QT_TR_NOOP("Bypass frequency range:"),                          3036, OptionValue,  0, QT_TR_NOOP("Hz"),       1, 0,  0, bypassFrequencyRange     },
        { QT_TR_NOOP("Self ageing current percent:"),                     3037, OptionValue,  0, QT_TR_NOOP("%"),        1, 0,  0, selfAgeingCurrentPercent },
        { QT_TR_NOOP("Inverter voltage rectification:"),                  3049, OneDecimal,   0, QT_TR_NOOP("V"),     0.1f, 0,  0, {}                       },
        { QT_TR_NOOP("Bypass voltage rectification:"),                    3052, OneDecimal,   0, QT_TR_NOOP("V"),     0.1f, 0,  0, {}                       },
        { QT_TR_NOOP("Inverter DC voltage rectification:"),               3055, TwoDecimals,  0, QT_TR_NOOP("V"),    0.01f, 0,  0, {}                       },
        { QT_TR_NOOP("Input Phase A voltage rectification:"),             3058, OneDecimal,   0, QT_TR_NOOP("V"),     0.1f, 0,  0, {}                       },
        { QT_TR_NOOP("Input Phase B voltage rectification:"),             3059, OneDecimal,   0, QT_TR_NOOP("V"),     0.1f, 0,  0, {}                       },
        { QT_TR_NOOP("Input Phase C voltage rectification:"),             3060, OneDecimal,   0, QT_TR_NOOP("V"),     0.1f, 0,  0, {}                       },
        { QT_TR_NOOP("Battery voltage rectification:"),                   3061, OneDecimal,   0, QT_TR_NOOP("V"),     0.1f, 0,  0, {}                       },
        { QT_TR_NOOP("Input with transformer voltage rectification 1:"),  3063, OneDecimal,   0, QT_TR_NOOP("V"),     0.1f, 0,  0, {}                       },
        { QT_TR_NOOP("Input with transformer voltage rectification 2:"),  3064, OneDecimal,   0, QT_TR_NOOP("V"),     0.1f, 0,  0, {}                       },
        { QT_TR_NOOP("Output with transformer voltage rectification 1:"), 3065, OneDecimal,   0, QT_TR_NOOP("V"),     0.1f, 0,  0, {}                       },
        { QT_TR_NOOP("Output with transformer voltage rectification 2:"), 3066, OneDecimal,   0, QT_TR_NOOP("V"),     0.1f, 0,  0, {}                       },
    };

    static constexpr ParameterRow devInfoConfigRows[] = {
        { QT_TR_NOOP("Parallel device number:"), 3001, IntegerValue,  0, "",                1, 0, 10, {}               },
        { QT_TR_NOOP("Device address:"),         3002, IntegerValue,  0, "",                1, 0, 10, {}               },
        { QT_TR_NOOP("Device type select:"),     3022, OptionValue,   0, "",                1, 0,  0, deviceTypeSelect },
        { QT_TR_NOOP("UPS maintenance period:"), 3070, IntegerValue,  0, QT_TR_NOOP("day"), 1, 0,  0, {}               },
        { QT_TR_NOOP("Device type:"),            3071, TextValue,    10, "",                1, 0,  0, {}               },
        { QT_TR_NOOP("Company name:"),           3081, TextValue,    14, "",                1, 0,  0, {}               },
    };
    // clang-format on
};
