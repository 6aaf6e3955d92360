#pragma once

#include "datareport.h"
#include "family.h"

#include <QString>

#include <array>
#include <optional>
#include <vector>

/** Which of the flows carry energy, by their places. */
using EnergyFlows = std::vector<bool>;

/** Tells whether a flow carries energy; -1 stands for none. */
inline bool isFlowing(const EnergyFlows &flows, int flow)
{
    return flow >= 0 && flows[static_cast<std::size_t>(flow)];
}

/** One line of a panel. */
struct EnergyLine
{
    QString label;
    QString value; ///< "-" as long as the report does not hold it

    bool operator==(const EnergyLine &other) const
    {
        return value == other.value && label == other.label;
    }
};

/** What the diagram shows of a report. */
struct EnergyState
{
    EnergyFlows flows;
    std::array<std::vector<EnergyLine>, diagramPanelCount> panels;
    std::optional<float> capacity; ///< remaining battery capacity, 0 to 1; nothing when unknown

    bool operator==(const EnergyState &other) const
    {
        return flows == other.flows && capacity == other.capacity && panels == other.panels;
    }
};

/** The flows of a report; a missing identifier counts as 0. */
EnergyFlows energyFlows(Rows<FlowRow> rows, const DataReport &report);

/** Everything the diagram of a family shows of a report, texts translated. */
EnergyState energyState(const Family &family, const DataReport &report);
