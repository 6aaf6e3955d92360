#pragma once

#include <chrono>

/** The time to `deadline`, rounded up so that a wait does not end before it; negative behind it. */
inline std::chrono::milliseconds timeLeft(std::chrono::steady_clock::time_point deadline)
{
    return std::chrono::ceil<std::chrono::milliseconds>(deadline
                                                        - std::chrono::steady_clock::now());
}
