#include "alarmfilter.h"

#include "alarmlog.h"
#include "linewriter.h"

AlarmFilter::AlarmFilter(QObject *parent)
    : QSortFilterProxyModel(parent)
{
    setSortRole(AlarmLog::SortRole);
    setSortCaseSensitivity(Qt::CaseInsensitive);
    sort(AlarmLog::State, Qt::DescendingOrder);
}

void AlarmFilter::setDevice(const QString &device)
{
    m_device = device;
    invalidateFilter();
}

void AlarmFilter::setLeast(Severity severity)
{
    m_least = severity;
    invalidateFilter();
}

void AlarmFilter::setText(const QString &text)
{
    m_text = text.trimmed();
    invalidateFilter();
}

void AlarmFilter::setOpenOnly(bool on)
{
    m_isOpenOnly = on;
    invalidateFilter();
}

const AlarmRecord &AlarmFilter::record(int row) const
{
    const auto *log = static_cast<const AlarmLog *>(sourceModel());
    return log->records().at(mapToSource(index(row, 0)).row());
}

QByteArray AlarmFilter::csv() const
{
    QStringList titles;
    for (int column = 0; column < columnCount(); ++column)
        titles << headerData(column, Qt::Horizontal).toString();
    QByteArray bytes = csvRecord(titles) + '\n';
    for (int row = 0; row < rowCount(); ++row)
        bytes += csvRecord(cells(row)) + '\n';
    return bytes;
}

QString AlarmFilter::text(const QModelIndexList &rows) const
{
    QStringList lines;
    for (const QModelIndex &index : rows)
        lines << cells(index.row()).join(QLatin1Char('\t'));
    return lines.join(QLatin1Char('\n'));
}

bool AlarmFilter::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    const auto *log = static_cast<const AlarmLog *>(sourceModel());
    const AlarmRecord &record = log->records().at(row);
    if (parent.isValid() || record.severity() < m_least || (m_isOpenOnly && !record.isOpen())
        || (!m_device.isEmpty() && record.device != m_device))
        return false;
    return m_text.isEmpty() || record.device.contains(m_text, Qt::CaseInsensitive)
        || log->eventText(record).contains(m_text, Qt::CaseInsensitive);
}

QStringList AlarmFilter::cells(int row) const
{
    QStringList cells;
    for (int column = 0; column < columnCount(); ++column)
        cells << index(row, column).data().toString();
    return cells;
}
