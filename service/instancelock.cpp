#include "instancelock.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// 0, or the errno of what is wrong with the folder.
int makePrivate(const QByteArray &folder)
{
    if (mkdir(folder.constData(), 0700) < 0 && errno != EEXIST)
        return errno;
    struct stat status = {};
    if (stat(folder.constData(), &status) < 0)
        return errno;
    if (!S_ISDIR(status.st_mode))
        return ENOTDIR;
    if (status.st_uid != geteuid())
        return EPERM;
    const bool closed = (status.st_mode & 077) == 0;
    return closed || chmod(folder.constData(), 0700) == 0 ? 0 : errno;
}

} // namespace

InstanceLock::~InstanceLock()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

InstanceLock::Outcome InstanceLock::take(const QString &folder)
{
    if (const int error = makePrivate(QFile::encodeName(folder)))
        return failed(folder, error);
    const QString path = folder + QStringLiteral("/lock");
    m_descriptor =
        open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_descriptor < 0)
        return failed(path, errno);
    if (flock(m_descriptor, LOCK_EX | LOCK_NB) == 0)
        return Outcome::Locked;
    return errno == EWOULDBLOCK ? Outcome::Taken : failed(path, errno);
}

InstanceLock::Outcome InstanceLock::failed(const QString &path, int number)
{
    m_error = path + QStringLiteral(": ") + qt_error_string(number);
    return Outcome::Failed;
}
