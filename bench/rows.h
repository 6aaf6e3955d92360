#pragma once

#include "runner.h"

// Each measures its rows and adds them to the runner.
void benchRtuExchange(Runner &runner);
void benchShortRead(Runner &runner);
void benchTcpExchange(Runner &runner);
void benchCrc(Runner &runner);
void benchPollCycle(Runner &runner);
void benchManyClients(Runner &runner);
void benchHistoryExport(Runner &runner);
void benchView(Runner &runner);
void benchHiddenView(Runner &runner);
void benchShownView(Runner &runner);
