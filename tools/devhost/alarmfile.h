#pragma once

#include "alarmrecord.h"
#include "outcome.h"

#include <QCoreApplication>
#include <QFile>
#include <QList>
#include <QLockFile>

#include <memory>

/**
 * The event log's file in the user's state folder: a line of JSON for each change of a record, the
 * last one of a record counts.
 *
 * A line is written as soon as something changes, so that a crash costs nothing; the file is
 * written anew, with what still counts, when it has grown. One program at a time writes it.
 *
 * Threads: one thread.
 */
class AlarmFile
{
    Q_DECLARE_TR_FUNCTIONS(AlarmFile)

public:
    static constexpr qint64 mostBytes = 2 * 1024 * 1024;

    /** $XDG_STATE_HOME/kx300-devhost/events.jsonl, or the same below ~/.local/state. */
    static QString standardName();

    explicit AlarmFile(const QString &name);

    /** Opens the file, for writing too unless another program does. */
    Outcome open();

    /** What the file holds; lines that are no records are left out. */
    QList<AlarmRecord> load();

    bool isOpen() const { return m_file && m_file->isOpen(); }

    /** Appends a record; `all` are those that count when the file is written anew.
     *  @return a failure once, until writing succeeds again */
    Outcome append(const AlarmRecord &record, const QList<AlarmRecord> &all);

private:
    Outcome openFile();
    Outcome rewrite(const QList<AlarmRecord> &all);
    Outcome failOnce(const QString &error);

    QString m_name;
    std::unique_ptr<QLockFile> m_lock;
    std::unique_ptr<QFile> m_file;
    bool m_isFailing = false;
};
