#pragma once

#include "unitfile.h"

// All of these block, up to the time limit of a request to the manager. The text of a result says
// what was done; a machine without a running manager (an image being built) adds a remark.

/**
 * Writes the unit file and makes the manager read it.
 *
 * @return a failure also when the account does not exist, the file is someone else's, or no unit
 *         file can hold the arguments
 */
ServiceResult installService(const UnitDescription &unit);

/** Stops and disables the service, then removes its unit file; only one that installService()
 *  wrote. */
ServiceResult uninstallService(const QString &name, ServiceScope scope);

/** Whether the system's manager has a service of this name. */
bool isInstalledForSystem(const QString &name);
