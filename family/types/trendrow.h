#pragma once

#include <QtGlobal>

/** One measured value whose course is kept and drawn; its title is translated in the context
 *  "TrendPanel". */
struct TrendRow
{
    const char *title;
    int dataId;
    int phaseId; ///< this identifier equal to 3: the two behind dataId are phases; 0: single value
    const char *unit;
    double least;    ///< the axis reaches from here ...
    double most;     ///< ... to here at least; least = most: as far as the values do
    int lowLimitId;  ///< the setting below which the device alarms; 0: none
    int highLimitId; ///< the one above which it does
};

/** At most so many courses are kept: their memory is bounded. */
constexpr int maxTrends = 6;
