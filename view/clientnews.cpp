#include "clientnews.h"

#include <QMutexLocker>
#include <QThread>

#include <utility>

namespace {
constexpr int mostWaiting = 1000;
}

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
    // A host may hand a request on while the view still posts it, and has not looked at it itself.
    const bool isEarly = answer.kind == CommandAnswer::Kind::Taken;
    keep(m_answers, answer, !isEarly && thread() == QThread::currentThread());
}

void ClientNews::tell(const HistoryOutcome &outcome)
{
    keep(m_outcomes, outcome, thread() == QThread::currentThread());
}

// The thread of a host without an event loop never takes what waits for it.
template <typename News>
void ClientNews::keep(QVector<News> &waiting, const News &news, bool isAtOnce)
{
    {
        const QMutexLocker lock(&m_mutex);
        waiting.append(news);
        if (waiting.size() > mostWaiting)
            waiting.removeFirst();
        if (!isAtOnce && std::exchange(m_isCalled, true))
            return;
    }
    QMetaObject::invokeMethod(this, &ClientNews::deliver,
                              isAtOnce ? Qt::DirectConnection : Qt::QueuedConnection);
}

void ClientNews::deliver()
{
    QVector<CommandAnswer> answers;
    QVector<HistoryOutcome> outcomes;
    {
        const QMutexLocker lock(&m_mutex);
        m_isCalled = false;
        answers.swap(m_answers);
        outcomes.swap(m_outcomes);
    }
    for (const CommandAnswer &answer : qAsConst(answers))
        emit commandAnswered(answer);
    for (const HistoryOutcome &outcome : qAsConst(outcomes))
        emit historyExported(outcome);
}
