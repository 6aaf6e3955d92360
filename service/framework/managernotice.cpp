#include "managernotice.h"

#include <QList>
#include <QString>
#include <QtGlobal>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

struct PriorityRow
{
    QtMsgType type;
    const char *prefix; // as the journal reads it
};

// clang-format off
constexpr PriorityRow priorityRows[] = {
    { QtDebugMsg,    "<7>" },
    { QtInfoMsg,     "<6>" },
    { QtWarningMsg,  "<4>" },
    { QtCriticalMsg, "<3>" },
    { QtFatalMsg,    "<2>" },
};
// clang-format on

// Whether a variable of the manager is meant for this process or was inherited by accident.
bool isMeantForUs(const char *pidVariable)
{
    const QByteArray pid = qgetenv(pidVariable);
    return pid.isEmpty() || pid.toLongLong() == getpid();
}

bool stderrIsJournal()
{
    const QList<QByteArray> stream = qgetenv("JOURNAL_STREAM").split(':');
    struct stat status = {};
    return stream.size() == 2 && fstat(STDERR_FILENO, &status) == 0
        && stream[0].toULongLong() == status.st_dev && stream[1].toULongLong() == status.st_ino;
}

void writeToJournal(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const char *prefix = "";
    for (const PriorityRow &row : priorityRows) {
        if (row.type == type)
            prefix = row.prefix;
    }
    QByteArray lines;
    for (const QByteArray &line : qFormatLogMessage(type, context, text).toUtf8().split('\n'))
        lines += prefix + line + '\n';
    fputs(lines.constData(), stderr); // one call, so that lines of threads do not mix
}

} // namespace

bool isStartedByManager()
{
    return !qEnvironmentVariableIsEmpty("NOTIFY_SOCKET") && isMeantForUs("SYSTEMD_EXEC_PID");
}

bool noticeManager(const QByteArray &lines)
{
    const QByteArray path = qgetenv("NOTIFY_SOCKET");
    if (!isStartedByManager())
        return true;
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (size_t(path.size()) >= sizeof address.sun_path)
        return false;
    memcpy(address.sun_path, path.constData(), size_t(path.size()));
    if (path.startsWith('@'))
        address.sun_path[0] = '\0'; // a name that is not in the file system
    const int descriptor = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return false;
    const auto length = socklen_t(offsetof(sockaddr_un, sun_path) + size_t(path.size()));
    const bool sent = sendto(descriptor, lines.constData(), size_t(lines.size()), MSG_NOSIGNAL,
                             reinterpret_cast<const sockaddr *>(&address), length)
        == lines.size();
    close(descriptor);
    return sent;
}

std::chrono::milliseconds watchdogInterval()
{
    if (!isStartedByManager() || !isMeantForUs("WATCHDOG_PID"))
        return std::chrono::milliseconds(0);
    const auto limit = std::chrono::microseconds(qgetenv("WATCHDOG_USEC").toLongLong());
    return std::chrono::duration_cast<std::chrono::milliseconds>(limit / 2);
}

void logToJournal()
{
    if (stderrIsJournal())
        qInstallMessageHandler(writeToJournal);
}
