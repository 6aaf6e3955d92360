#include "pollthread.h"

#include "collectthread.h"

namespace {
constexpr unsigned long pauseMs = 100;
constexpr unsigned long stopMs = 300;
} // namespace

PollThread::PollThread(CollectThread &client)
    : m_client(client)
{
}

PollThread::~PollThread()
{
    stop();
    wait();
}

void PollThread::stop()
{
    {
        const QMutexLocker lock(&m_mutex);
        m_stop = true;
        m_wake.wakeAll();
    }
    wait(stopMs);
}

void PollThread::run()
{
    QMutexLocker lock(&m_mutex);
    while (!m_stop) {
        lock.unlock();
        m_client.poll();
        lock.relock();
        if (!m_stop)
            m_wake.wait(&m_mutex, pauseMs);
    }
}
