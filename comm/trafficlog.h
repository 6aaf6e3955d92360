#pragma once

#include <ctime>
#include <QByteArray>
#include <QString>
#include <sys/stat.h>

/**
 * Writes the bytes of a line to its traffic log, one text line for a transfer.
 *
 * Formats by itself: the log is written for every transfer of every poll.
 *
 * Threads: confined to the thread that holds the port's lock.
 * Errors:  a log that cannot be written is reported once, until it can be again.
 */
class TrafficLog
{
public:
    enum Direction : int { Sent, Received };

    TrafficLog() = default;
    ~TrafficLog() { close(); }
    TrafficLog(const TrafficLog &) = delete;
    TrafficLog &operator=(const TrafficLog &) = delete;

    /** Appends one line to the file at `path`.
     *  @param direction  a Direction
     *
     *  A file above 5 MiB is then copied to `path` +
     *  ".bak.log" and removed, also when the copy fails because a backup exists: intended. */
    void append(const QString &path, const char *data, int length, int direction);

    /** Closes the file; the next line opens it again. */
    void close();

private:
    void formatTime();
    void formatLine(const char *data, int length, int direction);
    qint64 appendLine(const QString &path); // the file's size then
    bool openLog(const char *name);
    void report(const QString &path, int error);

    QByteArray m_line;
    char m_time[64] = {};      // the time of m_second, up to the milliseconds
    std::time_t m_second = -1; // of m_time
    int m_timeLength = 0;
    bool m_failed = false;     // reported already
    int m_log = -1;            // descriptor
    struct stat m_status = {}; // of m_log, before the last line
};
