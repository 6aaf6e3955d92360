#include "statusreport.h"

#include <QDateTime>

namespace {

constexpr int firstModelId = 4016;
constexpr int modelLength = 16;
constexpr int loadId = 4176;

// Exactly 16 bytes, zero bytes included.
QByteArray modelText(const DataStore &data)
{
    QByteArray text;
    for (int i = 0; i < modelLength; ++i)
        text.append(char(data.value(firstModelId + i).toInt()));
    return text;
}

// Every type but TCP reads as a serial port here, unlike in a query: intended.
QString portText(const CycleSettings &settings)
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
        m_text =
            QDateTime::fromSecsSinceEpoch(second).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    }
    return m_text;
}

QVariantMap eventHeader(const CycleSettings &settings, const QString &time)
{
    return { { QStringLiteral("name"), settings.deviceName },
             { QStringLiteral("protocol"), settings.protocol },
             { QStringLiteral("port"), settings.portName },
             { QStringLiteral("timeStr"), time } };
}

QVector<QPair<QString, QVariant>> deviceEntries(const CycleSettings &settings,
                                                const DataStore &data, int state)
{
    return { { QStringLiteral("IdentManufacturer"), settings.manufacturer },
             { QStringLiteral("name"), settings.deviceName },
             { QStringLiteral("upsIdentModel"), modelText(data) },
             { QStringLiteral("portInfo"), portText(settings) },
             { QStringLiteral("state"), state },
             { QStringLiteral("upsAddr"), QString::number(settings.address) },
             { QStringLiteral("upsLoad"), data.value(loadId).toInt() } };
}
