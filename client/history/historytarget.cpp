#include "history/historytarget.h"

#include "stopsource.h"

#include <QFile>
#include <QSaveFile>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::chrono::seconds patience { 10 }; // with a pipe that nobody empties

// As write(2), but the reader of a pipe that goes away is an error and no signal, which would end
// the host.
ssize_t writeWithoutSignal(int descriptor, const char *bytes, size_t size)
{
    sigset_t brokenPipe = {};
    sigset_t before = {};
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, &before);
    const ssize_t got = ::write(descriptor, bytes, size);
    const int error = errno;
    // Not what somebody else keeps blocked.
    constexpr timespec atOnce = {};
    if (got < 0 && error == EPIPE && !sigismember(&before, SIGPIPE))
        sigtimedwait(&brokenPipe, nullptr, &atOnce);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    errno = error;
    return got;
}

} // namespace

HistoryTarget::HistoryTarget(const QString &path)
    : m_path(path)
{
}

HistoryTarget::~HistoryTarget() = default;

HistoryTarget::Way HistoryTarget::bestWay() const
{
    struct stat file = {};
    if (stat(QFile::encodeName(m_path).constData(), &file) != 0)
        return Way::Replace; // there is nothing to keep
    const bool isOwn = file.st_uid == geteuid() && file.st_gid == getegid();
    return S_ISREG(file.st_mode) && file.st_nlink == 1 && isOwn ? Way::Replace : Way::InPlace;
}

bool HistoryTarget::open(Way way)
{
    m_isReplacing = way == Way::Replace;
    m_renameRefused = false;
    m_written = 0;
    m_error.clear();
    if (m_isReplacing) {
        m_file = std::make_unique<QSaveFile>(m_path);
        if (!m_file->open(QIODevice::WriteOnly))
            fail(m_file->errorString());
    } else {
        openInPlace();
    }
    m_wasOpened = m_error.isEmpty();
    return m_wasOpened;
}

// Never waits for the other end of a pipe.
void HistoryTarget::openInPlace()
{
    auto file = std::make_unique<QFile>(m_path);
    const int descriptor = ::open(QFile::encodeName(m_path).constData(),
                                  O_WRONLY | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666);
    const int error = errno;
    if (descriptor < 0
        || !file->open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered,
                       QFileDevice::AutoCloseHandle))
        fail(qt_error_string(error));
    m_file = std::move(file);
}

bool HistoryTarget::isSameAs(int descriptor) const
{
    struct stat own = {};
    struct stat other = {};
    return m_file && fstat(m_file->handle(), &own) == 0 && fstat(descriptor, &other) == 0
        && own.st_dev == other.st_dev && own.st_ino == other.st_ino;
}

void HistoryTarget::write(const std::string &lines)
{
    const auto size = qint64(lines.size());
    if (!m_error.isEmpty())
        return;
    if (m_isReplacing ? m_file->write(lines.data(), size) == size : writeAll(lines.data(), size))
        m_written += size;
    else if (m_isReplacing)
        fail(m_file->errorString());
}

bool HistoryTarget::writeAll(const char *bytes, qint64 size)
{
    if (m_written == 0 && !m_file->isSequential())
        m_file->resize(0);
    while (size > 0) {
        const ssize_t got = writeWithoutSignal(m_file->handle(), bytes, size_t(size));
        const int error = errno;
        if (got >= 0) {
            bytes += got;
            size -= got;
        } else if (error == EAGAIN
                   && StopSource::waitFor(m_file->handle(), POLLOUT, patience)
                       != StopSource::Wait::Ready) {
            fail(QStringLiteral("nobody reads it"));
        } else if (error != EAGAIN && error != EINTR) {
            fail(qt_error_string(error));
        }
        if (!m_error.isEmpty())
            return false;
    }
    return true;
}

bool HistoryTarget::commit()
{
    if (m_isReplacing) {
        auto &file = static_cast<QSaveFile &>(*m_file);
        // commit() alone does not notice that what was still buffered found no room.
        if (m_error.isEmpty() && (!file.flush() || !file.commit())) {
            m_renameRefused = file.error() == QFileDevice::RenameError;
            fail(file.errorString());
        }
        return m_error.isEmpty();
    }
    if (!m_error.isEmpty() && !m_file->isSequential())
        m_file->resize(m_written);
    m_file->close();
    return m_error.isEmpty();
}

void HistoryTarget::fail(const QString &error)
{
    if (m_error.isEmpty())
        m_error = error.isEmpty() ? QStringLiteral("cannot be written") : error;
}
