#pragma once

#include "driverapi.h"

#include <atomic>
#include <functional>
#include <mutex>

/**
 * What the fake driver does when the client calls it; a test that opens the library beside the
 * client sets it through fakeDriver().
 *
 * Threads: any, through the functions below. The actions run in the client's polling thread.
 */
class FakeDriver
{
public:
    using Callback = std::function<void(int id, float value)>;
    using Query = std::function<int(PortDescriptor &port, int address, const Callback &callback)>;
    using Control = std::function<int(PortDescriptor &port, const char *command)>;

    void onQuery(const Query &action) { set(m_query, action); }
    void onControl(const Control &action) { set(m_control, action); }
    Query query() { return get(m_query); }
    Control control() { return get(m_control); }

    std::atomic<int> controlledUnit { 0 }; ///< of the last command

private:
    template <typename Action> void set(Action &member, const Action &action)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        member = action;
    }
    template <typename Action> Action get(const Action &member)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return member;
    }

    std::mutex m_mutex;
    Query m_query;     // guarded by m_mutex
    Control m_control; // guarded by m_mutex
};

extern "C" __attribute__((visibility("default"))) FakeDriver *fakeDriver();
