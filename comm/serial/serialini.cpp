#include "serial/serialini.h"

#include "latestfaults.h"
#include "regularfile.h"
#include "serial/inisettings.h"
#include "serial/serialsettings.h"

#include <algorithm>
#include <fcntl.h>
#include <limits>
#include <QDebug>
#include <QFile>
#include <QMutex>

namespace {

constexpr char fileName[] = "serial.ini";
constexpr qint64 longestFile = 1 << 20; // bytes
constexpr int longestRead = 25500;      // ms; what a terminal driver can be told

// The file is read at every try to open a port: a fault is worth a line when it is a new one.
void complain(const QString &subject, const QString &fault)
{
    // Never destroyed: see LatestFaults.
    static LatestFaults &faults = *new LatestFaults;
    if (faults.isNew(subject, fault))
        qWarning("%s: %s", fileName, qUtf8Printable(fault));
}

bool isText(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.isPrint(); });
}

// Nothing, with a complaint unless the file is missing, when it cannot be read.
std::optional<IniSettings> readFile(const QString &name)
{
    // One at a time: all clients that want their ports opened read it, and each would take one of
    // the last descriptors.
    static QMutex &mutex = *new QMutex;
    const QMutexLocker lock(&mutex);
    const OpenedFile opened = openRegularFile(fileName, O_RDONLY);
    QFile file;
    if (!opened.failure)
        file.open(opened.descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    if (!file.isOpen()) {
        const QString fault = QStringLiteral("cannot be read, the defaults stand for %1: %2");
        complain(name,
                 opened.isMissing ? QString()
                                  : fault.arg(name, QString::fromLocal8Bit(opened.failure)));
        return std::nullopt;
    }
    const IniSettings settings(file.read(longestFile));
    const int line = settings.firstBadLine();
    complain(QString(),
             file.bytesAvailable() > 0 ? QStringLiteral("is too long, only its first MiB counts")
                 : line > 0
                 ? QStringLiteral("has lines that are no settings, the first is line %1").arg(line)
                 : QString());
    return settings;
}

// The next two return what is wrong, if anything.
QString takeParam(const QString &name, const QString &text, StoredPortSettings &result)
{
    if (!isText(text))
        return QStringLiteral("settings of %1 are no text").arg(name);
    result.param = text;
    const QString remark = remarkOnSettings(text);
    return remark.isEmpty() ? QString()
                            : QStringLiteral("settings of %1 are %2: %3").arg(name, text, remark);
}

QString takeTimeout(const QString &name, const QString &text, StoredPortSettings &result)
{
    bool isNumber = false;
    const qlonglong ms = text.toLongLong(&isNumber);
    const bool fits = isNumber && ms >= 0 && ms <= std::numeric_limits<int>::max();
    if (fits)
        result.timeout = int(ms);
    else if (isNumber && ms > 0)
        result.timeout = longestRead;
    if (fits && ms <= longestRead)
        return {};
    // The line counts tenths of a second in a byte, which wraps: intended.
    return QStringLiteral("timeout of %1 is no time: %2 (allowed: 0 to %3 ms), %4 ms stand for it")
        .arg(name, text)
        .arg(longestRead)
        .arg(quint8(result.timeout / 100) * 100);
}

} // namespace

StoredPortSettings readSerialIni(const QString &name)
{
    StoredPortSettings result;
    const auto settings = readFile(name);
    if (!settings)
        return result;
    QString fault;
    if (const auto param = settings->value(name + QLatin1String("/param"))) {
        fault = takeParam(name, *param, result);
    }
    if (const auto timeout = settings->value(name + QLatin1String("/timeout"))) {
        const QString timeoutFault = takeTimeout(name, *timeout, result);
        fault = timeoutFault.isEmpty() ? fault : timeoutFault;
    }
    complain(name, fault);
    return result;
}
