#pragma once

#include "datalogrow.h"
#include "kx300/identifiers.h"

/** The data log of the 6-20 kVA models. */
namespace kx300 {

// clang-format off
constexpr const char *dataLogTitles[] = {
    /*  0 */ QT_TRANSLATE_NOOP("tavoFont", "Battery state"),
    /*  1 */ QT_TRANSLATE_NOOP("tavoFont", "Time on battery(s)"),
    /*  2 */ QT_TRANSLATE_NOOP("tavoFont", "Remaining battery time(Min)"),
    /*  3 */ QT_TRANSLATE_NOOP("tavoFont", "Remaining battery capacity(%)"),
    /*  4 */ QT_TRANSLATE_NOOP("tavoFont", "Battery voltage(V)"),
    /*  5 */ QT_TRANSLATE_NOOP("tavoFont", "Battery current(A)"),
    /*  6 */ QT_TRANSLATE_NOOP("tavoFont", "Battery temperature(C)"),
    /*  7 */ QT_TRANSLATE_NOOP("tavoFont", "Number of mains failure"),
    /*  8 */ QT_TRANSLATE_NOOP("tavoFont", "Input voltage(V)"),
    /*  9 */ QT_TRANSLATE_NOOP("tavoFont", "Input current(A)"),
    /* 10 */ QT_TRANSLATE_NOOP("tavoFont", "Input frequency(Hz)"),
    /* 11 */ QT_TRANSLATE_NOOP("tavoFont", "Input power(W)"),
    /* 12 */ QT_TRANSLATE_NOOP("tavoFont", "Output mode"),
    /* 13 */ QT_TRANSLATE_NOOP("tavoFont", "Output frequency(Hz)"),
    /* 14 */ QT_TRANSLATE_NOOP("tavoFont", "Output voltage(V)"),
    /* 15 */ QT_TRANSLATE_NOOP("tavoFont", "Output current(A)"),
    /* 16 */ QT_TRANSLATE_NOOP("tavoFont", "Output power(W)"),
    /* 17 */ QT_TRANSLATE_NOOP("tavoFont", "Output load(%)"),
    /* 18 */ QT_TRANSLATE_NOOP("tavoFont", "Bypass frequency(Hz)"),
    /* 19 */ QT_TRANSLATE_NOOP("tavoFont", "Bypass voltage(V)"),
    /* 20 */ QT_TRANSLATE_NOOP("tavoFont", "Bypass current(A)"),
    /* 21 */ QT_TRANSLATE_NOOP("tavoFont", "Bypass power(W)"),
    /* 22 */ QT_TRANSLATE_NOOP("tavoFont", "Input voltage R/S/T(V)"),
    /* 23 */ QT_TRANSLATE_NOOP("tavoFont", "Input current R/S/T(A)"),
    /* 24 */ QT_TRANSLATE_NOOP("tavoFont", "Input frequency R/S/T(Hz)"),
    /* 25 */ QT_TRANSLATE_NOOP("tavoFont", "Input power R/S/T(W)"),
    /* 26 */ QT_TRANSLATE_NOOP("tavoFont", "Output voltage R/S/T(V)"),
    /* 27 */ QT_TRANSLATE_NOOP("tavoFont", "Output current R/S/T(A)"),
    /* 28 */ QT_TRANSLATE_NOOP("tavoFont", "Output power R/S/T(W)"),
    /* 29 */ QT_TRANSLATE_NOOP("tavoFont", "Output load R/S/T(%)"),
    /* 30 */ QT_TRANSLATE_NOOP("tavoFont", "Bypass voltage R/S/T(V)"),
    /* 31 */ QT_TRANSLATE_NOOP("tavoFont", "Bypass current R/S/T(A)"),
    /* 32 */ QT_TRANSLATE_NOOP("tavoFont", "Bypass power R/S/T(W)"),
};

constexpr const char *loggedBatteryStates[] = {
    QT_TRANSLATE_NOOP("tavoFont", "Disconnect"),
    QT_TRANSLATE_NOOP("tavoFont", "Standby"),
    QT_TRANSLATE_NOOP("tavoFont", "Equalized charge"),
    QT_TRANSLATE_NOOP("tavoFont", "Float charge"),
    QT_TRANSLATE_NOOP("tavoFont", "Discharge"),
};

constexpr const char *loggedOutputModes[] = {
    QT_TRANSLATE_NOOP("tavoFont", "None"),
    QT_TRANSLATE_NOOP("tavoFont", "Load on bypass"),
    QT_TRANSLATE_NOOP("tavoFont", "Load on inverter"),
    QT_TRANSLATE_NOOP("tavoFont", "Load on other"),
};

/** The logged titles in their order, and where their values come from. */
constexpr DataLogColumn dataLogColumns[] = {
    {  8, LogForm::Phases,      Id::InputVoltage,        Id::InputPhases,   {} },
    { 10, LogForm::Phases,      Id::InputFrequency,      Id::InputPhases,   {} },
    { 19, LogForm::Phases,      Id::BypassVoltage,       Id::BypassPhases,  {} },
    { 18, LogForm::Number,      Id::BypassFrequency,     0,                 {} },
    { 14, LogForm::Phases,      Id::OutputVoltage,       Id::OutputPhases,  {} },
    { 15, LogForm::Phases,      Id::OutputCurrent,       Id::OutputPhases,  {} },
    { 16, LogForm::Phases,      Id::OutputActivePower,   Id::OutputPhases,  {} },
    { 17, LogForm::Phases,      Id::OutputLoad,          Id::OutputPhases,  {} },
    { 13, LogForm::Number,      Id::OutputFrequency,     0,                 {} },
    { 12, LogForm::State,       Id::OutputMode,          0,                 loggedOutputModes },
    {  3, LogForm::Number,      Id::RemainingCapacity,   0,                 {} },
    {  4, LogForm::Number,      Id::BatteryVoltage,      0,                 {} },
    {  5, LogForm::Number,      Id::BatteryCurrent,      0,                 {} },
    {  6, LogForm::Temperature, Id::BatteryTemperature,  0,                 {} },
    {  0, LogForm::CutState,    Id::BatteryStatus,       0,                 loggedBatteryStates },
};
// clang-format on

} // namespace kx300
