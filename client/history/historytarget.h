#pragma once

#include <QString>

#include <memory>
#include <string>

class QFileDevice;

/**
 * The file that an export writes.
 *
 * A regular file of our own with one name is replaced as a whole, and keeps what it had when that
 * fails. Anything else, a pipe or a file with several names, say, is written in place: a file put
 * where it was would be another one to all who hold it.
 *
 * Threads: one; a pipe that nobody empties is given up after ten seconds, or when the thread's
 *          StopSource asks.
 */
class HistoryTarget
{
public:
    enum class Way { Replace, InPlace };

    explicit HistoryTarget(const QString &path);
    ~HistoryTarget();

    /** The way in which the file at the path can be written. */
    Way bestWay() const;

    /** Opens the target; false when it cannot be, see error(). */
    bool open(Way way);

    /** Takes whole lines, so that what was written before a failure ends with one. */
    void write(const std::string &lines);

    /** Makes the target complete. @return false when it is not, see error() */
    bool commit();

    /** True when the last open() succeeded. */
    bool wasOpened() const { return m_wasOpened; }

    /** True when all could be written, but not be put in the target's place. */
    bool isRenameRefused() const { return m_renameRefused; }

    /** What went wrong; empty when nothing has. */
    QString error() const { return m_error; }

    /** True when the target is open and is that file itself. */
    bool isSameAs(int descriptor) const;

private:
    void openInPlace();
    bool writeAll(const char *bytes, qint64 size);
    void fail(const QString &error);

    const QString m_path;
    std::unique_ptr<QFileDevice> m_file;
    bool m_isReplacing = false;
    bool m_wasOpened = false;
    bool m_renameRefused = false;
    qint64 m_written = 0;
    QString m_error;
};
