#pragma once

#include "controlserver.h"
#include "instancelock.h"
#include "service.h"

#include <atomic>
#include <functional>

class StopSignals;

/** The callbacks of a service, as its run calls them. */
struct ServiceCallbacks
{
    std::function<bool()> start;
    std::function<void()> stop;
    std::function<bool()> pause;
    std::function<bool()> resume;
    std::function<bool(int)> processCommand;
};

/**
 * One run of a service: the only instance, listening, started, its loop, stopped.
 *
 * Threads: made and used in the thread of the application; askForEnd() in any.
 */
class ServiceRun
{
public:
    ServiceRun(const QString &name, ServiceScope scope, ServiceCallbacks callbacks);

    /** Blocks for as long as the service runs. */
    int exec(std::chrono::milliseconds stopLimit);

private:
    ServiceExit occupy();
    int loop();
    void askForEnd();
    ControlReply answer(const ControlRequest &request);
    ControlReply changePause(bool paused);

    QString m_name;
    ServiceScope m_scope;
    ServiceCallbacks m_callbacks;
    InstanceLock m_lock;
    ControlServer m_server;           // after the lock, so that it goes first
    StopSignals *m_signals = nullptr; // while exec() runs
    std::atomic<bool> m_stopAsked { false };
    bool m_paused = false;
};
