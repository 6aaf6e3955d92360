#include "hostevent.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

using namespace HostContract;

namespace {

struct TypeName
{
    int type;
    const char *text;
};

// clang-format off
constexpr TypeName typeNames[] = {
    { ParameterRequestEvent,      QT_TRANSLATE_NOOP("HostEvent", "parameter request") },
    { LinkRestoredEvent, QT_TRANSLATE_NOOP("HostEvent", "communication restored") },
    { LinkLostEvent,     QT_TRANSLATE_NOOP("HostEvent", "communication lost") },
    { HistoryDownloadedEvent,         QT_TRANSLATE_NOOP("HostEvent", "history result") },
    { StatusChangedEvent,          QT_TRANSLATE_NOOP("HostEvent", "state changed") },
    { FlagChangedEvent,      QT_TRANSLATE_NOOP("HostEvent", "event") },
    { DataReportEvent,            QT_TRANSLATE_NOOP("HostEvent", "report") },
    { AbnormalInputEvent,      QT_TRANSLATE_NOOP("HostEvent", "abnormal input") },
    { BatteryLowEvent,    QT_TRANSLATE_NOOP("HostEvent", "battery voltage low") },
};

constexpr const char *kindNames[] = { "appear", "disappear", "lost", "restored", "result" };
// clang-format on

constexpr char timeFormat[] = "yyyy-MM-dd hh:mm:ss";

struct LinkRow
{
    int type;
    LogEntry::Kind kind;
};

constexpr LinkRow linkRows[] = {
    { LinkRestoredEvent, LogEntry::Kind::Restored },
    { LinkLostEvent, LogEntry::Kind::Lost },
    { HistoryDownloadedEvent, LogEntry::Kind::Result },
};

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
bool isHidden(const QString &key)
{
    return key == Key::name() || key == Key::time() || key == Key::protocol() || key == Key::port()
        || key == Key::data() || key == Key::alarmId() || key == Key::alarmAppeared();
}

bool isShown(const HostEvent &event, const QString &key, const QVariant &value)
{
    if (isHidden(key))
        return false;
    if (key == Key::description())
        return value.toString() != event.device();
    return key != Key::lost() || value.toInt() != 0;
}

/** Whether a downloaded history has a line below its titles. */
bool holdsRecords(const QString &name)
{
    QFile file(name);
    if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    file.readLine();
    return !file.readLine().trimmed().isEmpty();
}

/** The outcome of a download: the plug-in goes by the driver's answer, whatever became of the file. */
QString historyText(const HostEvent &event)
{
    const QString text = event.map.value(Key::description()).toString();
    const QString name = event.map.value(Key::controlValue()).toString();
    return holdsRecords(name)
        ? text
        : QCoreApplication::translate("HostEvent", "%1, but \"%2\" holds no records")
              .arg(text, name);
}

} // namespace

DataMap HostEvent::data() const
{
    return map.value(Key::data()).value<DataMap>();
}

bool HostEvent::isRequest() const
{
    // The result of a history download carries a command number too.
    const QVariant id = map.value(Key::controlId());
    return id.isValid() && type != HistoryDownloadedEvent
        && (type == ParameterRequestEvent || type == id.toInt());
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
    const int index = event.map.value(Key::alarmId(), -1).toInt();
    return eventTexts.value(index, QStringLiteral("unknown event %1").arg(index));
}

QString eventText(const HostEvent &event, const QStringList &eventTexts)
{
    QString line = QStringLiteral("%1 %2 %3 %4")
                       .arg(event.received.toString(QStringLiteral("hh:mm:ss")), event.device())
                       .arg(event.type)
                       .arg(eventName(event.type));
    if (event.type == FlagChangedEvent)
        return line + QStringLiteral(": ") + flagText(event, eventTexts);
    if (event.type == DataReportEvent)
        return line + QStringLiteral(": %1 values").arg(event.data().size());
    QStringList parts;
    for (auto it = event.map.constBegin(); it != event.map.constEnd(); ++it)
        if (isShown(event, it.key(), it.value()))
            parts << it.key() + QLatin1Char('=') + it.value().toString();
    return parts.isEmpty() ? line : line + QStringLiteral(": ") + parts.join(QLatin1String(", "));
}

QString LogEntry::timeText() const
{
    return time.toString(QLatin1String(timeFormat));
}

std::optional<LogEntry> logEntry(const HostEvent &event, const QStringList &eventTexts)
{
    LogEntry entry;
    entry.device = event.device();
    entry.type = event.type;
    entry.time =
        QDateTime::fromString(event.map.value(Key::time()).toString(), QLatin1String(timeFormat));
    if (!entry.time.isValid())
        entry.time = event.received;
    if (event.type == FlagChangedEvent) {
        const int count = eventTexts.size() / 2;
        const int index = event.map.value(Key::alarmId()).toInt();
        entry.kind = index < count ? LogEntry::Kind::Appear : LogEntry::Kind::Disappear;
        entry.flag = index < count ? index : index - count;
        entry.text = flagText(event, eventTexts);
        return entry;
    }
    const auto *row = std::find_if(std::begin(linkRows), std::end(linkRows),
                                   [&](const LinkRow &link) { return link.type == event.type; });
    if (row == std::end(linkRows))
        return {};
    entry.kind = row->kind;
    entry.text = event.type == HistoryDownloadedEvent ? historyText(event) : eventName(event.type);
    return entry;
}
