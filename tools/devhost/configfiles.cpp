#include "configfiles.h"

#include "inilines.h"
#include "systemerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char serialIni[] = "serial.ini";
constexpr int mostBytes = 1024 * 1024; // of serial.ini

// From the application's directory to the files, outermost first.
constexpr const char *directories[] = { "/KOVA", "/KOVA/TesselView", "/KOVA/TesselView/db" };
constexpr const char *fileNames[] = { "/param.ini", "/dev.ini" };

QString iniDirectory(const QString &applicationDirectory)
{
    return applicationDirectory + QLatin1String(directories[std::size(directories) - 1]);
}

/** Puts the values on disk and says what went wrong. */
Outcome finish(QSettings &settings)
{
    settings.sync();
    if (settings.status() == QSettings::NoError)
        return {};
    return { QStringLiteral("cannot write %1").arg(settings.fileName()) };
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

/** What serial.ini holds, or why that is not known. */
struct SerialFile
{
    QByteArray bytes;
    Outcome outcome;
};

/** Which serial.ini is meant, for people. */
QString shownSerialIni()
{
    return QFileInfo(QString::fromLatin1(serialIni)).absoluteFilePath();
}

SerialFile readSerialIni()
{
    // Without waiting: somebody may have put a FIFO there.
    const int descriptor = ::open(serialIni, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const int failure = errno;
    if (descriptor < 0 && failure == ENOENT)
        return {};
    if (descriptor < 0)
        return {
            {}, { QStringLiteral("cannot read %1: %2").arg(shownSerialIni(), systemError(failure)) }
        };
    QFile file;
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)
        || status.st_size > mostBytes) {
        ::close(descriptor);
        return { {}, { QStringLiteral("%1 is no file of settings").arg(shownSerialIni()) } };
    }
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return {
            {}, { QStringLiteral("cannot read %1: %2").arg(shownSerialIni(), file.errorString()) }
        };
    return { file.readAll(), {} };
}

/** Replaces one value; notes it when another one stood there. */
void replace(IniLines &ini, const QString &key, const QString &value, QStringList &notes)
{
    const std::optional<QString> before = ini.value(key);
    if (before == value)
        return;
    if (before)
        notes << QStringLiteral("serial.ini: %1 changed from %2 to %3").arg(key, *before, value);
    ini.setValue(key, value);
}

} // namespace

Outcome writeConfiguration(const QString &applicationDirectory,
                           const HostConfiguration &configuration)
{
    const QString directory = iniDirectory(applicationDirectory);
    if (!QDir().mkpath(directory))
        return { QStringLiteral("cannot make the directory %1").arg(directory) };
    // QSettings would wait for a FIFO.
    for (const char *name : fileNames) {
        const QFileInfo file(directory + QLatin1String(name));
        if (file.exists() && !file.isFile())
            return { QStringLiteral("cannot write %1: it is no file").arg(file.filePath()) };
    }
    QSettings parameters(directory + QLatin1String(fileNames[0]), QSettings::IniFormat);
    parameters.setValue(QStringLiteral("Language"), configuration.language);
    const Outcome written = finish(parameters);
    if (!written.isGood())
        return written;
    QSettings ini(directory + QLatin1String(fileNames[1]), QSettings::IniFormat);
    ini.clear();
    for (const DeviceSpec &device : configuration.devices)
        writeDevice(ini, device, configuration);
    return finish(ini);
}

void removeConfiguration(const QString &applicationDirectory)
{
    const QString directory = iniDirectory(applicationDirectory);
    for (const char *name : fileNames)
        for (const char *suffix : { "", ".lock" })
            QFile::remove(directory + QLatin1String(name) + QLatin1String(suffix));
    for (auto it = std::rbegin(directories); it != std::rend(directories); ++it)
        QDir().rmdir(applicationDirectory + QLatin1String(*it));
}

SerialSettings writeSerialSettings(const QList<DeviceSpec> &devices)
{
    const auto asks = [](const DeviceSpec &device) {
        return !device.settings.isEmpty() || device.timeout > 0;
    };
    if (std::none_of(devices.begin(), devices.end(), asks))
        return {};
    const SerialFile before = readSerialIni();
    if (!before.outcome.isGood())
        return { {}, before.outcome };
    SerialSettings result;
    IniLines ini(before.bytes);
    for (const DeviceSpec &device : devices) {
        if (!device.settings.isEmpty())
            replace(ini, device.port + QLatin1String("/param"), device.settings, result.notes);
        if (device.timeout > 0)
            replace(ini, device.port + QLatin1String("/timeout"), QString::number(device.timeout),
                    result.notes);
    }
    if (ini.bytes() == before.bytes)
        return result;
    QSaveFile file((QString::fromLatin1(serialIni)));
    file.setDirectWriteFallback(true); // the file may be ours and its directory not
    if (!file.open(QIODevice::WriteOnly) || file.write(ini.bytes()) < 0 || !file.commit())
        result.outcome = {
            QStringLiteral("cannot write %1: %2").arg(shownSerialIni(), file.errorString())
        };
    return result;
}
