#include "family.h"

#include "familychecks.h"
#include "kx300/controls.h"
#include "kx300/datalog.h"
#include "kx300/diagram.h"
#include "kx300/events.h"
#include "kx300/history.h"
#include "kx300/measurements.h"
#include "kx300/settings.h"
#include "kx300/states.h"
#include "kx300/trends.h"

namespace {

using namespace kx300;

constexpr Family family {
    "libkx300_g4_6-20k",
    "/upgrade/KX300P6_20KG4Software.exe",
    "tavo_6_20k_View",
    299,
    { Id::TypeText, 16, Id::TotalLoad, Id::RemainingCapacity, Id::BatteryType, Id::RemainingTime },
    events,
    specialFlags,
    {
        deviceRows,
        batteryRows,
        recInvRows,
        inputRows,
        outputRows,
        bypassRows,
        basicConfigRows,
        batteryConfigRows,
        adjustConfigRows,
        {},
        devInfoConfigRows,
    },
    cellRanges,
    commands,
    { historyStatuses, historyModes, historyContents },
    dataLogTitles,
    dataLogColumns,
    { diagramPanels, diagramLines, diagramBlocks, diagramFlows, 1, largeDiagramPanels },
    { Id::WorkingMode, workingModeStates, Id::OutputMode, outputModeStates },
    trendRows,
};

static_assert(FamilyChecks::isSound(family));

} // namespace

const Family &deviceFamily()
{
    return family;
}
