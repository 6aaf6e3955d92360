#pragma once

#include <chrono>

/**
 * How much of a thread's time deletions may take in one go, however many there are: an event loop
 * that is to stay lively does the rest in a later turn.
 *
 * Threads: each has a budget of its own.
 */
class DeletionBudget
{
public:
    /** When to try again what does not fit any more. */
    static constexpr std::chrono::milliseconds window { 50 };

    /** True while the present window has time left. */
    static bool hasTime();

    /** Books what has been spent since `start`. */
    static void spendSince(std::chrono::steady_clock::time_point start);
};
