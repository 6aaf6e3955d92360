#include "instancelock.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::error_code lastError()
{
    return { errno, std::generic_category() };
}

// What is wrong with the folder, if anything.
std::error_code makePrivate(const QByteArray &folder)
{
    if (mkdir(folder.constData(), 0700) < 0 && errno != EEXIST)
        return lastError();
    struct stat status = {};
    if (stat(folder.constData(), &status) < 0)
        return lastError();
    if (!S_ISDIR(status.st_mode))
        return std::make_error_code(std::errc::not_a_directory);
    if (status.st_uid != geteuid())
        return std::make_error_code(std::errc::operation_not_permitted);
    const bool closed = (status.st_mode & 077) == 0;
    return closed || chmod(folder.constData(), 0700) == 0 ? std::error_code() : lastError();
}

} // namespace

InstanceLock::~InstanceLock()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

InstanceLock::Outcome InstanceLock::take(const QString &folder)
{
    if (const std::error_code error = makePrivate(QFile::encodeName(folder)))
        return failed(folder, error);
    const QString path = folder + QStringLiteral("/lock");
    m_descriptor =
        open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_descriptor < 0)
        return failed(path, lastError());
    if (flock(m_descriptor, LOCK_EX | LOCK_NB) == 0)
        return Outcome::Locked;
    const std::error_code error = lastError();
    return error == std::errc::operation_would_block ? Outcome::Taken : failed(path, error);
}

InstanceLock::Outcome InstanceLock::failed(const QString &path, const std::error_code &error)
{
    m_error = path + QStringLiteral(": ") + qt_error_string(error.value());
    return Outcome::Failed;
}
