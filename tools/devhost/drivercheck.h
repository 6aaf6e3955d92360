#pragma once

#include "outcome.h"

#include <QString>

/** Whether the driver that the plug-in asks for is in the process; to be called once a client was
 *  made. The plug-in's own words about it are among its debug lines, which may be left out.
 *  @param plugin  its file: the driver of "libNAME_Client.so" is "libNAME.so", and nothing is known
 *                 about one that is named otherwise; empty: the 6-20 kVA family's */
Outcome checkDriver(const QString &plugin);
