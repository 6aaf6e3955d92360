#pragma once

#include "hostvocabulary.h"

/** What one query's outcome does to the link. */
struct LinkStep
{
    int state;         ///< the LinkState after it
    int failCount;     ///< the failed queries after it
    bool restored;     ///< the link came up, the first time included
    bool lost;         ///< the link was lost
    bool limitReached; ///< the query failed with the retries used up
};

/** Follows the link by one query.
 *  @param retries  failed queries until the link counts as lost */
LinkStep nextLink(int state, int failCount, bool answered, int retries);
