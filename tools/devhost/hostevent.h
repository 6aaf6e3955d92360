#pragma once

#include "hostvocabulary.h"

#include <QByteArray>
#include <QDateTime>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

using EventMap = QMap<QString, QVariant>;
using DataMap = QMap<int, QVariant>;

/** What a client posted, with the time at which the host took it. */
struct HostEvent
{
    int type = 0;
    EventMap map;
    QDateTime received;

    QString device() const { return map.value(HostContract::Key::name()).toString(); }

    /** The report of a 2007: data identifier -> value. */
    DataMap data() const;

    /** Whether the view asks with it for a command that the client shall carry out. */
    bool isRequest() const;
};

/** One line of the event log. */
struct LogEntry
{
    enum class Kind { Appear, Disappear, Lost, Restored, Result };

    QDateTime time; ///< local, whole seconds
    QString device;
    Kind kind = Kind::Appear;
    int type = 0;
    int flag = -1; ///< number of the event that appeared or disappeared, from 0; else -1
    QString text;

    QString timeText() const;
};

/** What the event log says of an event; nothing for the events that it does not keep. */
std::optional<LogEntry> logEntry(const HostEvent &event, const QStringList &eventTexts);

/** Name of a kind in log files. */
QString kindName(LogEntry::Kind kind);

/** The name of an event type, "event 4711" when it has none. */
QString eventName(int type);

/** An event as one JSON object: "type", "received" (ISO 8601, ms) and all entries of the map; the
 *  data report becomes an object whose keys are the identifiers in decimal. */
QByteArray eventJson(const HostEvent &event);

/** An event as one line of text; a report shows its count of values only. */
QString eventText(const HostEvent &event, const QStringList &eventTexts);

/** The text of the flag that a 2006 reports, taken from getEventLogDesc(). */
QString flagText(const HostEvent &event, const QStringList &eventTexts);
