#include "clientnews.h"

#include <QMutexLocker>

ClientNews::ClientNews()
{
    qRegisterMetaType<HistoryOutcome>();
    qRegisterMetaType<CommandAnswer>();
}

void ClientNews::eventBegan(int event, const EventOnset &onset)
{
    const QMutexLocker lock(&m_mutex);
    m_onsets.insert(event, onset);
}

void ClientNews::eventEnded(int event)
{
    const QMutexLocker lock(&m_mutex);
    m_onsets.remove(event);
}

QMap<int, EventOnset> ClientNews::onsets() const
{
    const QMutexLocker lock(&m_mutex);
    return m_onsets;
}

void ClientNews::setLink(const LinkNews &link)
{
    {
        const QMutexLocker lock(&m_mutex);
        m_link = link;
    }
    emit linkChanged();
}

LinkNews ClientNews::link() const
{
    const QMutexLocker lock(&m_mutex);
    return m_link;
}

void ClientNews::tell(const CommandAnswer &answer)
{
    {
        const QMutexLocker lock(&m_mutex);
        m_answers.append(answer);
    }
    QMetaObject::invokeMethod(this, &ClientNews::deliver); // queued from another thread
}

void ClientNews::tell(const HistoryOutcome &outcome)
{
    {
        const QMutexLocker lock(&m_mutex);
        m_outcomes.append(outcome);
    }
    QMetaObject::invokeMethod(this, &ClientNews::deliver); // queued from another thread
}

void ClientNews::deliver()
{
    QVector<CommandAnswer> answers;
    QVector<HistoryOutcome> outcomes;
    {
        const QMutexLocker lock(&m_mutex);
        answers.swap(m_answers);
        outcomes.swap(m_outcomes);
    }
    for (const CommandAnswer &answer : qAsConst(answers))
        emit commandAnswered(answer);
    for (const HistoryOutcome &outcome : qAsConst(outcomes))
        emit historyExported(outcome);
}
