#pragma once

#include "cyclehost.h"

#include <QMutexLocker>
#include <QVector>

#include <functional>

/** What a client is to its cycle, without a client. */
class HostDouble final : public CycleHost
{
public:
    DeviceSettings settings() override
    {
        const QMutexLocker lock(&m_mutex);
        return m_settings;
    }
    void post(int type, const QVariantMap &map) override
    {
        if (onPost)
            onPost(type, map);
    }
    void reopenPort() override { }
    void publish(LatestValues &, const DeviceEntries &entries) override { published = entries; }
    void eventBegan(int event, const EventOnset &onset) override { onsets.insert(event, onset); }
    void eventEnded(int event) override { onsets.remove(event); }
    void linkChanged(int, const QDateTime &time) override { linkTime = time; }
    void commandAnswered(const CommandAnswer &answer) override { answers.append(answer); }
    void historyExported(const HistoryOutcome &) override { }

    template <typename Change> void change(const Change &change)
    {
        const QMutexLocker lock(&m_mutex);
        change(m_settings);
    }

    std::function<void(int, const QVariantMap &)> onPost;
    QMap<int, EventOnset> onsets;
    QDateTime linkTime;
    QVector<CommandAnswer> answers;
    DeviceEntries published;
    int state = -1;
    int failCount = 0;
    QMap<int, int> reportedStates;

private:
    QMutex m_mutex;
    DeviceSettings m_settings; // guarded by m_mutex
};
