#include "commandinput.h"

#include <cerrno>
#include <unistd.h>
#include <utility>

CommandInput::CommandInput(int descriptor, QObject *parent)
    : QObject(parent)
    , m_descriptor(descriptor)
    , m_notifier(descriptor, QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &CommandInput::read);
}

void CommandInput::read()
{
    char buffer[4096];
    const ssize_t count = ::read(m_descriptor, buffer, sizeof buffer);
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    // The end, or a terminal that belongs to another job now.
    if (count <= 0)
        m_notifier.setEnabled(false);
    else
        m_rest.append(buffer, int(count));
    if (count <= 0 && !m_rest.isEmpty())
        m_rest.append('\n');
    takeLines();
}

void CommandInput::takeLines()
{
    for (int end = m_rest.indexOf('\n'); end >= 0; end = m_rest.indexOf('\n')) {
        const QByteArray bytes = m_rest.left(end);
        m_rest.remove(0, end + 1);
        const bool isTail = std::exchange(m_refusing, false);
        if (isTail)
            continue;
        if (bytes.size() > longestLine)
            emit refused();
        else
            emit line(QString::fromLocal8Bit(bytes));
    }
    if (m_rest.size() <= longestLine)
        return;
    if (!m_refusing)
        emit refused();
    m_refusing = true;
    m_rest.clear();
}
