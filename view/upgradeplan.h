#pragma once

#include "service/servicetypes.h"

/** What one upgrade does: which service makes way for which program. */
struct UpgradePlan
{
    QString service = QStringLiteral("TesselServer");
    ServiceScope scope = ServiceScope::System;
    QString program;       ///< absolute path
    QStringList arguments; ///< device, then "0" for the host's first language or "1"
};
