#pragma once

#include <QList>
#include <QMutex>
#include <QMutexLocker>
#include <QString>

#include <optional>

/** One queued control command. */
struct ControlCmd
{
    int controlId = 0;    ///< command number
    QString controlValue; ///< its argument; a file path for the history download
};

/**
 * The commands that wait to be sent, first in, first out.
 *
 * Threads: any; the lock is held only to append or to take one command.
 */
class CommandQueue
{
public:
    void append(const ControlCmd &command)
    {
        const QMutexLocker lock(&m_mutex);
        m_commands.append(command);
    }

    /** The oldest command, which leaves the queue; nothing when there is none. */
    std::optional<ControlCmd> take()
    {
        const QMutexLocker lock(&m_mutex);
        if (m_commands.isEmpty())
            return std::nullopt;
        return m_commands.takeFirst();
    }

    /** Gives the command back that was taken last. */
    void putBack(const ControlCmd &command)
    {
        const QMutexLocker lock(&m_mutex);
        m_commands.prepend(command);
    }

    bool isEmpty() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_commands.isEmpty();
    }

private:
    mutable QMutex m_mutex;
    QList<ControlCmd> m_commands; // guarded by m_mutex
};
