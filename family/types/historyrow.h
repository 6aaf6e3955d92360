#pragma once

#include <QtGlobal>

/** The text of one code of a history record; translated in the context "tavoClient". */
struct HistoryTextRow
{
    int code;
    const char *text;
};
