#include "devicespec.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace {

/** "key=value" pairs parted by commas; a part without "=" belongs to the value before it,
 *  because the settings of a port hold commas themselves. */
QList<QPair<QString, QString>> keysAndValues(const QString &text)
{
    QList<QPair<QString, QString>> pairs;
    for (const QString &part : text.split(QLatin1Char(','))) {
        const int equals = part.indexOf(QLatin1Char('='));
        if (equals < 0 && !pairs.isEmpty())
            pairs.last().second += QLatin1Char(',') + part;
        else
            pairs.append({ part.left(qMax(equals, 0)).trimmed(), part.mid(equals + 1).trimmed() });
    }
    return pairs;
}

/** Parts "127.0.0.1:1502", "[::1]:1502" or "host" into host and port. */
bool readPeer(const QString &text, DeviceSpec &device)
{
    static const QRegularExpression form(
        QStringLiteral(R"(^(?:\[([^\]]+)\]|([^:\[\]]+))(?::(\d{1,5}))?$)"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return false;
    device.host = match.captured(1) + match.captured(2);
    if (!match.captured(3).isEmpty())
        device.tcpPort = match.captured(3).toInt();
    return device.tcpPort >= 1 && device.tcpPort <= 65535;
}

bool readWhole(const QString &text, int least, int most, int &number)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok || value < least || value > most)
        return false;
    number = value;
    return true;
}

bool isOneOf(const QString &text, const char *letters)
{
    return text.size() == 1 && QLatin1String(letters).contains(text.at(0).toLower());
}

/** What serial.ini takes at most, in ms. */
constexpr int longestTimeout = 25500;

/** The rates that a line really has. */
QString rates()
{
    QStringList texts;
    for (const int rate : lineRates)
        texts << QString::number(rate);
    return texts.join(QLatin1Char(' '));
}

/** What is allowed for a key of this name, for a complaint. */
QString allowed(const QString &key)
{
    if (key == QLatin1String("addr"))
        return QStringLiteral("a unit from 1 to 247, over TCP also 0 and 255");
    if (key == QLatin1String("timeout"))
        return QStringLiteral("milliseconds from 1 to %1").arg(longestTimeout);
    if (key == QLatin1String("tcp"))
        return QStringLiteral("HOST, HOST:PORT or [IPV6]:PORT with a port from 1 to 65535");
    if (key == QLatin1String("settings"))
        return QStringLiteral("RATE,PARITY,DATA,STOP such as 9600,n,8,1; rate %1; parity n, o, e, "
                              "s or m; data bits 5 to 8; stop bits 1 or 2")
            .arg(rates());
    return QStringLiteral("a text that is not empty");
}

QString unusable(const QString &key, const QString &value)
{
    return QStringLiteral("%1=%2 is not usable: it takes %3").arg(key, value, allowed(key));
}

/** The plug-in opens a port at 50 baud, or keeps its old settings, when it cannot read them. */
bool areLineSettings(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    int rate = 0;
    return parts.size() == 4 && readWhole(parts.at(0), 1, 1000000, rate)
        && std::find(std::begin(lineRates), std::end(lineRates), rate) != std::end(lineRates)
        && isOneOf(parts.at(1), lineParities) && isOneOf(parts.at(2), lineDataBits)
        && isOneOf(parts.at(3), lineStopBits);
}

/** @return the reason why the pair is refused, empty when it was taken */
QString takePair(const QString &key, const QString &value, DeviceSpec &device)
{
    bool good = !value.isEmpty();
    if (key == QLatin1String("name"))
        device.name = value;
    else if (key == QLatin1String("port"))
        device.port = value;
    else if (key == QLatin1String("tcp"))
        good = readPeer(value, device);
    else if (key == QLatin1String("addr"))
        good = readWhole(value, 0, 255, device.address);
    else if (key == QLatin1String("timeout"))
        good = readWhole(value, 1, longestTimeout, device.timeout);
    else if (key == QLatin1String("settings"))
        good = areLineSettings(value);
    else
        return QStringLiteral(
                   "unknown key \"%1\": there are name, port, tcp, addr, settings, timeout")
            .arg(key);
    if (!good)
        return unusable(key, value);
    if (key == QLatin1String("settings"))
        device.settings = value.toLower();
    return {};
}

QString complaint(const DeviceSpec &device)
{
    if (device.name.isEmpty())
        return QStringLiteral("it has no name");
    // Names are sections of INI files, where slashes part groups.
    if (device.name.count(QLatin1Char('/')) == device.name.size())
        return QStringLiteral("a name needs more than slashes");
    if (device.port.isEmpty() == device.host.isEmpty())
        return QStringLiteral("it needs either port= or tcp=");
    if (device.isTcp() && (!device.settings.isEmpty() || device.timeout > 0))
        return QStringLiteral("settings= and timeout= belong to a port");
    if (!device.hasUsableAddress())
        return unusable(QStringLiteral("addr"), QString::number(device.address));
    return {};
}

/** The section that a name stands for: slashes at its ends, and doubled ones, do not count. */
QString sectionOf(const QString &name)
{
    return name.split(QLatin1Char('/'), Qt::SkipEmptyParts).join(QLatin1Char('/'));
}

} // namespace

bool DeviceSpec::hasUsableAddress() const
{
    return (address >= 1 && address <= 247) || (isTcp() && (address == 0 || address == 255));
}

QString DeviceSpec::place() const
{
    if (!isTcp())
        return tr("%1, address %2").arg(port).arg(address);
    return tr("%1 port %2, unit %3").arg(host).arg(tcpPort).arg(address);
}

QString DeviceSpec::text() const
{
    QString text = QStringLiteral("name=") + name;
    if (isTcp()) {
        const QString form =
            host.contains(QLatin1Char(':')) ? QStringLiteral("[%1]") : QStringLiteral("%1");
        text += QStringLiteral(",tcp=%1:%2").arg(form.arg(host)).arg(tcpPort);
    } else {
        text += QStringLiteral(",port=") + port;
    }
    text += QStringLiteral(",addr=%1").arg(address);
    if (!settings.isEmpty())
        text += QStringLiteral(",settings=") + settings;
    return timeout > 0 ? text + QStringLiteral(",timeout=%1").arg(timeout) : text;
}

ParsedDevice parseDevice(const QString &text)
{
    DeviceSpec device;
    for (const auto &[key, value] : keysAndValues(text)) {
        const QString error = takePair(key, value, device);
        if (!error.isEmpty())
            return { {}, error };
    }
    const QString error = complaint(device);
    return error.isEmpty() ? ParsedDevice { device, {} } : ParsedDevice { {}, error };
}

Outcome checkBeside(const DeviceSpec &device, const QList<DeviceSpec> &others)
{
    for (const DeviceSpec &other : others) {
        if (device.name == other.name)
            return { DeviceSpec::tr("two devices are named \"%1\"").arg(device.name) };
        if (sectionOf(device.name) == sectionOf(other.name))
            return { DeviceSpec::tr("\"%1\" and \"%2\" are one name in the configuration files")
                         .arg(other.name, device.name) };
        const bool shared = !device.isTcp() && device.port == other.port;
        if (shared && !device.settings.isEmpty() && !other.settings.isEmpty()
            && device.settings != other.settings)
            return { DeviceSpec::tr("%1 and %2 ask for different settings of %3")
                         .arg(other.name, device.name, device.port) };
    }
    return {};
}
