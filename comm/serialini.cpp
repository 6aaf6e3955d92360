#include "serialini.h"

#include "latestfaults.h"

#include <QDebug>
#include <QFile>
#include <QSettings>
#include <QStringList>
#include <QVariant>

namespace {

const QLatin1String fileName("serial.ini");

// The file is read at every try to open a port: a fault is worth a line when it is a new one.
void complain(const QString &port, const QString &fault)
{
    static LatestFaults faults;
    if (faults.isNew(port, fault))
        qWarning("%s: %s", fileName.data(), qUtf8Printable(fault));
}

QString withoutLeadingSlash(QString key)
{
    while (key.startsWith(QLatin1Char('/')))
        key.remove(0, 1);
    return key;
}

// QSettings drops the leading slash of the key that it looks for, but not of one that somebody
// typed into the file, and then cannot find it: "/dev/ttyS0/param=9600,n,8,1".
QVariant handTyped(const QString &key)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString section;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
            section = line.mid(1, line.size() - 2) + QLatin1Char('/');
            continue;
        }
        const int equals = line.indexOf(QLatin1Char('='));
        if (equals < 0 || withoutLeadingSlash(section + line.left(equals).trimmed()) != key)
            continue;
        return line.mid(equals + 1).remove(QLatin1Char('"')).trimmed();
    }
    return {};
}

QVariant valueOf(const QSettings &settings, const QString &key)
{
    if (settings.contains(key))
        return settings.value(key);
    const QString plain = withoutLeadingSlash(key);
    return settings.allKeys().contains(QLatin1Char('/') + plain) ? handTyped(plain) : QVariant();
}

// Without quotes the commas of "9600,n,8,1" make a list.
QString textOf(const QVariant &value)
{
    return value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(','))
                                                : value.toString();
}

bool isText(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.isPrint(); });
}

} // namespace

StoredPortSettings readSerialIni(const QString &name)
{
    const QSettings settings(fileName, QSettings::IniFormat);
    StoredPortSettings result;
    if (settings.status() == QSettings::AccessError) {
        complain(name, QStringLiteral("cannot be read, the defaults stand for %1").arg(name));
        return result;
    }
    QString fault;
    const QVariant param = valueOf(settings, name + QLatin1String("/param"));
    if (param.isValid() && isText(textOf(param)))
        result.param = textOf(param);
    else if (param.isValid())
        fault = QStringLiteral("settings of %1 are no text").arg(name);

    const QVariant timeout = valueOf(settings, name + QLatin1String("/timeout"));
    bool isNumber = false;
    const int ms = timeout.toInt(&isNumber);
    if (isNumber && ms >= 0)
        result.timeout = ms;
    else if (timeout.isValid())
        fault = QStringLiteral("timeout of %1 is no time: %2").arg(name, textOf(timeout));
    complain(name, fault);
    // Told by Qt only when it has read a file that changed. The other lines stand.
    if (settings.status() == QSettings::FormatError)
        qWarning("%s: has lines that are no settings", fileName.data());
    return result;
}
