#include "serial/trafficlog.h"

#include "regularfile.h"
#include "wakeup.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <QDebug>
#include <QFile>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace {

constexpr qint64 largestLog = 5242'880;
constexpr char hexDigits[] = "0123456789abcdef";

// Renames, but never replaces: a log may have gigabytes, which nobody copies while the line waits.
std::error_code moveAside(const char *from, const char *to)
{
    if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return {};
    // Not every file system knows that flag.
    const bool isUnknown = errno == EINVAL || errno == ENOSYS;
    const bool isMoved = isUnknown && link(from, to) == 0 && unlink(from) == 0;
    return { isMoved ? 0 : errno, std::generic_category() };
}

} // namespace

void TrafficLog::append(const QString &path, const char *data, int length, int direction)
{
    if (path.isEmpty() || !data || length <= 0)
        return;
    formatLine(data, length, direction);
    if (appendLine(path, direction) <= largestLog)
        return;

    close();
    const QByteArray backup = m_name + ".bak.log";
    if (const std::error_code error = moveAside(m_name.constData(), backup.constData())) {
        const bool isThere = error == std::errc::file_exists;
        qDebug() << QString::fromStdString(isThere ? "Destination file exists" : error.message());
        unlink(m_name.constData());
    }
}

void TrafficLog::formatTime()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    // The calendar is the dear part, and transfers come many a second.
    if (now.tv_sec != m_second) {
        std::tm local = {};
        localtime_r(&now.tv_sec, &local);
        m_timeLength = int(std::strftime(m_time, sizeof m_time, "%Y-%m-%d %H:%M:%S.", &local));
        m_second = now.tv_sec;
    }
    m_line.append(m_time, m_timeLength);
    const int ms = int(now.tv_nsec / 1000'000);
    const char digits[] = { char('0' + ms / 100), char('0' + ms / 10 % 10), char('0' + ms % 10),
                            ' ' };
    m_line.append(digits, sizeof digits);
}

void TrafficLog::formatLine(const char *data, int length, int direction)
{
    m_line.reserve(int(sizeof m_time) + 16 + 3 * length); // or resizing gives the memory back
    m_line.resize(0);
    formatTime();
    m_line.append(direction == Received ? "recv: " : "send: ", 6);
    const int start = m_line.size();
    m_line.resize(start + 3 * length + 1);
    char *out = m_line.data() + start;
    for (int i = 0; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(data[i]);
        *out++ = hexDigits[byte >> 4];
        *out++ = hexDigits[byte & 15];
        *out++ = ' ';
    }
    *out = '\n';
}

void TrafficLog::prepare(const QString &path)
{
    m_isPrepared = !openLog(path);
}

qint64 TrafficLog::appendLine(const QString &path, int direction)
{
    // What was received may come long after a request that could not be sent.
    const bool isPrepared = std::exchange(m_isPrepared, false) && direction == Sent;
    if (const char *failure = isPrepared ? nullptr : openLog(path)) {
        report(path, failure);
        return identify(AT_FDCWD, m_name.constData(), m_file) ? m_file.size : 0;
    }
    // In one piece, so that a line is whole or missing.
    const ssize_t written = write(m_log, m_line.constData(), size_t(m_line.size()));
    const bool isWhole = written == m_line.size();
    report(path, isWhole ? nullptr : strerror(written < 0 ? errno : ENOSPC));
    if (written > 0 && !isWhole)
        cutOff(written);
    return m_file.size + (isWhole ? written : 0);
}

// Takes the beginning of a line back, unless somebody wrote behind it.
void TrafficLog::cutOff(off_t length) const
{
    const off_t end = lseek(m_log, 0, SEEK_CUR);
    File file;
    if (end >= length && identify(m_log, "", file) && file.size == end
        && ftruncate(m_log, end - length) != 0)
        qWarning("TrafficLog: half a line stays: %s", strerror(errno));
}

// Opening and closing costs more than all the rest: a log stays open as long as its name stands
// for the same file.
const char *TrafficLog::openLog(const QString &path)
{
    if (path != m_path) {
        close();
        m_path = path;
        m_name = QFile::encodeName(path);
    }
    File named;
    if (m_log >= 0 && identify(AT_FDCWD, m_name.constData(), named) && named.node == m_file.node
        && named.device == m_file.device) {
        m_file = named;
        return nullptr;
    }
    close();
    const OpenedFile opened = openRegularFile(m_name.constData(), O_WRONLY | O_APPEND | O_CREAT);
    if (opened.failure)
        return opened.failure;
    m_log = affordable(opened.descriptor, DescriptorUse::Needed);
    return m_log >= 0 && identify(m_log, "", m_file) ? nullptr : strerror(errno);
}

// Does not ask for the file's times: on file systems with fine-grained times each write that
// follows would have to store a new one, which doubles its cost.
bool TrafficLog::identify(int directory, const char *name, File &file)
{
    struct statx found = {};
    if (statx(directory, name, AT_EMPTY_PATH, STATX_INO | STATX_SIZE, &found) != 0)
        return false;
    file = { makedev(found.stx_dev_major, found.stx_dev_minor), found.stx_ino,
             qint64(found.stx_size) };
    return true;
}

void TrafficLog::close()
{
    if (m_log >= 0)
        ::close(m_log);
    m_log = -1;
    m_isPrepared = false;
}

void TrafficLog::report(const QString &path, const char *failure)
{
    if (failure && !m_failed)
        qWarning("TrafficLog: cannot write %s: %s", qUtf8Printable(path), failure);
    m_failed = failure != nullptr;
}
