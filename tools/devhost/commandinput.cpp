#include "commandinput.h"

#include <cerrno>
#include <unistd.h>

namespace {
constexpr int LongestLine = 65536;
}

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
    for (int end = m_rest.indexOf('\n'); end >= 0; end = m_rest.indexOf('\n')) {
        const QString text = QString::fromLocal8Bit(m_rest.left(end));
        m_rest.remove(0, end + 1);
        emit line(text);
    }
    if (m_rest.size() > LongestLine)
        m_rest.clear();
}
