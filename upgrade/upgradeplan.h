#pragma once

#include "family.h"
#include "servicetypes.h"

#include <QStringList>

/** What one upgrade does: which service makes way for which program. */
struct UpgradePlan
{
    QString service = QStringLiteral("TesselServer");
    ServiceScope scope = ServiceScope::System;
    QString program;       ///< absolute path
    QStringList arguments; ///< device, then "0" for the host's first language or "1"
};

/** The upgrade of a device with its family's own program.
 *
 *  For development the environment variable KX300_SERVICE_SCOPE=user makes it stop and start the
 *  service of the user's manager instead of the machine's.
 *  @param device  how the program finds it: a port's name, or a TCP peer as "10.0.0.5:502" */
UpgradePlan planUpgrade(const Family &family, const QString &device);
