#include "pollcycle.h"

#include "hostvocabulary.h"
#include "linepause.h"
#include "link/linkstate.h"
#include "portmanage.h"
#include "report/flagchanges.h"
#include "sharedvalue.h"
#include "stopsource.h"

using namespace HostContract;

PollCycle::PollCycle(const Family &family, CycleHost &host, LinkRecord record,
                     const StopSource &stop, const DriverBinding &driver, DataCallback callback,
                     void *context)
    : m_family(family)
    , m_host(host)
    , m_record(record)
    , m_stop(stop)
    , m_link(host, driver, callback, context)
    , m_commands(family, m_link, host, stop)
{
}

void PollCycle::run()
{
    const StopSource::Scope scope(m_stop);
    m_idleCycles = m_commands.hasCommands() ? 0 : m_idleCycles + 1;
    if (isHeldOff())
        return;
    m_link.prepare();
    m_commands.drain();
    if (m_stop.requested())
        return;
    const DeviceSettings settings = m_host.settings();
    const QString time = m_time.now();
    DriverAnswer answer = m_link.query();
    if (answer.delivery != DriverAnswer::Delivery::Asked)
        answer.settings = settings;
    // A query that was broken off, or would have gone to another device than is configured now,
    // says nothing about the device.
    if (m_stop.requested() || answer.delivery == DriverAnswer::Delivery::Later)
        return;
    follow(answer.settings, answer.result != 0, time);
    m_commands.tellFailures(answer.result != 0);
    report(answer.settings);
}

// Another program has the device: it gets neither queries nor commands, and is not lost.
bool PollCycle::isHeldOff()
{
    const bool isHeld = isTaken();
    if (isHeld && !m_isHeldOff)
        m_link.dropSocket();
    m_isHeldOff = isHeld;
    return isHeld;
}

bool PollCycle::hasToTurn() const
{
    return isTaken() != m_isHeldOff;
}

bool PollCycle::isTaken() const
{
    return LinePause::isOn(deviceLocation(m_host.settings()));
}

void PollCycle::follow(const DeviceSettings &settings, bool answered, const QString &time)
{
    const LinkStep step = nextLink(m_record.state, m_record.failCount, answered, settings.retries);
    m_record.failCount = step.failCount;
    if (step.limitReached && settings.communicationType == 0 && !m_keepPort)
        m_host.reopenPort();
    if (!step.restored && !step.lost)
        return;
    QVariantMap map = eventHeader(settings, time);
    map.insert(Key::description(), settings.deviceName);
    map.insert(Key::state(), step.state);
    if (step.lost)
        map.insert(Key::lost(), 1);
    postLinkChange(step, map);
}

void PollCycle::postLinkChange(const LinkStep &step, const QVariantMap &map)
{
    // The order matters to receivers that look at the state: "lost" is told before it is set.
    if (step.lost)
        m_host.post(LinkLostEvent, map);
    setShared(m_record.state, step.state);
    m_host.linkChanged(step.state, TimeText::read(map.value(Key::time()).toString()));
    if (step.restored)
        m_host.post(LinkRestoredEvent, map);
    m_host.post(StatusChangedEvent, map);
}

void PollCycle::report()
{
    report(m_host.settings());
}

void PollCycle::report(const DeviceSettings &settings)
{
    QVariantMap map = eventHeader(settings, m_time.now());
    map.insert(Key::lost(), 0);
    const DataReport values = m_values.report();
    const bool appeared = postFlagChanges(map, values);
    map.insert(Key::data(), QVariant::fromValue(values));
    if (appeared) {
        map.insert(Key::alarmAppeared(), 1);
        map.insert(Key::state(), m_record.state);
        m_host.post(StatusChangedEvent, map);
    }
    m_host.post(DataReportEvent, map);
    m_host.publish(m_values, deviceEntries(settings, m_family.ids, values, m_record.state));
}

// What is reported so far changes with each event: a receiver in this thread may look.
bool PollCycle::postFlagChanges(QVariantMap &map, const DataReport &values)
{
    const FlagChanges found = findFlagChanges(values, m_record.reportedStates,
                                              m_family.events.size(), m_family.specialFlags);
    // What one report tells began at once; most tell nothing.
    const QDateTime now = found.changes.isEmpty() ? QDateTime() : QDateTime::currentDateTime();
    for (const FlagChange &change : found.changes) {
        const bool isSpecial = !change.alarmId;
        if (isSpecial)
            m_record.reportedStates.insert(change.key, change.alarmState);
        else
            map.insert(Key::alarmId(), *change.alarmId);
        map.insert(Key::alarmState(), change.alarmState);
        if (!isSpecial)
            noteOnset(change.key, change.alarmState == 1, now);
        m_host.post(change.type, map);
        if (!isSpecial)
            m_record.reportedStates.insert(change.key, change.alarmState);
    }
    m_record.reportedStates = found.reportedStates;
    m_hasReported = m_hasReported || !values.isEmpty();
    return found.appeared;
}

void PollCycle::noteOnset(int event, bool appears, const QDateTime &now)
{
    if (appears)
        m_host.eventBegan(event, { now, m_hasReported });
    else
        m_host.eventEnded(event);
}
