// Gives the host's base classes their meta-objects and virtual tables in this library.
#include "collectthread.h"
#include "collectview.h"
