#include "pollthread.h"

#include "plugin/collectthread.h"

namespace {
constexpr unsigned long PauseMs = 100;
}

PollThread::PollThread(CollectThread &client)
    : m_client(client)
{
}

PollThread::~PollThread()
{
    requestStop();
    wait();
}

void PollThread::requestStop()
{
    const QMutexLocker lock(&m_mutex);
    m_stop = true;
    m_wake.wakeAll();
}

void PollThread::run()
{
    QMutexLocker lock(&m_mutex);
    while (!m_stop) {
        lock.unlock();
        m_client.poll();
        lock.relock();
        if (!m_stop)
            m_wake.wait(&m_mutex, PauseMs);
    }
}
