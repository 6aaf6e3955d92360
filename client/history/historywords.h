#pragma once

#include "family.h"
#include "history/historyexport.h"

/** The words of an exported history in the current language. */
HistoryWords historyWords(const HistoryTables &tables);
