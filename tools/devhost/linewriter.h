#pragma once

#include "outcome.h"

#include <QByteArray>

class QStringList;

/**
 * Writes whole lines to a log file, each with one call, and says once when that fails.
 *
 * In a file a line that did not fit is taken back, so that a full disk leaves no half line; the
 * lines after it are tried again, since space may come back. A FIFO must have a reader when it is
 * opened, and a reader that does not keep up loses lines: nobody's slowness may stop the host.
 *
 * Threads:   one thread.
 * Ownership: owns the descriptor.
 */
class LineWriter
{
public:
    LineWriter() = default;
    ~LineWriter();
    LineWriter(const LineWriter &) = delete;
    LineWriter &operator=(const LineWriter &) = delete;

    /** Opens a file for appending; a file that is not empty must begin with the line `header`,
     *  an empty one gets it. Never blocks. */
    Outcome open(const QString &file, const QByteArray &header);

    bool isOpen() const { return m_descriptor >= 0; }

    /** Appends a line; the line end is added. Does nothing while closed.
     *  @return good also while a failure that was reported goes on */
    Outcome writeLine(const QByteArray &line);

private:
    bool writeAll(const QByteArray &bytes);

    QString m_name;
    int m_descriptor = -1;
    bool m_failing = false;
};

/** One CSV record without its line end: fields with a comma, a quote or a line break are quoted. */
QByteArray csvRecord(const QStringList &fields);
