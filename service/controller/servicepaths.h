#pragma once

#include "servicetypes.h"

/** True for 1 to 64 letters, digits, '_', '-' and '.', beginning with a letter or digit and not
 *  ending in ".service": no path, no option, no template, nothing the manager expands. */
bool isServiceName(const QString &name);

/** The unit of a service, e.g. "TesselServer.service". */
QString unitName(const QString &name);

/** Where the unit files of this scope are written; empty when the user has no home. */
QString unitDirectory(ServiceScope scope);

/**
 * The private folder of a service while it runs, never in a folder that others may write to.
 *
 * The same for the service and for those who control it, whether the manager made it or not.
 * @return empty when the user has no runtime folder (XDG_RUNTIME_DIR)
 */
QString runtimeDirectory(ServiceScope scope, const QString &name);

/** The control socket within runtimeDirectory(). */
QString controlSocket(ServiceScope scope, const QString &name);
