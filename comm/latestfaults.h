#pragma once

#include <QMap>
#include <QMutex>
#include <QString>
#include <utility>

/**
 * The present fault of each of many things, so that what is tried again and again complains once.
 *
 * A static one is made with `new` and never destroyed: polling threads use it while the process
 * exits.
 *
 * Threads: any.
 */
class LatestFaults
{
public:
    /** Keeps `fault`, empty for none, as what is wrong with `subject`.
     *  @return true when that is a fault and not the one before */
    bool isNew(const QString &subject, const QString &fault)
    {
        const QMutexLocker lock(&m_mutex);
        const QString before = std::exchange(m_latest[subject], fault);
        return !fault.isEmpty() && fault != before;
    }

private:
    QMutex m_mutex;
    QMap<QString, QString> m_latest; // by subject; guarded by m_mutex
};
