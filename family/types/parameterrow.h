#pragma once

#include "rows.h"

#include <QtGlobal>

/** How a value is shown; the codes are contract, and those that are missing here show nothing. */
enum DisplayType : int {
    IntegerValue = 0, ///< "%d" and the unit
    DateValue = 1,    ///< "%d/%d/%d" of three identifiers and the unit
    OneDecimal = 4,   ///< "%.1f" and the unit
    ThreePhases = 5,  ///< "%.1f/%.1f/%.1f" of three identifiers and the unit
    TwoDecimals = 6,  ///< "%.2f" and the unit
    TextValue = 9,    ///< one character code for each of `length` identifiers
    OptionValue = 11, ///< the text of the option with this value, and the unit
};

/** One option of a parameter. */
struct OptionRow
{
    const char *text;
    float value; ///< cut to an integer where it is looked up
};

/** One value that is shown, or one setting; its texts are translated in the family's context. */
struct ParameterRow
{
    const char *label;
    int dataId;
    DisplayType type;
    int length; ///< number of identifiers of a text, 0 for all other types
    const char *unit;
    float scale; ///< raw bound * scale = bound in `unit`
    int min;     ///< raw; min = max = 0: no range
    int max;
    Rows<OptionRow> options;
};

/** Types of battery that settings tell apart, counted from 0. */
constexpr int batteryTypeCount = 2;

/** A setting's raw bounds for one type of battery. */
struct RawRange
{
    int min;
    int max;
};

/** A setting whose range follows the battery type, with the range for each type. */
struct CellRangeRow
{
    int dataId;
    RawRange byBatteryType[batteryTypeCount];
};
