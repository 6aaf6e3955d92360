#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

/**
 * Turns SIGTERM, SIGINT, SIGHUP and requests of the program into one wish to stop, in time.
 *
 * A thread of its own waits for them: when the stop is not done within its limit, because a
 * callback hangs in the main thread, that thread ends the process. A SIGHUP that is ignored from
 * the start (nohup) stays ignored.
 *
 * Threads:   request() from any thread; `stop` is called in the watching thread, once.
 * Ownership: one at a time; its end restores the signals and means that the stop is done.
 * Errors:    isValid() is false when there is no pipe; then the signals are left alone.
 */
class StopSignals
{
public:
    /** @param limit     from the wish to the end of the process
     *  @param exitCode  of a process that had to be ended */
    StopSignals(std::function<void()> stop, std::chrono::milliseconds limit, int exitCode);
    ~StopSignals();
    StopSignals(const StopSignals &) = delete;
    StopSignals &operator=(const StopSignals &) = delete;

    bool isValid() const { return m_thread.joinable(); }

    void request();

private:
    void watch() const;

    std::function<void()> m_stop;
    std::chrono::milliseconds m_limit;
    int m_exitCode;
    int m_readEnd = -1;
    std::thread m_thread;
};
