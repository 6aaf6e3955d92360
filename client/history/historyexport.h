#pragma once

#include "historyoutcome.h"

#include <QMap>
#include <QString>
#include <QStringList>

/** The translated words of an exported history. */
struct HistoryWords
{
    QMap<int, QString> statuses;
    QMap<int, QString> modes;
    QMap<int, QString> contents;
    QStringList titles;
};

/** Converts the driver's history file `source` to comma-separated text at `target` and empties it.
 *
 *  Works through the file piece by piece: memory does not grow with it. The target is written
 *  whole or keeps what it had; where it can only be written in place (see HistoryTarget), it ends
 *  at a whole line. When the calling thread's StopSource asks, the target stays as it was. The
 *  source is emptied then too, or the next device whose download fails would export these records.
 *  What replaces the source meanwhile, under its name, is not touched: it may be the target itself.
 *
 *  Threads: one export at a time for a source; reads and writes files, some seconds for millions
 *           of records.
 *  Errors:  a missing source, or one that is no regular file, reads as an empty one. The source is
 *           emptied whatever happens. What was written, or why not, is returned and logged.
 *  @param target  path; when empty, nothing is written */
HistoryOutcome exportHistory(const HistoryWords &words, const QString &source,
                             const QString &target);
