#include "diagram/energystate.h"

#include "lookup.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr char context[] = "Energyline";

QString measuredText(const DiagramLineRow &row, const DataReport &report)
{
    return translated(context, row.pattern).arg(measuredAt(report, row.dataId, row.phaseId, 1));
}

QString stateText(const DiagramLineRow &row, int state)
{
    const bool isKnown = state >= 0 && state < row.states.size();
    return isKnown ? translated(context, row.states[state]) : QStringLiteral("-");
}

QString valueText(const DiagramLineRow &row, const DataReport &report)
{
    if (!report.contains(row.dataId))
        return QStringLiteral("-");
    switch (row.kind) {
    case LineKind::Measured:
        return measuredText(row, report);
    case LineKind::Whole:
        return translated(context, row.pattern).arg(integerAt(report, row.dataId));
    case LineKind::State:
        return stateText(row, integerAt(report, row.dataId));
    case LineKind::Text:
        return textAt(report, row.dataId, row.length);
    }
    return {};
}

} // namespace

EnergyFlows energyFlows(Rows<FlowRow> rows, const DataReport &report)
{
    EnergyFlows flows;
    for (const FlowRow &row : rows)
        flows.push_back(
            std::all_of(std::begin(row.dataIds), std::end(row.dataIds),
                        [&report](int id) { return id == 0 || integerAt(report, id) == 1; }));
    return flows;
}

EnergyState energyState(const Family &family, const DataReport &report)
{
    EnergyState state;
    state.flows = energyFlows(family.diagram.flows, report);
    const float percent = numberAt(report, family.ids.capacity);
    if (report.contains(family.ids.capacity) && !std::isnan(percent))
        state.capacity = std::clamp(percent / 100.0f, 0.0f, 1.0f);
    for (const DiagramLineRow &row : family.diagram.lines)
        state.panels[static_cast<std::size_t>(row.panel)].push_back(
            { translated(context, row.label), valueText(row, report) });
    return state;
}
