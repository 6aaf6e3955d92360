#pragma once

#include "kx300/identifiers.h"
#include "staterow.h"

/** What the modes of the 6-20 kVA models mean; those that are missing say nothing of the load. */
namespace kx300 {

// clang-format off
constexpr StateRow workingModeStates[] = {
    {  1, DeviceState::Starting  },
    {  2, DeviceState::Standby   },
    {  3, DeviceState::OnBypass  },
    {  4, DeviceState::Normal    },
    {  5, DeviceState::OnBattery },
    {  6, DeviceState::Testing   },
    {  7, DeviceState::Fault     },
    {  8, DeviceState::Normal    }, // with another frequency
    {  9, DeviceState::Eco       },
    { 10, DeviceState::Shutdown  },
    { 11, DeviceState::Testing   },
};

constexpr StateRow outputModeStates[] = {
    { 0, DeviceState::OutputOff },
    { 1, DeviceState::OnBypass  },
    { 2, DeviceState::Normal    },
};
// clang-format on

} // namespace kx300
