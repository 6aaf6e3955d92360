#include "hostevent.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace {

struct TypeName
{
    int type;
    const char *text;
};

// clang-format off
constexpr TypeName typeNames[] = {
    { ParameterRequest,      QT_TRANSLATE_NOOP("HostEvent", "parameter request") },
    { CommunicationRestored, QT_TRANSLATE_NOOP("HostEvent", "communication restored") },
    { CommunicationLost,     QT_TRANSLATE_NOOP("HostEvent", "communication lost") },
    { HistoryResult,         QT_TRANSLATE_NOOP("HostEvent", "history result") },
    { StateChanged,          QT_TRANSLATE_NOOP("HostEvent", "state changed") },
    { EventFlagChanged,      QT_TRANSLATE_NOOP("HostEvent", "event") },
    { DataReport,            QT_TRANSLATE_NOOP("HostEvent", "report") },
    { InputFlagChanged,      QT_TRANSLATE_NOOP("HostEvent", "abnormal input") },
    { BatteryFlagChanged,    QT_TRANSLATE_NOOP("HostEvent", "battery voltage low") },
};

constexpr const char *kindNames[] = { "appear", "disappear", "lost", "restored", "result" };
// clang-format on

/** A float as the shortest number that reads back the same: 0.1 rather than 0.100000001. */
QJsonValue floatValue(float value)
{
    if (!std::isfinite(value))
        return QJsonValue::Null;
    char text[32];
    const std::to_chars_result end = std::to_chars(text, text + sizeof text, value);
    return QByteArray(text, int(end.ptr - text)).toDouble();
}

QJsonValue jsonValue(const QVariant &value)
{
    if (value.userType() == QMetaType::Float)
        return floatValue(value.toFloat());
    if (value.userType() == QMetaType::QByteArray)
        return QString::fromLatin1(value.toByteArray());
    if (value.userType() != qMetaTypeId<DataMap>())
        return QJsonValue::fromVariant(value);
    QJsonObject object;
    const DataMap data = value.value<DataMap>();
    for (auto it = data.constBegin(); it != data.constEnd(); ++it)
        object.insert(QString::number(it.key()), jsonValue(it.value()));
    return object;
}

/** Entries that a line of text leaves out: its beginning says them, or they are for programs. */
constexpr const char *hiddenKeys[] = { "name", "timeStr", "protocol", "port",
                                       "data", "alarmId", "dis_alarm" };

bool isShown(const HostEvent &event, const QString &key, const QVariant &value)
{
    const auto isKey = [&key](const char *hidden) { return key == QLatin1String(hidden); };
    if (std::any_of(std::begin(hiddenKeys), std::end(hiddenKeys), isKey))
        return false;
    if (key == QLatin1String("desc"))
        return value.toString() != event.device();
    return key != QLatin1String("lost") || value.toInt() != 0;
}

} // namespace

DataMap HostEvent::data() const
{
    return map.value(QStringLiteral("data")).value<DataMap>();
}

bool HostEvent::isRequest() const
{
    // The result of a history download carries a command number too.
    const QVariant id = map.value(QStringLiteral("controlId"));
    return id.isValid() && type != HistoryResult
        && (type == ParameterRequest || type == id.toInt());
}

QString kindName(LogEntry::Kind kind)
{
    return QString::fromLatin1(kindNames[size_t(kind)]);
}

QString eventName(int type)
{
    for (const TypeName &row : typeNames)
        if (row.type == type)
            return QCoreApplication::translate("HostEvent", row.text);
    return QStringLiteral("event %1").arg(type);
}

QByteArray eventJson(const HostEvent &event)
{
    QJsonObject object;
    for (auto it = event.map.constBegin(); it != event.map.constEnd(); ++it)
        object.insert(it.key(), jsonValue(it.value()));
    object.insert(QStringLiteral("type"), event.type);
    object.insert(QStringLiteral("received"), event.received.toString(Qt::ISODateWithMs));
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QString flagText(const HostEvent &event, const QStringList &eventTexts)
{
    const int index = event.map.value(QStringLiteral("alarmId"), -1).toInt();
    return eventTexts.value(index, QStringLiteral("unknown event %1").arg(index));
}

QString eventText(const HostEvent &event, const QStringList &eventTexts)
{
    QString line = QStringLiteral("%1 %2 %3 %4")
                       .arg(event.received.toString(QStringLiteral("hh:mm:ss")), event.device())
                       .arg(event.type)
                       .arg(eventName(event.type));
    if (event.type == EventFlagChanged)
        return line + QStringLiteral(": ") + flagText(event, eventTexts);
    if (event.type == DataReport)
        return line + QStringLiteral(": %1 values").arg(event.data().size());
    QStringList parts;
    for (auto it = event.map.constBegin(); it != event.map.constEnd(); ++it)
        if (isShown(event, it.key(), it.value()))
            parts << it.key() + QLatin1Char('=') + it.value().toString();
    return parts.isEmpty() ? line : line + QStringLiteral(": ") + parts.join(QLatin1String(", "));
}
