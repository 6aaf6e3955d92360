#pragma once

#include "comm/driverapi.h"

#include <functional>
#include <mutex>
#include <utility>

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

    void onQuery(Query action)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_query = std::move(action);
    }
    void onControl(Control action)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_control = std::move(action);
    }
    Query query()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_query;
    }
    Control control()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_control;
    }

private:
    std::mutex m_mutex;
    Query m_query;
    Control m_control;
};

extern "C" __attribute__((visibility("default"))) FakeDriver *fakeDriver();
