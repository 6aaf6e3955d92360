#include "alarmlog.h"

#include <algorithm>

namespace {

constexpr int firstFlagId = 2000; // data identifier of event 0
} // namespace

void AlarmLog::restore(const QList<AlarmRecord> &records)
{
    beginResetModel();
    m_records = records;
    for (AlarmRecord &record : m_records) {
        record.isConfirmed = false;
        m_lastId = qMax(m_lastId, record.id);
    }
    endResetModel();
    trim();
}

void AlarmLog::setEventTexts(const QStringList &texts)
{
    m_eventTexts = texts;
    if (!m_records.isEmpty())
        emit dataChanged(index(0, Event), index(m_records.size() - 1, Event));
}

void AlarmLog::take(const LogEntry &entry)
{
    using Kind = AlarmRecord::Kind;
    const int loss = activeRow(entry.device, Kind::Loss, AlarmRecord::noFlag);
    if (entry.kind == LogEntry::Kind::Appear || entry.kind == LogEntry::Kind::Disappear)
        return takeAlarm(entry);
    if (entry.kind == LogEntry::Kind::Restored && loss >= 0)
        return end(loss, entry.time, AlarmRecord::End::Seen);
    if (entry.kind == LogEntry::Kind::Lost && loss >= 0) {
        m_records[loss].isConfirmed = true;
        return show(loss);
    }
    AlarmRecord record;
    record.device = entry.device;
    record.kind = entry.kind == LogEntry::Kind::Lost ? Kind::Loss : Kind::Note;
    if (entry.kind == LogEntry::Kind::Restored)
        record.flag = AlarmRecord::linkFlag;
    record.text = entry.text;
    record.began = entry.time;
    append(record);
}

void AlarmLog::takeAlarm(const LogEntry &entry)
{
    const bool isNote = Severities::ofFlag(entry.flag) == Severity::Information;
    const auto kind = isNote ? AlarmRecord::Kind::Note : AlarmRecord::Kind::Alarm;
    const int row = activeRow(entry.device, kind, entry.flag);
    if (entry.kind == LogEntry::Kind::Disappear) {
        if (row >= 0)
            end(row, entry.time, AlarmRecord::End::Seen);
        return;
    }
    if (row >= 0) {
        // It was there before the program started.
        m_records[row].isConfirmed = true;
        return show(row);
    }
    AlarmRecord record;
    record.device = entry.device;
    record.kind = kind;
    record.flag = entry.flag;
    record.text = entry.text;
    record.began = entry.time;
    append(record);
}

void AlarmLog::reconcile(const QString &device, const DataMap &data, const QDateTime &now)
{
    for (int row = 0; row < m_records.size(); ++row) {
        AlarmRecord &record = m_records[row];
        if (record.device != device || !record.isActive() || record.isConfirmed
            || record.kind != AlarmRecord::Kind::Alarm)
            continue;
        record.isConfirmed = true;
        if (data.value(firstFlagId + record.flag).toInt() == 1)
            show(row);
        else
            end(row, now, AlarmRecord::End::Earlier);
    }
}

void AlarmLog::doubt(const QString &device)
{
    for (int row = 0; row < m_records.size(); ++row) {
        if (m_records.at(row).device != device || !m_records.at(row).isActive())
            continue;
        m_records[row].isConfirmed = false;
        show(row);
    }
}

void AlarmLog::abandon(const QString &device, const QDateTime &now)
{
    for (int row = 0; row < m_records.size(); ++row)
        if (m_records.at(row).device == device && m_records.at(row).isActive())
            end(row, now, AlarmRecord::End::Unwatched);
}

void AlarmLog::acknowledge(const QList<qint64> &ids)
{
    for (int row = 0; row < m_records.size(); ++row) {
        AlarmRecord &record = m_records[row];
        if (!record.wantsAcknowledging() || !ids.contains(record.id))
            continue;
        record.isAcknowledged = true;
        show(row);
        emit changed(record);
    }
}

const AlarmRecord *AlarmLog::oldestActive(const QString &device) const
{
    for (const AlarmRecord &record : m_records)
        if (record.device == device && record.isActive() && record.isConfirmed)
            return &record;
    return nullptr;
}

Severity AlarmLog::worstActive(const QString &device) const
{
    Severity worst = Severity::Information;
    for (const AlarmRecord &record : m_records)
        if (record.device == device && record.isActive() && record.isConfirmed)
            worst = std::max(worst, record.severity());
    return worst;
}

int AlarmLog::countToAcknowledge() const
{
    return int(std::count_if(m_records.begin(), m_records.end(), [](const AlarmRecord &record) {
        return record.wantsAcknowledging();
    }));
}

void AlarmLog::refreshDurations()
{
    for (int row = 0; row < m_records.size(); ++row)
        if (m_records.at(row).isActive())
            emit dataChanged(index(row, Duration), index(row, Duration), { Qt::DisplayRole });
}

int AlarmLog::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_records.size();
}

int AlarmLog::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

void AlarmLog::append(AlarmRecord record)
{
    record.id = ++m_lastId;
    beginInsertRows({}, m_records.size(), m_records.size());
    m_records << record;
    endInsertRows();
    emit changed(record);
    trim();
}

void AlarmLog::end(int row, const QDateTime &when, AlarmRecord::End kind)
{
    m_records[row].ended = when;
    m_records[row].end = kind;
    show(row);
    emit changed(m_records.at(row));
}

void AlarmLog::show(int row)
{
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

void AlarmLog::trim()
{
    while (m_records.size() > mostRecords) {
        const auto oldest =
            std::find_if(m_records.begin(), m_records.end(),
                         [](const AlarmRecord &record) { return !record.isOpen(); });
        const int row = oldest == m_records.end() ? 0 : int(oldest - m_records.begin());
        beginRemoveRows({}, row, row);
        m_records.removeAt(row);
        endRemoveRows();
    }
}

int AlarmLog::activeRow(const QString &device, AlarmRecord::Kind kind, int flag) const
{
    for (int row = m_records.size() - 1; row >= 0; --row) {
        const AlarmRecord &record = m_records.at(row);
        if (record.isActive() && record.kind == kind && record.flag == flag
            && record.device == device)
            return row;
    }
    return -1;
}
