#include "family.h"

#include "controls.h"
#include "familychecks.h"
#include "parameters.h"

namespace {

using namespace kx100;

// clang-format off
constexpr EventRow events[] = {
    /* 0 */ { QT_TRANSLATE_NOOP("tavoFont", "Mains failed"),   QT_TRANSLATE_NOOP("tavoFont", "Mains are back"),  EventUse::Plain,    EventSeverity::Warning     },
    /* 1 */ { QT_TRANSLATE_NOOP("tavoFont", "Pack is low"),    QT_TRANSLATE_NOOP("tavoFont", "Pack is charged"), EventUse::Plain,    EventSeverity::Critical    },
    /* 2 */ { QT_TRANSLATE_NOOP("tavoFont", "Too much load"),  QT_TRANSLATE_NOOP("tavoFont", "Load is fine"),    EventUse::Plain,    EventSeverity::Critical    },
    /* 3 */ { QT_TRANSLATE_NOOP("tavoFont", "Spare"),          QT_TRANSLATE_NOOP("tavoFont", "Spare ended"),     EventUse::Reserved, EventSeverity::Information },
    /* 4 */ { QT_TRANSLATE_NOOP("tavoFont", "Fan stands still"), QT_TRANSLATE_NOOP("tavoFont", "Fan turns"),     EventUse::Plain,    EventSeverity::Warning     },
};

constexpr SpecialFlagRow specialFlags[] = {
    { 1, BatteryLowEvent },
    { 0, AbnormalInputEvent },
};

constexpr const char *dataLogTitles[] = {
    QT_TRANSLATE_NOOP("tavoFont", "Mains(V)"),
    QT_TRANSLATE_NOOP("tavoFont", "Outlet load(%)"),
    QT_TRANSLATE_NOOP("tavoFont", "Mode"),
};

constexpr const char *loggedModes[] = {
    QT_TRANSLATE_NOOP("tavoFont", "On line"),
    QT_TRANSLATE_NOOP("tavoFont", "On battery"),
};

constexpr DataLogColumn dataLogColumns[] = {
    { 2, LogForm::State,  Id::Mode,         0, loggedModes },
    { 0, LogForm::Number, Id::InputVoltage, 0, {}          },
    { 1, LogForm::Number, Id::Load,         0, {}          },
};

constexpr HistoryTextRow historyStatuses[] = {
    { 0, QT_TRANSLATE_NOOP("tavoClient", "ended") },
    { 1, QT_TRANSLATE_NOOP("tavoClient", "began") },
};

constexpr HistoryTextRow historyModes[] = {
    { 0, QT_TRANSLATE_NOOP("tavoClient", "on line") },
    { 1, QT_TRANSLATE_NOOP("tavoClient", "on battery") },
};

constexpr HistoryTextRow historyContents[] = {
    { 7, QT_TRANSLATE_NOOP("tavoClient", "no mains") },
};

// A unit without bypass, rectifier and inverter of its own to show.
constexpr DiagramPanelRow diagramPanels[] = {
    { DiagramPanel::Input, 0, { -300, 48 }, 200, 16, QT_TRANSLATE_NOOP("Energyline", "MAINS")  },
    { DiagramPanel::Load,  1, {  100, 48 }, 200, 16, QT_TRANSLATE_NOOP("Energyline", "OUTLET") },
};

constexpr DiagramLineRow diagramLines[] = {
    { DiagramPanel::Input, QT_TRANSLATE_NOOP("Energyline", "Mains:"),  LineKind::Measured, Id::InputVoltage,  0, "%1 V", {} },
    { DiagramPanel::Load,  QT_TRANSLATE_NOOP("Energyline", "Outlet:"), LineKind::Measured, Id::OutputVoltage, 0, "%1 V", {} },
};

constexpr DiagramBlockRow diagramBlocks[] = {
    { DiagramForm::Square, { -300, -37.5 }, 75, 75, QT_TRANSLATE_NOOP("Energyline", "MAINS"),  "://image/INPUT.png", { 0, -1 }, { 0, -1, -1 } },
    { DiagramForm::Square, {  225, -37.5 }, 75, 75, QT_TRANSLATE_NOOP("Energyline", "OUTLET"), "://image/LOAD.png",  { 1, -1 }, { 0,  1, -1 } },
};

constexpr FlowRow diagramFlows[] = {
    { { Id::LinePath, 0 },    2, { { -225,  0 }, { 225, 0 } } },
    { { Id::BatteryPath, 0 }, 3, { {    0, 80 }, {   0, 0 }, { 225, 0 } } },
};

constexpr TrendRow trendRows[] = {
    { QT_TRANSLATE_NOOP("TrendPanel", "Outlet load"), Id::Load, 0, "%", 0, 100, 0, 0 },
};
// clang-format on

constexpr StateRow modeStates[] = {
    { 0, DeviceState::Normal },
    { 1, DeviceState::OnBattery },
};

constexpr Family family {
    "libkx100_g1_1-3k",
    "/upgrade/KX100P1_3KG1Software.exe",
    "kx100",
    301,
    { Id::ModelText, 8, Id::Load, Id::Capacity, Id::BatteryType },
    events,
    specialFlags,
    { deviceRows,
      batteryRows,
      {},
      inputRows,
      outputRows,
      {},
      basicConfigRows,
      batteryConfigRows,
      {},
      {},
      {} },
    cellRanges,
    commands,
    { historyStatuses, historyModes, historyContents },
    dataLogTitles,
    dataLogColumns,
    { diagramPanels, diagramLines, diagramBlocks, diagramFlows, -1 },
    { Id::Mode, modeStates, 0, {} },
    trendRows,
};

static_assert(FamilyChecks::isSound(family));

} // namespace

const Family &deviceFamily()
{
    return family;
}
