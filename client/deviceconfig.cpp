#include "deviceconfig.h"

#include <QCoreApplication>
#include <QFile>
#include <QSettings>

#include <limits>

namespace {

struct NumberRow
{
    const char *key;
    int DeviceConfig::*member;
    int standard; // when the key is missing
    int lowest;   // outside of the limits the value is kept, but reported
    int highest;
};

constexpr int lowestInt = std::numeric_limits<int>::min();
constexpr int highestInt = std::numeric_limits<int>::max();

// clang-format off
constexpr NumberRow numberRows[] = {
    { "/addr",     &DeviceConfig::address,             1, 0,      255 },
    { "/retries",  &DeviceConfig::retries,             5, 1,     1000 },
    { "/protocol", &DeviceConfig::protocol,            0, 0, highestInt },
    { "/interval", &DeviceConfig::interval,            5, 0,    86400 },
    { "/commType", &DeviceConfig::communicationType,   0, 0,        1 },
    { "/port",     &DeviceConfig::tcpPort,           502, 1,    65535 },
};
// clang-format on

// One of the files, with what is wrong in it.
class IniFile
{
public:
    IniFile(const QString &path, QStringList &problems)
        : m_settings(path, QSettings::IniFormat)
        , m_problems(problems)
    {
        if (m_settings.status() == QSettings::AccessError)
            report(QStringLiteral("cannot be read, defaults are used"));
        else if (m_settings.status() == QSettings::FormatError || isBinary())
            report(QStringLiteral("is no proper INI file"));
    }

    // A value with commas and without quotes arrives as a list: its text is put together again.
    QString text(const QString &key, const QString &standard) const
    {
        const QVariant value = m_settings.value(key, standard);
        return value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(','))
                                                    : value.toString();
    }

    int number(const QString &key, int standard)
    {
        bool isNumber = false;
        // In 64 bits: QVariant::toInt() cuts what does not fit an int.
        const qint64 value = m_settings.value(key, standard).toLongLong(&isNumber);
        if (isNumber && value >= lowestInt && value <= highestInt)
            return int(value);
        report(QStringLiteral("%1=%2 is no number, 0 is used").arg(key, text(key, {})));
        return 0;
    }

    void report(const QString &problem)
    {
        m_problems.append(QStringLiteral("%1: %2").arg(m_settings.fileName(), problem));
    }

private:
    // QSettings makes keys of almost anything, other encodings and executables included.
    bool isBinary() const
    {
        QFile file(m_settings.fileName());
        return file.open(QIODevice::ReadOnly) && file.read(lookedAt).contains('\0');
    }

    static constexpr int lookedAt = 4096; // bytes at the start of the file

    QSettings m_settings;
    QStringList &m_problems;
};

int languageOf(const QString &directory, QStringList &problems)
{
    IniFile file(directory + QLatin1String("/param.ini"), problems);
    return file.number(QStringLiteral("Language"), 0);
}

QString languageFlag(const QString &directory, QStringList &problems)
{
    return languageOf(directory, problems) == 0 ? QStringLiteral("1") : QStringLiteral("0");
}

} // namespace

QString configurationDirectory()
{
    QString directory = QCoreApplication::applicationDirPath();
    directory.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return directory + QLatin1String("/KOVA/") + QLatin1String("TesselView");
}

DeviceConfig readDeviceConfig(const QString &directory, const QString &deviceName, int eventCount)
{
    DeviceConfig config;
    config.languageFlag = languageFlag(directory, config.problems);
    IniFile file(directory + QLatin1String("/dev.ini"), config.problems);
    config.portName = file.text(deviceName + QLatin1String("/portName"), QStringLiteral("COM1"));
    config.ipAddress = file.text(deviceName + QLatin1String("/ipAddr"), QString());
    for (const NumberRow &row : numberRows) {
        const QString key = deviceName + QLatin1String(row.key);
        const int value = file.number(key, row.standard);
        if (value < row.lowest || value > row.highest)
            file.report(QStringLiteral("%1=%2 is outside of %3 to %4")
                            .arg(key)
                            .arg(value)
                            .arg(row.lowest)
                            .arg(row.highest));
        config.*row.member = value;
    }
    for (int i = 1; i <= eventCount; ++i) {
        const QString key = deviceName + QStringLiteral("/eventChooseList/%1").arg(i);
        config.eventChoice.insert(i - 1, file.number(key, 0));
    }
    return config;
}

int readLanguage(const QString &directory)
{
    QStringList problems; // reported whenever the configuration is loaded
    return languageOf(directory, problems);
}
