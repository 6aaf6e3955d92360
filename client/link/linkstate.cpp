#include "link/linkstate.h"

#include <limits>

using namespace HostContract;

LinkStep nextLink(int state, int failCount, bool answered, int retries)
{
    if (answered) {
        // The count starts anew only when the link comes up: scattered failures add up, which is
        // intended.
        if (state == LinkUp)
            return { state, failCount, false, false, false };
        return { LinkUp, 0, true, false, false };
    }
    const int failed = failCount < std::numeric_limits<int>::max() ? failCount + 1 : failCount;
    if (failed < retries)
        return { state, failed, false, false, false };
    return { LinkLost, failed, false, state != LinkLost, true };
}
