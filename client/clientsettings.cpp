#include "clientsettings.h"

#include "portmanage.h"
#include "sharedvalue.h"

// The settings that the host sees in its own base class, paired with the client's.
template <typename Visit>
void ClientSettings::visitShared(DeviceSettings &settings, const Visit &visit)
{
    visit(m_host.protocol, settings.protocol);
    visit(m_host.interval, settings.interval);
    visit(m_host.retries, settings.retries);
    visit(m_host.ipAddress, settings.ipAddress);
    visit(m_host.tcpPort, settings.tcpPort);
    visit(m_host.eventChoice, settings.eventChoice);
}

DeviceSettings ClientSettings::current()
{
    void *const manager = shared(m_host.portHandle);
    const QMutexLocker lock(&m_mutex);
    DeviceSettings current = m_settings;
    visitShared(current, [](const auto &member, auto &setting) { setting = member; });
    current.deviceName = m_host.deviceName;
    current.ports = manager ? static_cast<PortManage *>(manager) : PortManage::instance();
    return current;
}

void ClientSettings::replace(const DeviceSettings &settings)
{
    const QMutexLocker lock(&m_mutex);
    m_settings = settings;
    visitShared(m_settings, [](auto &member, auto &setting) { member = setting; });
}

void ClientSettings::setPort(const QString &name, const QString &settings)
{
    const QMutexLocker lock(&m_mutex);
    m_settings.portName = name;
    m_settings.portSettings = settings;
}

void ClientSettings::setUnit(int unit)
{
    const QMutexLocker lock(&m_mutex);
    m_settings.unit = unit;
}

void ClientSettings::raiseInterval()
{
    const QMutexLocker lock(&m_mutex);
    setShared(m_host.interval, qMax(m_host.interval, 1));
}

QString ClientSettings::portToReopen()
{
    const QMutexLocker lock(&m_mutex);
    m_portReopened = true;
    return m_settings.portName;
}
