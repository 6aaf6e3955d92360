#pragma once

#include "datareport.h"
#include "family.h"
#include "tavoviewdata.h"

/** The text that shows a parameter's value in `report`, whatever the locale; missing identifiers
 *  read as 0. */
QString displayText(const ParameterInformation &record, const DataReport &report);

/** The value of the option that a report gives: a whole number, but for the option "0.5", whose
 *  integer cannot keep it. */
int optionAt(const ParameterInformation &record, const DataReport &report);

/** A raw bound in the parameter's unit, in general format. */
QString boundText(const ParameterInformation &record, int rawBound);

/** The range column of a settings table: "2.1-2.35", or "-" without a range. */
QString rangeText(const ParameterInformation &record);

/** Rewrites the ranges of the cell-voltage settings, on whatever page they are, for the battery type
 *  that the report gives; an unknown type leaves them. */
void applyBatteryType(const Family &family, const tavoViewData &data, const DataReport &report);
