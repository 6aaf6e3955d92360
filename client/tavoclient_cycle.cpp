// The cycle: query the device, follow the link, report.
#include "flagchanges.h"
#include "hostevents.h"
#include "linkstate.h"
#include "tavoclient.h"

#include "comm/portmanage.h"

#include <QDateTime>
#include <QTimer>

void tavoDataProce(int id, float value, void *context)
{
    (*static_cast<tavoClient **>(context))->parseData(id, value);
}

void tavoClient::run()
{
    m_gate.enter();
    {
        const QMutexLocker lock(&mutex);
        interval = qMax(interval, 1);
    }
    {
        QTimer timer;
        timer.setInterval(100);
        connect(&timer, SIGNAL(timeout()), this, SLOT(threadTimer()), Qt::DirectConnection);
        QTimer::singleShot(0, &timer, SLOT(start()));
        timer.start();
        exec();
    }
    m_link.dropSocket();
    m_gate.leave();
}

void tavoClient::poll()
{
    if (!m_gate.tryEnter())
        return;
    pollIfDue();
    m_gate.leave();
}

void tavoClient::pollIfDue()
{
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    // A clock that was set back must not hold up the next cycle.
    const bool isEarly = now < nextPollTime && now >= m_lastPollTime;
    if (m_stop.requested() || (isEarly && m_commands.isEmpty()))
        return;
    {
        const QMutexLocker lock(&mutex);
        workState = 1;
        nextPollTime = now + interval;
    }
    m_lastPollTime = now;
    threadTimer();
    const QMutexLocker lock(&mutex);
    workState = 0;
}

void tavoClient::threadTimer()
{
    const StopSource::Scope scope(m_stop);
    m_idleCycles = m_commands.isEmpty() ? m_idleCycles + 1 : 0;
    const CycleSettings current = settings();
    m_link.prepare(current);
    drainCommands(current);
    if (m_stop.requested())
        return;
    const QVariantMap map = eventHeader(current, m_time.now());
    const bool answered = m_link.query(current) != 0;
    // A query that was broken off says nothing about the device.
    if (m_stop.requested())
        return;
    followLink(current, answered, map);
    report(current);
}

void tavoClient::followLink(const CycleSettings &current, bool answered, QVariantMap map)
{
    const LinkStep step = nextLink(communicationState, failCount, answered, current.retries);
    failCount = step.failCount;
    if (step.limitReached && current.communicationType == 0 && !m_keepPort)
        reopenPort();
    if (!step.restored && !step.lost)
        return;
    map.insert(QStringLiteral("desc"), current.deviceName);
    map.insert(QStringLiteral("state"), step.state);
    if (step.lost)
        map.insert(QStringLiteral("lost"), 1);
    postLinkChange(step, map);
}

void tavoClient::postLinkChange(const LinkStep &step, const QVariantMap &map)
{
    // The order matters to receivers that look at the state: "lost" is told before it is set.
    if (step.lost)
        emit postDEvent(LinkLostEvent, map);
    {
        const QMutexLocker lock(&mutex);
        communicationState = step.state;
    }
    if (step.restored)
        emit postDEvent(LinkRestoredEvent, map);
    emit postDEvent(StatusChangedEvent, map);
}

void tavoClient::parseData(int id, float value)
{
    m_values.store(id, value);
}

void tavoClient::reportData()
{
    report(settings());
}

void tavoClient::report(const CycleSettings &current)
{
    QVariantMap map = eventHeader(current, m_time.now());
    map.insert(QStringLiteral("lost"), 0);
    const DataStore &data = m_values.all();
    const FlagChanges found = findFlagChanges(data, reportedStates, getEventLogDesc().size() / 2);
    reportedStates = found.reportedStates;
    for (const FlagChange &change : found.changes) {
        if (change.alarmId)
            map.insert(QStringLiteral("alarmId"), *change.alarmId);
        map.insert(QStringLiteral("alarmState"), change.alarmState);
        emit postDEvent(change.type, map);
    }
    map.insert(QStringLiteral("data"), QVariant::fromValue(data));
    if (found.appeared) {
        map.insert(QStringLiteral("dis_alarm"), 1);
        map.insert(QStringLiteral("state"), communicationState);
        emit postDEvent(StatusChangedEvent, map);
    }
    emit postDEvent(DataReportEvent, map);
    updateDeviceInformation(current);
}

void tavoClient::updateDeviceInformation(const CycleSettings &current)
{
    const auto entries = deviceEntries(current, m_values.all(), communicationState);
    const QMutexLocker lock(&mutex);
    m_values.writeTo(deviceInformation); // as flushData() does
    for (const auto &entry : entries)
        deviceInformation.insert(entry.first, entry.second);
}
