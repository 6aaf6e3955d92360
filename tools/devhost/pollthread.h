#pragma once

#include <QMutex>
#include <QThread>
#include <QWaitCondition>

class CollectThread;

/**
 * Drives one client with poll() every 100 ms, for hosts that do not start clients as threads.
 *
 * A thread for each client: a poll blocks as long as its line is silent, and neither the other
 * devices nor the window may wait for it.
 *
 * Threads:   made, stopped and deleted in the main thread.
 * Ownership: the client stays the caller's; it must live until stop() has returned.
 */
class PollThread : public QThread
{
    Q_OBJECT

public:
    explicit PollThread(CollectThread &client);
    ~PollThread() override;

    /** Asks for the end and waits a moment for it.
     *
     *  A poll that still goes on after that is deep inside the client: releasing the client then is
     *  what makes it return, and the destructor waits for that. */
    void stop();

protected:
    void run() override;

private:
    CollectThread &m_client;
    QMutex m_mutex;
    QWaitCondition m_wake;
    bool m_stop = false; // guarded by m_mutex
};
