#pragma once

#include "rows.h"

/** What a device's mode means to those whose load it feeds. */
enum class DeviceState {
    Unknown,
    Normal,
    Eco, ///< on bypass on purpose, the inverter at hand
    Starting,
    Standby,
    Testing, ///< the battery
    OnBypass,
    OnBattery,
    Fault,
    Shutdown, ///< of the device; whether there is an output is told apart
    OutputOff,
};

/** What a value of a mode's identifier means. */
struct StateRow
{
    int value;
    DeviceState state;
};

/** The two values that a device's state follows from; an identifier is 0 when there is none. */
struct StateTables
{
    int modeId = 0;
    Rows<StateRow> modes {};
    int outputId = 0; ///< what feeds the output: Normal, OnBypass or OutputOff
    Rows<StateRow> outputs {};
};
