#pragma once

#include "family.h"

/** What the rows of a family's parameters, diagram and data log must hold to: no number stands where
 *  nobody looks at it. */
namespace FamilyChecks {

/** Texts alone have a length, choices alone have options. */
constexpr bool isShapeSound(const ParameterRow &row)
{
    return (row.length > 0) == (row.type == TextValue)
        && row.options.isEmpty() == (row.type != OptionValue) && row.min <= row.max;
}

/** What is only shown has neither scale nor range. */
constexpr bool areMeasurementsSound(Rows<ParameterRow> rows)
{
    for (const ParameterRow &row : rows) {
        if (!isShapeSound(row) || row.scale != 0 || row.min != 0 || row.max != 0)
            return false;
    }
    return true;
}

/** Numbers have a scale, by which they are sent, and they alone have a range. */
constexpr bool areSettingsSound(Rows<ParameterRow> rows)
{
    for (const ParameterRow &row : rows) {
        const bool isNumber = row.type != TextValue && row.type != OptionValue;
        if (!isShapeSound(row) || row.scale <= 0 || (!isNumber && (row.min != 0 || row.max != 0)))
            return false;
    }
    return true;
}

constexpr bool arePagesSound(const ParameterPages &pages)
{
    return areMeasurementsSound(pages.device) && areMeasurementsSound(pages.battery)
        && areMeasurementsSound(pages.recInv) && areMeasurementsSound(pages.input)
        && areMeasurementsSound(pages.output) && areMeasurementsSound(pages.bypass)
        && areSettingsSound(pages.basicConfig) && areSettingsSound(pages.batteryConfig)
        && areSettingsSound(pages.adjustConfig) && areSettingsSound(pages.specialConfig)
        && areSettingsSound(pages.devInfoConfig);
}

/** Texts alone have a length, states alone have words, and measured values alone have phases. */
constexpr bool areLinesSound(Rows<DiagramLineRow> rows)
{
    for (const DiagramLineRow &row : rows) {
        if ((row.length > 0) != (row.kind == LineKind::Text)
            || row.states.isEmpty() != (row.kind != LineKind::State)
            || (row.phaseId != 0 && row.kind != LineKind::Measured))
            return false;
    }
    return true;
}

/** Only what the driver is called for has a code. */
constexpr bool areDriverCodesSound(Rows<CommandRow> rows)
{
    for (const CommandRow &row : rows) {
        const bool isCalled = row.form == CommandForm::Coded || row.form == CommandForm::Download;
        if (row.driverCode != 0 && !isCalled)
            return false;
    }
    return true;
}

} // namespace FamilyChecks
