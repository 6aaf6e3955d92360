#pragma once

#include <QByteArray>
#include <QString>

/**
 * Writes whole lines to a descriptor, each with one call, and says once when that fails.
 *
 * In a file a line that did not fit is taken back, so that a full disk leaves no half line; the
 * lines after it are tried again, since space may come back.
 *
 * Threads:   one thread.
 * Ownership: owns the descriptor when it opened the file itself.
 */
class LineWriter
{
public:
    /** For a descriptor of the caller's, such as standard output. */
    explicit LineWriter(int descriptor = -1);
    ~LineWriter();
    LineWriter(const LineWriter &) = delete;
    LineWriter &operator=(const LineWriter &) = delete;

    /** Opens a file for appending; a file that is not empty must begin with the line `header`,
     *  an empty one gets it.
     *  @return the reason of a failure, empty when the file is open */
    QString open(const QString &file, const QByteArray &header);

    bool isOpen() const { return m_descriptor >= 0; }

    /** Appends a line; the line end is added. Does nothing while closed.
     *  @return the reason of a failure, empty on success and while a failure that was reported
     *          goes on */
    QString writeLine(const QByteArray &line);

private:
    bool writeAll(const QByteArray &bytes);

    QString m_name;
    int m_descriptor;
    bool m_owned = false;
    bool m_failing = false;
};

/** One CSV record without its line end: fields with a comma, a quote or a line break are quoted. */
QByteArray csvRecord(const QStringList &fields);
