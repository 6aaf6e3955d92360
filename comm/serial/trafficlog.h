#pragma once

#include <ctime>
#include <QByteArray>
#include <QString>
#include <sys/types.h>

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
     *  A file above 5 MiB is then renamed to `path` + ".bak.log", or removed when there is such a
     *  backup: intended. What is no regular file is not written. */
    void append(const QString &path, const char *data, int length, int direction);

    /** Looks the file at `path` up, so that append() of what is sent only has to write it: for use right
     *  before a request goes out, as what is done behind it keeps the reply waiting. */
    void prepare(const QString &path);

    /** Closes the file; the next line opens it again. */
    void close();

private:
    struct File
    {
        quint64 device = 0;
        quint64 node = 0;
        qint64 size = 0; // bytes
    };

    void formatTime();
    void formatLine(const char *data, int length, int direction);
    qint64 appendLine(const QString &path, int direction); // the file's size then
    void cutOff(off_t length) const;
    const char *openLog(const QString &path); // why not; null when it is open
    static bool identify(int directory, const char *name, File &file);
    void report(const QString &path, const char *failure);

    QByteArray m_line;
    char m_time[64] = {};      // the time of m_second, up to the milliseconds
    std::time_t m_second = -1; // of m_time
    int m_timeLength = 0;
    bool m_failed = false;     // reported already
    bool m_isPrepared = false; // for one append()
    int m_log = -1;            // descriptor
    File m_file;               // m_log, before the last line
    QString m_path;            // of m_log
    QByteArray m_name;         // m_path as the system calls take it
};
