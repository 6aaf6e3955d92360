#include "deletionbudget.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds share { 15 }; // of a window

thread_local Clock::time_point windowStart;
thread_local Clock::duration spent { 0 };

} // namespace

bool DeletionBudget::hasTime()
{
    const auto now = Clock::now();
    if (now - windowStart > window) {
        windowStart = now;
        spent = Clock::duration(0);
    }
    return spent < share;
}

void DeletionBudget::spendSince(Clock::time_point start)
{
    spent += Clock::now() - start;
}
