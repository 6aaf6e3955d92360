#pragma once

#include "cyclesettings.h"
#include "view/upgradeplan.h"

/** The upgrade of the device that `settings` describes, with the host's own upgrade program.
 *
 *  For development the environment variable KX300_SERVICE_SCOPE=user makes it stop and start the
 *  service of the user's manager instead of the machine's. */
UpgradePlan planUpgrade(const CycleSettings &settings);
