#pragma once

#include "energystate.h"

#include <QCoreApplication>

#include <cstddef>

/** The texts of a state, by its value. */
struct StateTexts
{
    const char *const *texts = nullptr;
    int count = 0;
};

template <std::size_t Count> constexpr StateTexts stateTexts(const char *const (&texts)[Count])
{
    return { texts, static_cast<int>(Count) };
}

enum class EnergyLineKind { Measured, Whole, State, Text };

/** One line of a panel and where its value comes from. */
struct EnergyLineRow
{
    EnergyPanel panel;
    const char *label;
    EnergyLineKind kind;
    int dataId;
    int phaseId;         ///< this identifier equal to 3 selects three phases; 0: single value
    const char *pattern; ///< of a measured or whole number
    StateTexts states;
};

struct EnergyPoint
{
    double x;
    double y;
};

/** One flow: the identifiers that must be 1, and its line relative to the centre. */
struct EnergyFlowRow
{
    int dataIds[2]; ///< 0: none
    int pointCount;
    EnergyPoint points[4];
};

/** What a block of the diagram stands for; in the order in which clicks are looked up. */
enum class EnergyBlock { Input, Bypass, Load, Battery, Rectifier, Inverter };

struct EnergyBlockRow
{
    EnergyBlock block;
    EnergyPoint topLeft; ///< relative to the centre
    double width;
    double height;
    const char *title;
    const char *image;
    int viewFlags[2]; ///< the view flags that a click toggles; -1: none
    int flows[3];     ///< the block carries energy when one of them flows; -1: none
};

/** Place of a panel relative to the centre. */
struct EnergyPanelRow
{
    EnergyPanel panel;
    int viewFlag; ///< -1: always shown
    EnergyPoint topLeft;
    double width;
    double pitch; ///< distance of the lines
    const char *title;
};

/** The fixed contents of the energy-flow diagram, all lengths in points. */
class EnergyTables
{
    Q_DECLARE_TR_FUNCTIONS(Energyline)

public:
    // clang-format off
    static constexpr const char *bypassStates[] = {
        QT_TR_NOOP("Abnormal"), QT_TR_NOOP("Normal"),
    };
    static constexpr const char *workingModes[] = {
        QT_TR_NOOP("F&A clear"), QT_TR_NOOP("Power on"),         QT_TR_NOOP("Standby"),
        QT_TR_NOOP("Bypass"),    QT_TR_NOOP("Online"),           QT_TR_NOOP("Battery"),
        QT_TR_NOOP("Battery test"), QT_TR_NOOP("Fault"),         QT_TR_NOOP("Freq. conversion"),
        QT_TR_NOOP("ECO"),       QT_TR_NOOP("Shutdown"),         QT_TR_NOOP("Test"),
    };
    static constexpr const char *outputModes[] = {
        QT_TR_NOOP("None"), QT_TR_NOOP("Load on bypass"), QT_TR_NOOP("Load on inverter"),
        QT_TR_NOOP("Load on other"),
    };
    static constexpr const char *batteryStates[] = {
        QT_TR_NOOP("Disconnect"), QT_TR_NOOP("Standby"), QT_TR_NOOP("Equalized charge"),
        QT_TR_NOOP("Float charge"), QT_TR_NOOP("Discharge"),
    };
    static constexpr const char *rectifierStates[] = {
        QT_TR_NOOP("Off"), QT_TR_NOOP("Soft start"), QT_TR_NOOP("PFC mode"),
        QT_TR_NOOP("Battery mode"),
    };
    static constexpr const char *inverterStates[] = {
        QT_TR_NOOP("Off"), QT_TR_NOOP("Soft start"), QT_TR_NOOP("Normal run"),
    };

    using Panel = EnergyPanel;
    using Kind = EnergyLineKind;
    static constexpr EnergyLineRow lines[] = {
        { Panel::Input,   QT_TR_NOOP("Voltage:"),            Kind::Measured, 4133, 4132, "%1 V",   {} },
        { Panel::Input,   QT_TR_NOOP("Current:"),            Kind::Measured, 4136, 4132, "%1 A",   {} },
        { Panel::Input,   QT_TR_NOOP("Frequency:"),          Kind::Measured, 4139, 4132, "%1 Hz",  {} },
        { Panel::Bypass,  QT_TR_NOOP("Voltage:"),            Kind::Measured, 4193, 4192, "%1 V",   {} },
        { Panel::Bypass,  QT_TR_NOOP("Current:"),            Kind::Measured, 4196, 4192, "%1 A",   {} },
        { Panel::Bypass,  QT_TR_NOOP("Frequency:"),          Kind::Measured, 4191, 0,    "%1 Hz",  {} },
        { Panel::Bypass,  QT_TR_NOOP("Status:"),             Kind::State,    4190, 0,    "",       stateTexts(bypassStates) },
        { Panel::RecInv,  QT_TR_NOOP("REC status:"),         Kind::State,    4242, 0,    "",       stateTexts(rectifierStates) },
        { Panel::RecInv,  QT_TR_NOOP("REC temperature:"),    Kind::Measured, 4238, 0,    "%1 ℃",   {} },
        { Panel::RecInv,  QT_TR_NOOP("INV status:"),         Kind::State,    4243, 0,    "",       stateTexts(inverterStates) },
        { Panel::RecInv,  QT_TR_NOOP("INV temperature:"),    Kind::Measured, 4239, 0,    "%1 ℃",   {} },
        { Panel::RecInv,  QT_TR_NOOP("INV current:"),        Kind::Measured, 4237, 0,    "%1 A",   {} },
        { Panel::Load,    QT_TR_NOOP("Voltage:"),            Kind::Measured, 4164, 4163, "%1 V",   {} },
        { Panel::Load,    QT_TR_NOOP("Current:"),            Kind::Measured, 4167, 4163, "%1 A",   {} },
        { Panel::Load,    QT_TR_NOOP("Apparent power:"),     Kind::Measured, 4180, 4163, "%1 kVA", {} },
        { Panel::Load,    QT_TR_NOOP("Active power:"),       Kind::Measured, 4170, 4163, "%1 kW",  {} },
        { Panel::Load,    QT_TR_NOOP("Reactive power:"),     Kind::Measured, 4183, 4163, "%1 kVA", {} },
        { Panel::Load,    QT_TR_NOOP("Load percentage:"),    Kind::Measured, 4173, 4163, "%1 %",   {} },
        { Panel::Load,    QT_TR_NOOP("Status:"),             Kind::State,    4161, 0,    "",       stateTexts(outputModes) },
        { Panel::Battery, QT_TR_NOOP("Voltage:"),            Kind::Measured, 4105, 0,    "%1 V",   {} },
        { Panel::Battery, QT_TR_NOOP("Current:"),            Kind::Measured, 4106, 0,    "%1 A",   {} },
        { Panel::Battery, QT_TR_NOOP("Temperature:"),        Kind::Measured, 4107, 0,    "%1 ℃",   {} },
        { Panel::Battery, QT_TR_NOOP("Remaining time:"),     Kind::Whole,    4103, 0,    QT_TR_NOOP("%1 Min"), {} },
        { Panel::Battery, QT_TR_NOOP("Remaining capacity:"), Kind::Measured, 4117, 0,    "%1 %",   {} },
        { Panel::Battery, QT_TR_NOOP("Status:"),             Kind::State,    4101, 0,    "",       stateTexts(batteryStates) },
        { Panel::Device,  QT_TR_NOOP("Type:"),               Kind::Text,     4016, 0,    "",       {} },
        { Panel::Device,  QT_TR_NOOP("Name:"),               Kind::Text,     4080, 0,    "",       {} },
        { Panel::Device,  QT_TR_NOOP("Manufacturer:"),       Kind::Text,     4000, 0,    "",       {} },
        { Panel::Device,  QT_TR_NOOP("Running time:"),       Kind::Whole,    4240, 0,    QT_TR_NOOP("%1 days"), {} },
        { Panel::Device,  QT_TR_NOOP("Working mode:"),       Kind::State,    4241, 0,    "",       stateTexts(workingModes) },
    };

    // The places leave room for all panels, in the widest language, within 900x460.
    static constexpr EnergyPanelRow panels[] = {
        { Panel::Input,    0, { -440,   48 }, 215, 16, QT_TR_NOOP("INPUT")   },
        { Panel::Bypass,   1, { -215, -229 }, 215, 15, QT_TR_NOOP("BYPASS")  },
        { Panel::RecInv,   5, { -100, -142 }, 200, 16, QT_TR_NOOP("REC/INV") },
        { Panel::Load,     3, {  220,   48 }, 228, 16, QT_TR_NOOP("LOAD")    },
        { Panel::Battery,  4, {   34,   78 }, 166, 16, QT_TR_NOOP("BATTERY") },
        { Panel::Device,  -1, {  220, -229 }, 228, 16, ""                    },
    };

    static constexpr EnergyFlowRow flows[EnergyFlowCount] = {
        { { 4217, 0    }, 2, { { -225,    0 }, { -130,    0 } } },
        { { 4218, 4222 }, 3, { {  -55,    0 }, {    0,    0 }, {   0, 75 } } },
        { { 4219, 4222 }, 3, { {    0,   75 }, {    0,    0 }, {  55,  0 } } },
        { { 4218, 4219 }, 2, { {  -55,    0 }, {   55,    0 } } },
        { { 4220, 4221 }, 2, { {  130,    0 }, {  225,    0 } } },
        { { 4216, 4221 }, 4, { { -225, -150 }, {  175, -150 }, { 175,  0 }, { 225, 0 } } },
    };

    using Block = EnergyBlock;
    static constexpr EnergyBlockRow blocks[] = {
        { Block::Input,     { -300,  -37.5 }, 75, 75, QT_TR_NOOP("INPUT"),  "://image/INPUT.png", { 0, -1 }, { 0, -1, -1 } },
        { Block::Bypass,    { -300, -187.5 }, 75, 75, QT_TR_NOOP("BYPASS"), "://image/INPUT.png", { 1, -1 }, { 5, -1, -1 } },
        { Block::Load,      {  225,  -37.5 }, 75, 75, QT_TR_NOOP("LOAD"),   "://image/LOAD.png",  { 3, -1 }, { 4,  5, -1 } },
        { Block::Battery,   {  -25,     80 }, 50, 75, "",                   "",                   { 4, -1 }, { 1,  2, -1 } },
        { Block::Rectifier, { -130,  -37.5 }, 75, 75, QT_TR_NOOP("REC"),    "://image/REC.png",   { 5,  2 }, { 0,  1,  3 } },
        { Block::Inverter,  {   55,  -37.5 }, 75, 75, QT_TR_NOOP("INV"),    "://image/INV.png",   { 5,  2 }, { 2,  3,  4 } },
    };
    // clang-format on
};
