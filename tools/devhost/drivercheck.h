#pragma once

#include "outcome.h"

/** Whether the driver that the plug-in asks for is in the process; to be called once a client was
 *  made. The plug-in's own words about it are among its debug lines, which may be left out. */
Outcome checkDriver();
