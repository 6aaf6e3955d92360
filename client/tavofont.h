#pragma once

#include "datareport.h"

#include <QList>
#include <QMutex>
#include <QObject>
#include <QStringList>
#include <QVector>

#include <atomic>

struct DataLogColumn;

/**
 * The translated words of the data log and the event log, one object for the process.
 *
 * The lists are translated once, when the object is built, in the language of that moment.
 *
 * Threads:   any; the lists never change, and copies of them are shared.
 * Ownership: the process; never destroyed.
 */
class tavoFont : public QObject
{
    Q_OBJECT

public:
    explicit tavoFont(QObject *parent = nullptr);

    /** The one object, made by the first call. */
    static tavoFont *instance();

    /** The titles of a data-log row, units included. */
    QList<QString> getDataLogDesc();

    /** The event texts: event k of n appears at index k and disappears at index n + k. */
    QList<QString> getEventLogDesc() { return m_eventTexts; }

    /** One data-log row, a text for each of getDataLogDesc().
     *  @param data  data identifier -> value; missing ones read as 0 */
    QList<QString> changeLogData(QMap<int, QVariant> data);

    /** Keeps a copy of `data` as the last data. */
    void flushData(QMap<int, QVariant> data);

private:
    static QString columnText(const DataLogColumn &column, const QStringList &states,
                              const DataReport &data);

    static std::atomic<tavoFont *> m_instance;

    QList<QString> m_dataLogTexts;
    QVector<QStringList> m_states; // of each logged column; empty where it is none
    QList<QString> m_eventTexts;
    QMutex m_mutex;
    DataReport m_lastData; // guarded by m_mutex
};
