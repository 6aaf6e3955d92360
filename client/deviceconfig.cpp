#include "deviceconfig.h"

#include "hostfile.h"
#include "sharedwiththelast.h"

#include <limits>

namespace {

struct NumberRow
{
    const char *key;
    int DeviceSettings::*member;
    int standard; // when the key is missing
    int lowest;   // outside of the limits the value is kept, but reported
    int highest;
};

constexpr int lowestInt = std::numeric_limits<int>::min();
constexpr int highestInt = std::numeric_limits<int>::max();

// clang-format off
constexpr NumberRow numberRows[] = {
    { "/addr",     &DeviceSettings::unit,                1, lowestInt, highestInt }, // see checkUnit()
    { "/retries",  &DeviceSettings::retries,             5, 1,       1000 },
    { "/protocol", &DeviceSettings::protocol,            0, 0, highestInt },
    { "/interval", &DeviceSettings::interval,            5, 0,      86400 },
    { "/commType", &DeviceSettings::communicationType,   0, 0,          1 },
    { "/port",     &DeviceSettings::tcpPort,           502, 1,      65535 },
};
// clang-format on

void checkRange(HostFile &file, const QString &key, int value, int lowest, int highest)
{
    if (value < lowest || value > highest)
        file.report(QStringLiteral("%1=%2 is outside of %3 to %4")
                        .arg(key)
                        .arg(value)
                        .arg(lowest)
                        .arg(highest));
}

// A command to unit 0 of a line goes to all its devices, and no device has a unit above 247; over
// TCP, where the address finds the device, 0 and 255 are usual.
void checkUnit(HostFile &file, const QString &key, const DeviceSettings &settings)
{
    const bool isTcp = settings.communicationType == tcpCommunication;
    if (!isTcp || (settings.unit != 0 && settings.unit != 255))
        checkRange(file, key, settings.unit, 1, 247);
}

} // namespace

DeviceConfig readDeviceConfig(const QString &directory, const QString &deviceName, int eventCount)
{
    DeviceConfig config;
    DeviceSettings &settings = config.settings;
    settings.deviceName = deviceName;
    HostFile parameters(directory + QLatin1String("/param.ini"));
    settings.languageFlag =
        hostLanguage(parameters) == 0 ? QStringLiteral("1") : QStringLiteral("0");

    HostFile file(directory + QLatin1String("/dev.ini"));
    settings.portName = file.text(deviceName + QLatin1String("/portName"), QStringLiteral("COM1"));
    settings.ipAddress = file.text(deviceName + QLatin1String("/ipAddr"), QString());
    for (const NumberRow &row : numberRows) {
        const QString key = deviceName + QLatin1String(row.key);
        settings.*row.member = file.number(key, row.standard);
        checkRange(file, key, settings.*row.member, row.lowest, row.highest);
    }
    checkUnit(file, deviceName + QLatin1String("/addr"), settings);
    for (int i = 1; i <= eventCount; ++i) {
        const QString key = deviceName + QStringLiteral("/eventChooseList/%1").arg(i);
        settings.eventChoice.insert(i - 1, file.number(key, 0));
    }
    settings.eventChoice = sharedWithTheLast(settings.eventChoice);
    if (!file.hasGroup(deviceName))
        file.report(QStringLiteral("nothing about \"%1\": the defaults are used, port %2")
                        .arg(deviceName, settings.portName));
    config.problems = parameters.problems() + file.problems();
    return config;
}
