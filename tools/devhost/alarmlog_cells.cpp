// What the cells of the event log show.

#include "alarmlog.h"

#include <QFont>
#include <QGuiApplication>

#include <iterator>

namespace {

constexpr char timeFormat[] = "yyyy-MM-dd hh:mm:ss";

// clang-format off
constexpr const char *titles[] = { // by column
    QT_TRANSLATE_NOOP("AlarmLog", "Time"),
    QT_TRANSLATE_NOOP("AlarmLog", "Device"),
    QT_TRANSLATE_NOOP("AlarmLog", "Severity"),
    QT_TRANSLATE_NOOP("AlarmLog", "Event"),
    QT_TRANSLATE_NOOP("AlarmLog", "State"),
    QT_TRANSLATE_NOOP("AlarmLog", "Duration"),
};

constexpr const char *stateTexts[] = { // by AlarmRecord::State
    QT_TRANSLATE_NOOP("AlarmLog", "Active, not acknowledged"),
    QT_TRANSLATE_NOOP("AlarmLog", "Returned, not acknowledged"),
    QT_TRANSLATE_NOOP("AlarmLog", "Active, acknowledged"),
    QT_TRANSLATE_NOOP("AlarmLog", "Returned, acknowledged"),
};

struct UnitRow
{
    qint64 seconds;
    const char *text;
};

constexpr UnitRow unitRows[] = { // descending
    { 86400, QT_TRANSLATE_NOOP("AlarmLog", "%1 d") },
    { 3600,  QT_TRANSLATE_NOOP("AlarmLog", "%1 h") },
    { 60,    QT_TRANSLATE_NOOP("AlarmLog", "%1 min") },
    { 1,     QT_TRANSLATE_NOOP("AlarmLog", "%1 s") },
};
// clang-format on
static_assert(std::size(titles) == AlarmLog::ColumnCount);

} // namespace

QString spanText(qint64 seconds)
{
    QStringList parts;
    for (const UnitRow &unit : unitRows) {
        const bool isLast = unit.seconds == 1 && parts.isEmpty();
        if (seconds >= unit.seconds || isLast)
            parts << AlarmLog::tr(unit.text).arg(seconds / unit.seconds);
        else if (!parts.isEmpty())
            break;
        seconds %= unit.seconds;
        if (parts.size() == 2)
            break;
    }
    return parts.join(QLatin1Char(' '));
}

QVariant AlarmLog::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const AlarmRecord &record = m_records.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return cellText(record, index.column());
    case Qt::ForegroundRole:
        if (record.isOpen() && (index.column() == SeverityColumn || index.column() == State))
            return Severities::color(record.severity(), QGuiApplication::palette());
        return {};
    case Qt::FontRole: {
        QFont font = QGuiApplication::font();
        font.setBold(record.wantsAcknowledging());
        return font;
    }
    case SortRole:
        return sortValue(record, index.column());
    default:
        return {};
    }
}

QVariant AlarmLog::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || role != Qt::DisplayRole)
        return {};
    return tr(titles[section]);
}

QString AlarmLog::eventText(const AlarmRecord &record) const
{
    if (record.kind == AlarmRecord::Kind::Loss)
        return tr("Communication lost");
    if (record.flag == AlarmRecord::linkFlag)
        return tr("Communication established");
    const QString current = record.flag < 0 ? QString() : m_eventTexts.value(record.flag);
    const QString text = (current.isEmpty() ? record.text : current).trimmed();
    return text.isEmpty() ? tr("Event %1").arg(record.flag) : text;
}

QString AlarmLog::cellText(const AlarmRecord &record, int column) const
{
    switch (column) {
    case Time:
        return record.began.toString(QLatin1String(timeFormat));
    case Device:
        return record.device;
    case SeverityColumn:
        return Severities::mark(record.severity()) + QLatin1Char(' ')
            + Severities::text(record.severity());
    case Event:
        return eventText(record);
    case State:
        return stateText(record);
    case Duration:
        return durationText(record);
    default:
        return {};
    }
}

QString AlarmLog::stateText(const AlarmRecord &record)
{
    if (record.kind == AlarmRecord::Kind::Note)
        return {};
    if (record.isActive() && !record.isConfirmed)
        return record.isAcknowledged ? tr("Not known, acknowledged")
                                     : tr("Not known, not acknowledged");
    if (record.end == AlarmRecord::End::Unwatched)
        return record.isAcknowledged ? tr("Not watched, acknowledged")
                                     : tr("Not watched, not acknowledged");
    return tr(stateTexts[int(record.state())]);
}

QVariant AlarmLog::sortValue(const AlarmRecord &record, int column) const
{
    constexpr qint64 ranks = qint64(1) << 48; // ids stay below
    constexpr qint64 severities = qint64(Severity::Critical) + 1;
    switch (column) {
    case Time:
        return record.id;
    case SeverityColumn:
        return qint64(record.severity()) * ranks + record.id;
    case State:
        // Among equals the worse first, and of these the newest.
        return (qint64(record.severity()) - severities * qint64(record.state())) * ranks
            + record.id;
    case Duration:
        return record.kind == AlarmRecord::Kind::Note
            ? qint64(-1)
            : record.began.secsTo(record.isActive() ? QDateTime::currentDateTime() : record.ended);
    default:
        return cellText(record, column);
    }
}

QString AlarmLog::durationText(const AlarmRecord &record)
{
    if (record.kind == AlarmRecord::Kind::Note)
        return {};
    const QDateTime until = record.isActive() ? QDateTime::currentDateTime() : record.ended;
    const QString span = spanText(qMax(qint64(0), record.began.secsTo(until)));
    if (record.isActive() && !record.isConfirmed)
        return tr("not known");
    if (record.end == AlarmRecord::End::Earlier)
        return tr("at most %1").arg(span);
    return record.end == AlarmRecord::End::Unwatched ? tr("at least %1").arg(span) : span;
}
