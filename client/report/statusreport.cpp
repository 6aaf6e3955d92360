#include "report/statusreport.h"

#include "hostvocabulary.h"

using namespace HostContract;

namespace {

constexpr char timeFormat[] = "yyyy-MM-dd hh:mm:ss";

// All bytes, zero bytes included.
QByteArray modelText(const KnownIds &ids, const DataReport &data)
{
    QByteArray text;
    for (int i = 0; i < ids.modelLength; ++i)
        text.append(char(integerAt(data, ids.model + i)));
    return text;
}

// Every type but TCP reads as a serial port here, unlike in a query: intended.
QString portText(const DeviceSettings &settings)
{
    if (settings.communicationType == tcpCommunication)
        return QLatin1String("tcp:") + peerText(settings);
    return QStringLiteral("%1-%2").arg(settings.portName, settings.portSettings);
}

} // namespace

QString TimeText::now()
{
    const qint64 second = QDateTime::currentSecsSinceEpoch();
    if (second != m_second) {
        m_second = second;
        m_text = QDateTime::fromSecsSinceEpoch(second).toString(QString::fromLatin1(timeFormat));
    }
    return m_text;
}

QDateTime TimeText::read(const QString &text)
{
    return QDateTime::fromString(text, QString::fromLatin1(timeFormat));
}

QVariantMap eventHeader(const DeviceSettings &settings, const QString &time)
{
    return { { Key::name(), settings.deviceName },
             { Key::protocol(), settings.protocol },
             { Key::port(), settings.portName },
             { Key::time(), time } };
}

DeviceEntries deviceEntries(const DeviceSettings &settings, const KnownIds &ids,
                            const DataReport &data, int state)
{
    return { { Key::name(), settings.deviceName },
             { Key::model(), modelText(ids, data) },
             { Key::portInfo(), portText(settings) },
             { Key::state(), state },
             { Key::unit(), QString::number(settings.unit) },
             { Key::load(), integerAt(data, ids.load) } };
}
