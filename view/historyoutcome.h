#pragma once

#include <QMetaType>
#include <QString>

/** What a history download has left in the file that was asked for. */
struct HistoryOutcome
{
    QString file;    ///< empty when none was named
    int records = 0; ///< written to it
    QString problem; ///< why nothing was written; empty when the file is complete
};

Q_DECLARE_METATYPE(HistoryOutcome)
