#pragma once

#include "service/unitfile.h"

/** How installing or removing ended. */
struct InstallResult
{
    bool ok = false;
    QString text; // for people: what failed, or a remark after a success
};

/**
 * Writes the unit file and makes the manager read it. Blocks, up to the time limit of a request.
 *
 * A machine without a running manager (an image being built) gets the file and a remark.
 * @return a failure also when the account does not exist, or the file is someone else's
 */
InstallResult installService(const UnitDescription &unit);

/** Stops the service, then removes its unit file; only one that installService() wrote. */
InstallResult uninstallService(const QString &name, ServiceScope scope);
