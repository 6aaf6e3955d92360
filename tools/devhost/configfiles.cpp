#include "configfiles.h"

#include <QDir>
#include <QSettings>

namespace {

/** Puts the values on disk and says what went wrong. */
QString finish(QSettings &settings)
{
    settings.sync();
    if (settings.status() == QSettings::NoError)
        return {};
    return QStringLiteral("cannot write %1%2")
        .arg(settings.fileName(),
             settings.status() == QSettings::FormatError ? QStringLiteral(": it is no INI file")
                                                         : QString());
}

void writeDevice(QSettings &ini, const DeviceSpec &device, const HostConfiguration &configuration)
{
    const QString prefix = device.name;
    ini.setValue(prefix + QLatin1String("/portName"), device.port);
    ini.setValue(prefix + QLatin1String("/addr"), device.address);
    ini.setValue(prefix + QLatin1String("/retries"), configuration.retries);
    ini.setValue(prefix + QLatin1String("/protocol"), 0);
    ini.setValue(prefix + QLatin1String("/interval"), configuration.interval);
    ini.setValue(prefix + QLatin1String("/commType"), device.isTcp() ? 1 : 0);
    ini.setValue(prefix + QLatin1String("/ipAddr"), device.host);
    ini.setValue(prefix + QLatin1String("/port"), device.tcpPort);
    for (int i = 1; i <= configuration.eventCount; ++i)
        ini.setValue(prefix + QStringLiteral("/eventChooseList/%1").arg(i), 1);
}

/** Replaces one value; notes it when another one stood there. */
void replace(QSettings &ini, const QString &key, const QVariant &value, QStringList &notes)
{
    const QVariant before = ini.value(key);
    // A line written by hand without quotes reads as a list.
    const QString text = before.toStringList().join(QLatin1Char(','));
    if (before.isValid() && text != value.toString())
        notes << QStringLiteral("serial.ini: %1 changed from %2 to %3")
                     .arg(key, text, value.toString());
    ini.setValue(key, value);
}

} // namespace

QString writeConfiguration(const QString &applicationDirectory,
                           const HostConfiguration &configuration)
{
    const QString directory = applicationDirectory + QLatin1String("/KOVA/TesselView/db");
    if (!QDir().mkpath(directory))
        return QStringLiteral("cannot make the directory %1").arg(directory);
    QSettings parameters(directory + QLatin1String("/param.ini"), QSettings::IniFormat);
    parameters.setValue(QStringLiteral("Language"), configuration.language);
    const QString error = finish(parameters);
    if (!error.isEmpty())
        return error;
    QSettings ini(directory + QLatin1String("/dev.ini"), QSettings::IniFormat);
    ini.clear();
    for (const DeviceSpec &device : configuration.devices)
        writeDevice(ini, device, configuration);
    return finish(ini);
}

QStringList writeSerialSettings(const QList<DeviceSpec> &devices, QString &error)
{
    QStringList notes;
    QSettings ini(QStringLiteral("serial.ini"), QSettings::IniFormat);
    bool touched = false;
    for (const DeviceSpec &device : devices) {
        if (!device.settings.isEmpty())
            replace(ini, device.port + QLatin1String("/param"), device.settings, notes);
        if (device.timeout > 0)
            replace(ini, device.port + QLatin1String("/timeout"), device.timeout, notes);
        touched = touched || !device.settings.isEmpty() || device.timeout > 0;
    }
    if (touched)
        error = finish(ini);
    return notes;
}
