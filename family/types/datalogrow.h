#pragma once

#include "rows.h"

#include <QtGlobal>

/** How a column of the data log is written. */
enum class LogForm {
    Number,      ///< "%.1f"
    Phases,      ///< "%.1f/%.1f/%.1f" when the unit has three phases there, else a number
    Temperature, ///< "-" for the readings of a sensor that is not there, else a number
    State,       ///< the text of a state; the first one for a value without a text
    CutState,    ///< the same, its value cut towards zero
};

/** One column of the data log; its texts are translated in the context "tavoFont". */
struct DataLogColumn
{
    int title; ///< index into the titles
    LogForm form;
    int dataId;  ///< of the value, or of phase R
    int phaseId; ///< Phases: identifier of the number of phases
    Rows<const char *> states;
};
