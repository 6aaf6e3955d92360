#include "hostfile.h"

#include "regularfile.h"

#include <QCoreApplication>
#include <QFile>

#include <fcntl.h>
#include <limits>

namespace {

constexpr int lookedAt = 4096; // bytes at the start of a file
constexpr int lowestInt = std::numeric_limits<int>::min();
constexpr int highestInt = std::numeric_limits<int>::max();

// QSettings makes keys of almost anything, other encodings and executables included.
bool isBinary(QFile &file)
{
    return file.read(lookedAt).contains('\0');
}

} // namespace

QString hostDirectory()
{
    QString directory = QCoreApplication::applicationDirPath();
    directory.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return directory + QLatin1String("/KOVA/TesselView");
}

// Looks before QSettings does, which would wait for a FIFO.
HostFile::HostFile(const QString &path)
    : m_path(path)
{
    const OpenedFile opened = openRegularFile(QFile::encodeName(path).constData(), O_RDONLY);
    if (opened.isMissing)
        return;
    QFile file;
    if (!opened.failure)
        file.open(opened.descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    if (file.isOpen())
        m_settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
    if (!m_settings || m_settings->status() == QSettings::AccessError)
        report(
            QStringLiteral("cannot be read, defaults are used: %1")
                .arg(opened.failure ? QString::fromLocal8Bit(opened.failure) : file.errorString()));
    else if (m_settings->status() == QSettings::FormatError || isBinary(file))
        report(QStringLiteral("is no proper INI file"));
}

bool HostFile::hasGroup(const QString &group) const
{
    if (!m_settings || group.isEmpty())
        return false;
    m_settings->beginGroup(group); // or it would make a list of all devices' keys
    const bool hasKeys = !m_settings->allKeys().isEmpty();
    m_settings->endGroup();
    return hasKeys;
}

// A value with commas and without quotes arrives as a list: its text is put together again.
QString HostFile::text(const QString &key, const QString &standard) const
{
    const QVariant value = m_settings ? m_settings->value(key, standard) : standard;
    return value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(','))
                                                : value.toString();
}

int HostFile::number(const QString &key, int standard)
{
    bool isNumber = false;
    // In 64 bits: QVariant::toInt() cuts what does not fit an int.
    const QVariant found = m_settings ? m_settings->value(key, standard) : standard;
    const qint64 value = found.toLongLong(&isNumber);
    if (isNumber && value >= lowestInt && value <= highestInt)
        return int(value);
    report(QStringLiteral("%1=%2 is no number, 0 is used").arg(key, text(key, {})));
    return 0;
}

void HostFile::report(const QString &problem)
{
    m_problems.append(QStringLiteral("%1: %2").arg(m_path, problem));
}

int hostLanguage(HostFile &parameters)
{
    return parameters.number(QStringLiteral("Language"), 0);
}
