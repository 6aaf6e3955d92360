#include "energystate.h"

#include "energytables.h"

#include <algorithm>

namespace {

constexpr int CapacityId = 4117;
constexpr int ThreePhaseUnit = 3; // value of a phase selector
constexpr int DeviceTextLength = 16;

QString decimal(const DataReport &report, int id)
{
    return QString::number(static_cast<double>(numberAt(report, id)), 'f', 1);
}

QString measuredText(const EnergyLineRow &row, const DataReport &report)
{
    QString number = decimal(report, row.dataId);
    if (row.phaseId != 0 && integerAt(report, row.phaseId) == ThreePhaseUnit)
        number =
            QStringList { number, decimal(report, row.dataId + 1), decimal(report, row.dataId + 2) }
                .join(QLatin1Char('/'));
    return EnergyTables::tr(row.pattern).arg(number);
}

QString stateText(const EnergyLineRow &row, int state)
{
    const bool isKnown = state >= 0 && state < row.states.count;
    return isKnown ? EnergyTables::tr(row.states.texts[state]) : QStringLiteral("-");
}

QString valueText(const EnergyLineRow &row, const DataReport &report)
{
    if (!report.contains(row.dataId))
        return QStringLiteral("-");
    switch (row.kind) {
    case EnergyLineKind::Measured:
        return measuredText(row, report);
    case EnergyLineKind::Whole:
        return EnergyTables::tr(row.pattern).arg(integerAt(report, row.dataId));
    case EnergyLineKind::State:
        return stateText(row, integerAt(report, row.dataId));
    case EnergyLineKind::Text:
        return textAt(report, row.dataId, DeviceTextLength);
    }
    return {};
}

} // namespace

EnergyFlows energyFlows(const DataReport &report)
{
    EnergyFlows flows {};
    for (std::size_t i = 0; i < flows.size(); ++i) {
        const EnergyFlowRow &row = EnergyTables::flows[i];
        flows[i] = std::all_of(std::begin(row.dataIds), std::end(row.dataIds),
                               [&report](int id) { return id == 0 || integerAt(report, id) == 1; });
    }
    return flows;
}

EnergyState energyState(const DataReport &report)
{
    EnergyState state;
    state.flows = energyFlows(report);
    const float percent = numberAt(report, CapacityId);
    state.capacity = percent > 0 ? std::min(percent / 100.0f, 1.0f) : 0.0f; // NaN reads as 0
    for (const EnergyLineRow &row : EnergyTables::lines)
        state.panels[static_cast<std::size_t>(row.panel)].push_back(
            { EnergyTables::tr(row.label), valueText(row, report) });
    return state;
}
