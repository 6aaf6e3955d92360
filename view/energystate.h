#pragma once

#include "datareport.h"

#include <QString>

#include <array>
#include <vector>

/** The panels of the energy-flow diagram. */
enum class EnergyPanel { Input, Bypass, RecInv, Load, Battery, Device };

constexpr int EnergyPanelCount = 6;
constexpr int EnergyFlowCount = 6;

/** Which of the six flows carry energy. */
using EnergyFlows = std::array<bool, EnergyFlowCount>;

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
    EnergyFlows flows {};
    std::array<std::vector<EnergyLine>, EnergyPanelCount> panels;
    float capacity = 0; ///< remaining battery capacity, 0 to 1; 0 when unknown

    bool isCharging() const { return flows[1]; }

    bool operator==(const EnergyState &other) const
    {
        return flows == other.flows && capacity == other.capacity && panels == other.panels;
    }
};

/** The flows of a report; a missing identifier counts as 0. */
EnergyFlows energyFlows(const DataReport &report);

/** Everything the diagram shows of a report, texts translated. */
EnergyState energyState(const DataReport &report);
