#include "textoutput.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

/** Opens the output once more: O_NONBLOCK on the descriptor itself would hold for everybody who
 *  shares it, the shell among them. */
int openAgain(int descriptor)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !(S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode)))
        return -1;
    const QByteArray name = "/proc/self/fd/" + QByteArray::number(descriptor);
    return ::open(name.constData(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

bool isReady(int descriptor, int timeoutMs)
{
    pollfd entry { descriptor, POLLOUT, 0 };
    return ::poll(&entry, 1, timeoutMs) == 1;
}

} // namespace

TextOutput::TextOutput(int descriptor, QObject *parent)
    : QObject(parent)
    , m_own(openAgain(descriptor))
    , m_descriptor(m_own >= 0 ? m_own : descriptor)
{
}

TextOutput::~TextOutput()
{
    m_notifier.reset();
    if (m_own >= 0)
        ::close(m_own);
}

void TextOutput::writeLine(const QByteArray &line)
{
    if (m_failed)
        return;
    if (m_waiting.size() + line.size() >= mostWaiting) {
        ++m_leftOut;
        return;
    }
    m_waiting += line + '\n';
    writeWaiting();
}

void TextOutput::finish(std::chrono::milliseconds patience)
{
    while (!m_waiting.isEmpty() && !m_failed && isReady(m_descriptor, int(patience.count())))
        writeWaiting();
}

void TextOutput::writeWaiting()
{
    int done = 0;
    int failure = 0;
    // In pieces that a pipe takes whole once it is ready, since a socket may be set to block.
    while (done < m_waiting.size() && failure == 0 && isReady(m_descriptor, 0)) {
        const int piece = qMin(m_waiting.size() - done, PIPE_BUF);
        const ssize_t written = ::write(m_descriptor, m_waiting.constData() + done, size_t(piece));
        if (written > 0)
            done += int(written);
        else if (errno != EINTR)
            failure = errno;
    }
    m_waiting.remove(0, done);
    if (failure != 0 && failure != EAGAIN) {
        m_failed = true;
        m_waiting.clear();
        emit failed();
    }
    if (m_waiting.isEmpty())
        reportLeftOut();
    watch(!m_waiting.isEmpty());
}

void TextOutput::watch(bool waits)
{
    if (!m_notifier && waits) {
        m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Write);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, &TextOutput::writeWaiting);
    }
    if (m_notifier)
        m_notifier->setEnabled(waits);
}

void TextOutput::reportLeftOut()
{
    const int lines = std::exchange(m_leftOut, 0);
    if (lines > 0)
        qWarning("standard output was not read in time: %d lines were left out", lines);
}
