#include "windowmemory.h"

namespace {

const QString geometryKey = QStringLiteral("window/geometry");
const QString splitterKey = QStringLiteral("window/splitter");
const QString deviceKey = QStringLiteral("window/device");
const QString tabKey = QStringLiteral("window/tab");
const QString devicesKey = QStringLiteral("devices");

} // namespace

WindowMemory::WindowMemory()
    : m_settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("kx300-devhost"),
                 QStringLiteral("window"))
{
}

WindowMemory::Place WindowMemory::place() const
{
    return { m_settings.value(geometryKey).toByteArray(),
             m_settings.value(splitterKey).toByteArray(), m_settings.value(deviceKey).toString(),
             m_settings.value(tabKey).toInt() };
}

void WindowMemory::setPlace(const Place &place)
{
    m_settings.setValue(geometryKey, place.geometry);
    m_settings.setValue(splitterKey, place.splitter);
    m_settings.setValue(deviceKey, place.device);
    m_settings.setValue(tabKey, place.tab);
    m_settings.sync();
}

QList<DeviceSpec> WindowMemory::devices() const
{
    QList<DeviceSpec> devices;
    for (const QString &text : m_settings.value(devicesKey).toStringList()) {
        const ParsedDevice parsed = parseDevice(text);
        const bool fits = parsed.device && checkBeside(*parsed.device, devices).isGood();
        if (fits)
            devices << *parsed.device;
        else
            qWarning("remembered device \"%s\" is left out", qUtf8Printable(text));
    }
    return devices;
}

void WindowMemory::setDevices(const QList<DeviceSpec> &devices)
{
    QStringList texts;
    for (const DeviceSpec &device : devices)
        texts << device.text();
    m_settings.setValue(devicesKey, texts);
    m_settings.sync();
}
