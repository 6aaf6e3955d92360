#pragma once

#include "diagramrow.h"
#include "kx300/identifiers.h"

/** What the energy-flow diagram shows of the 6-20 kVA models. */
namespace kx300 {

// clang-format off
constexpr const char *bypassStates[] = {
    QT_TRANSLATE_NOOP("Energyline", "Abnormal"),
    QT_TRANSLATE_NOOP("Energyline", "Normal"),
};

constexpr const char *workingModes[] = {
    QT_TRANSLATE_NOOP("Energyline", "F&A clear"),
    QT_TRANSLATE_NOOP("Energyline", "Power on"),
    QT_TRANSLATE_NOOP("Energyline", "Standby"),
    QT_TRANSLATE_NOOP("Energyline", "Bypass"),
    QT_TRANSLATE_NOOP("Energyline", "Online"),
    QT_TRANSLATE_NOOP("Energyline", "Battery"),
    QT_TRANSLATE_NOOP("Energyline", "Battery test"),
    QT_TRANSLATE_NOOP("Energyline", "Fault"),
    QT_TRANSLATE_NOOP("Energyline", "Freq. conversion"),
    QT_TRANSLATE_NOOP("Energyline", "ECO"),
    QT_TRANSLATE_NOOP("Energyline", "Shutdown"),
    QT_TRANSLATE_NOOP("Energyline", "Test"),
};

constexpr const char *outputModes[] = {
    QT_TRANSLATE_NOOP("Energyline", "None"),
    QT_TRANSLATE_NOOP("Energyline", "Load on bypass"),
    QT_TRANSLATE_NOOP("Energyline", "Load on inverter"),
    QT_TRANSLATE_NOOP("Energyline", "Load on other"),
};

constexpr const char *batteryStates[] = {
    QT_TRANSLATE_NOOP("Energyline", "Disconnect"),
    QT_TRANSLATE_NOOP("Energyline", "Standby"),
    QT_TRANSLATE_NOOP("Energyline", "Equalized charge"),
    QT_TRANSLATE_NOOP("Energyline", "Float charge"),
    QT_TRANSLATE_NOOP("Energyline", "Discharge"),
};

constexpr const char *rectifierStates[] = {
    QT_TRANSLATE_NOOP("Energyline", "Off"),
    QT_TRANSLATE_NOOP("Energyline", "Soft start"),
    QT_TRANSLATE_NOOP("Energyline", "PFC mode"),
    QT_TRANSLATE_NOOP("Energyline", "Battery mode"),
};

constexpr const char *inverterStates[] = {
    QT_TRANSLATE_NOOP("Energyline", "Off"),
    QT_TRANSLATE_NOOP("Energyline", "Soft start"),
    QT_TRANSLATE_NOOP("Energyline", "Normal run"),
};

constexpr DiagramLineRow diagramLines[] = {
    { DiagramPanel::Input,   QT_TRANSLATE_NOOP("Energyline", "Voltage:"),            LineKind::Measured, Id::InputVoltage,         Id::InputPhases,  "%1 V",                                     {}              },
    { DiagramPanel::Input,   QT_TRANSLATE_NOOP("Energyline", "Current:"),            LineKind::Measured, Id::InputCurrent,         Id::InputPhases,  "%1 A",                                     {}              },
    { DiagramPanel::Input,   QT_TRANSLATE_NOOP("Energyline", "Frequency:"),          LineKind::Measured, Id::InputFrequency,       Id::InputPhases,  "%1 Hz",                                    {}              },
    { DiagramPanel::Bypass,  QT_TRANSLATE_NOOP("Energyline", "Voltage:"),            LineKind::Measured, Id::BypassVoltage,        Id::BypassPhases, "%1 V",                                     {}              },
    { DiagramPanel::Bypass,  QT_TRANSLATE_NOOP("Energyline", "Current:"),            LineKind::Measured, Id::BypassCurrent,        Id::BypassPhases, "%1 A",                                     {}              },
    { DiagramPanel::Bypass,  QT_TRANSLATE_NOOP("Energyline", "Frequency:"),          LineKind::Measured, Id::BypassFrequency,      0,                "%1 Hz",                                    {}              },
    { DiagramPanel::Bypass,  QT_TRANSLATE_NOOP("Energyline", "Status:"),             LineKind::State,    Id::BypassState,          0,                "",                                         bypassStates    },
    { DiagramPanel::RecInv,  QT_TRANSLATE_NOOP("Energyline", "REC status:"),         LineKind::State,    Id::RectifierStatus,      0,                "",                                         rectifierStates },
    { DiagramPanel::RecInv,  QT_TRANSLATE_NOOP("Energyline", "REC temperature:"),    LineKind::Measured, Id::RectifierTemperature, 0,                "%1 ℃",                                     {}              },
    { DiagramPanel::RecInv,  QT_TRANSLATE_NOOP("Energyline", "INV status:"),         LineKind::State,    Id::InverterStatus,       0,                "",                                         inverterStates  },
    { DiagramPanel::RecInv,  QT_TRANSLATE_NOOP("Energyline", "INV temperature:"),    LineKind::Measured, Id::InverterTemperature,  0,                "%1 ℃",                                     {}              },
    { DiagramPanel::RecInv,  QT_TRANSLATE_NOOP("Energyline", "INV current:"),        LineKind::Measured, Id::InverterCurrent,      0,                "%1 A",                                     {}              },
    { DiagramPanel::Load,    QT_TRANSLATE_NOOP("Energyline", "Voltage:"),            LineKind::Measured, Id::OutputVoltage,        Id::OutputPhases, "%1 V",                                     {}              },
    { DiagramPanel::Load,    QT_TRANSLATE_NOOP("Energyline", "Current:"),            LineKind::Measured, Id::OutputCurrent,        Id::OutputPhases, "%1 A",                                     {}              },
    { DiagramPanel::Load,    QT_TRANSLATE_NOOP("Energyline", "Apparent power:"),     LineKind::Measured, Id::OutputApparentPower,  Id::OutputPhases, "%1 kVA",                                   {}              },
    { DiagramPanel::Load,    QT_TRANSLATE_NOOP("Energyline", "Active power:"),       LineKind::Measured, Id::OutputActivePower,    Id::OutputPhases, "%1 kW",                                    {}              },
    { DiagramPanel::Load,    QT_TRANSLATE_NOOP("Energyline", "Reactive power:"),     LineKind::Measured, Id::OutputReactivePower,  Id::OutputPhases, "%1 kVA",                                   {}              },
    { DiagramPanel::Load,    QT_TRANSLATE_NOOP("Energyline", "Load percentage:"),    LineKind::Measured, Id::OutputLoad,           Id::OutputPhases, "%1 %",                                     {}              },
    { DiagramPanel::Load,    QT_TRANSLATE_NOOP("Energyline", "Status:"),             LineKind::State,    Id::OutputMode,           0,                "",                                         outputModes     },
    { DiagramPanel::Battery, QT_TRANSLATE_NOOP("Energyline", "Voltage:"),            LineKind::Measured, Id::BatteryVoltage,       0,                "%1 V",                                     {}              },
    { DiagramPanel::Battery, QT_TRANSLATE_NOOP("Energyline", "Current:"),            LineKind::Measured, Id::BatteryCurrent,       0,                "%1 A",                                     {}              },
    { DiagramPanel::Battery, QT_TRANSLATE_NOOP("Energyline", "Temperature:"),        LineKind::Measured, Id::BatteryTemperature,   0,                "%1 ℃",                                     {}              },
    { DiagramPanel::Battery, QT_TRANSLATE_NOOP("Energyline", "Remaining time:"),     LineKind::Whole,    Id::RemainingTime,        0,                QT_TRANSLATE_NOOP("Energyline", "%1 Min"),  {}              },
    { DiagramPanel::Battery, QT_TRANSLATE_NOOP("Energyline", "Remaining capacity:"), LineKind::Measured, Id::RemainingCapacity,    0,                "%1 %",                                     {}              },
    { DiagramPanel::Battery, QT_TRANSLATE_NOOP("Energyline", "Status:"),             LineKind::State,    Id::BatteryStatus,        0,                "",                                         batteryStates   },
    { DiagramPanel::Device,  QT_TRANSLATE_NOOP("Energyline", "Type:"),               LineKind::Text,     Id::TypeText,             0,                "",                                         {}, 16 },
    { DiagramPanel::Device,  QT_TRANSLATE_NOOP("Energyline", "Name:"),               LineKind::Text,     Id::NameText,             0,                "",                                         {}, 16 },
    { DiagramPanel::Device,  QT_TRANSLATE_NOOP("Energyline", "Manufacturer:"),       LineKind::Text,     Id::ManufacturerText,     0,                "",                                         {}, 16 },
    { DiagramPanel::Device,  QT_TRANSLATE_NOOP("Energyline", "Running time:"),       LineKind::Whole,    Id::RunningTime,          0,                QT_TRANSLATE_NOOP("Energyline", "%1 days"), {}              },
    { DiagramPanel::Device,  QT_TRANSLATE_NOOP("Energyline", "Working mode:"),       LineKind::State,    Id::WorkingMode,          0,                "",                                         workingModes    },
};

// Lengths in points. The places leave room for all panels, in the widest language, within 900x460.
constexpr DiagramPanelRow diagramPanels[] = {
    { DiagramPanel::Input,    0, { -440,   48 }, 215, 16, QT_TRANSLATE_NOOP("Energyline", "INPUT")   },
    { DiagramPanel::Bypass,   1, { -215, -229 }, 215, 15, QT_TRANSLATE_NOOP("Energyline", "BYPASS")  },
    { DiagramPanel::RecInv,   5, { -100, -142 }, 200, 16, QT_TRANSLATE_NOOP("Energyline", "REC/INV") },
    { DiagramPanel::Load,     3, {  220,   48 }, 228, 16, QT_TRANSLATE_NOOP("Energyline", "LOAD")    },
    { DiagramPanel::Battery,  4, {   34,   78 }, 166, 16, QT_TRANSLATE_NOOP("Energyline", "BATTERY") },
    { DiagramPanel::Device,  -1, {  220, -229 }, 228, 16, ""                                         },
};

// The same for texts of 16 points in height, within 1200x560.
constexpr DiagramPanelRow largeDiagramPanels[] = {
    { DiagramPanel::Input,    0, { -560,   48 }, 290, 19, QT_TRANSLATE_NOOP("Energyline", "INPUT")   },
    { DiagramPanel::Bypass,   1, { -215, -252 }, 290, 19, QT_TRANSLATE_NOOP("Energyline", "BYPASS")  },
    { DiagramPanel::RecInv,   5, { -125, -144.5 }, 250, 17.2, QT_TRANSLATE_NOOP("Energyline", "REC/INV") },
    { DiagramPanel::Load,     3, {  272,   48 }, 316, 19, QT_TRANSLATE_NOOP("Energyline", "LOAD")    },
    { DiagramPanel::Battery,  4, {   34,   78 }, 222, 19, QT_TRANSLATE_NOOP("Energyline", "BATTERY") },
    { DiagramPanel::Device,  -1, {  272, -252 }, 316, 19, ""                                         },
};

constexpr DiagramBlockRow diagramBlocks[] = {
    { DiagramForm::Square,  { -300,  -37.5 }, 75, 75, QT_TRANSLATE_NOOP("Energyline", "INPUT"),  "://image/INPUT.png", { 0, -1 }, { 0, -1, -1 } },
    { DiagramForm::Square,  { -300, -187.5 }, 75, 75, QT_TRANSLATE_NOOP("Energyline", "BYPASS"), "://image/INPUT.png", { 1, -1 }, { 5, -1, -1 } },
    { DiagramForm::Square,  {  225,  -37.5 }, 75, 75, QT_TRANSLATE_NOOP("Energyline", "LOAD"),   "://image/LOAD.png",  { 3, -1 }, { 4,  5, -1 } },
    { DiagramForm::Battery, {  -25,     80 }, 50, 75, "",                                        "",                   { 4, -1 }, { 1,  2, -1 } },
    { DiagramForm::Square,  { -130,  -37.5 }, 75, 75, QT_TRANSLATE_NOOP("Energyline", "REC"),    "://image/REC.png",   { 5,  2 }, { 0,  1,  3 } },
    { DiagramForm::Square,  {   55,  -37.5 }, 75, 75, QT_TRANSLATE_NOOP("Energyline", "INV"),    "://image/INV.png",   { 5,  2 }, { 2,  3,  4 } },
};

constexpr FlowRow diagramFlows[] = {
    { { Id::InputPath, 0 }, 2, { { -225,    0 }, { -130,    0 } } },
    { { Id::RectifierPath, Id::BatteryPath }, 3, { {  -55,    0 }, {    0,    0 }, {   0, 75 } } },
    { { Id::InverterInputPath, Id::BatteryPath }, 3, { {    0,   75 }, {    0,    0 }, {  55,  0 } } },
    { { Id::RectifierPath, Id::InverterInputPath }, 2, { {  -55,    0 }, {   55,    0 } } },
    { { Id::InverterOutputPath, Id::LoadPath }, 2, { {  130,    0 }, {  225,    0 } } },
    { { Id::BypassPath, Id::LoadPath }, 4, { { -225, -150 }, {  175, -150 }, { 175,  0 }, { 225, 0 } } },
};
// clang-format on

} // namespace kx300
