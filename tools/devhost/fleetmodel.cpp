#include "fleetmodel.h"

#include "alarmlog.h"
#include "hostdevice.h"

#include <QFont>
#include <QGuiApplication>

#include <cmath>
#include <iterator>

namespace {

constexpr int updateMs = 200;

// clang-format off
constexpr const char *titles[] = { // by column
    QT_TRANSLATE_NOOP("FleetModel", "State"),
    QT_TRANSLATE_NOOP("FleetModel", "Device"),
    QT_TRANSLATE_NOOP("FleetModel", "Mode"),
    QT_TRANSLATE_NOOP("FleetModel", "Oldest alarm"),
    QT_TRANSLATE_NOOP("FleetModel", "Load"),
    QT_TRANSLATE_NOOP("FleetModel", "Charge"),
    QT_TRANSLATE_NOOP("FleetModel", "Autonomy"),
    QT_TRANSLATE_NOOP("FleetModel", "Age"),
};
// clang-format on
static_assert(std::size(titles) == FleetModel::ColumnCount);

using Level = DeviceStatus::Level;
constexpr Level summaryLevels[] = { Level::Critical, Level::Attention, Level::Waiting,
                                    Level::Normal };

const QString unknownText = QStringLiteral("–");

bool isNumber(int column)
{
    return column == FleetModel::Load || column == FleetModel::Charge
        || column == FleetModel::Autonomy || column == FleetModel::Age;
}

/** Whether a column shows what the device reported. */
bool isValue(int column)
{
    return column == FleetModel::Mode || (isNumber(column) && column != FleetModel::Age);
}

QString percentText(const std::optional<double> &percent)
{
    return percent ? QStringLiteral("%1 %").arg(std::lround(*percent)) : unknownText;
}

} // namespace

FleetModel::FleetModel(const AlarmLog &log, QObject *parent)
    : QAbstractTableModel(parent)
    , m_log(log)
{
    m_updating.setSingleShot(true);
    connect(&m_updating, &QTimer::timeout, this, &FleetModel::updateTouched);
}

void FleetModel::insert(HostDevice *device, int row)
{
    beginInsertRows({}, row, row);
    m_rows.insert(row, { device, statusOf(*device), {}, false });
    endInsertRows();
}

void FleetModel::remove(HostDevice *device)
{
    const int row = rowOf(device);
    beginRemoveRows({}, row, row);
    m_rows.removeAt(row);
    endRemoveRows();
}

int FleetModel::rowOf(const HostDevice *device) const
{
    for (int row = 0; row < m_rows.size(); ++row)
        if (m_rows.at(row).device == device)
            return row;
    return -1;
}

const DeviceStatus &FleetModel::status(const HostDevice *device) const
{
    return m_rows.at(rowOf(device)).status;
}

QString FleetModel::summary() const
{
    QMap<QString, int> counts; // by mark: those of alarms and of losses are one
    for (const Row &row : m_rows)
        ++counts[DeviceStatus::mark(row.status.level)];
    QStringList texts;
    for (const DeviceStatus::Level level : summaryLevels) {
        const QString mark = DeviceStatus::mark(level);
        if (counts.contains(mark))
            texts << mark + QString::number(counts.value(mark));
    }
    return texts.join(QLatin1Char(' '));
}

void FleetModel::setReason(const HostDevice *device, const QString &reason)
{
    const int row = rowOf(device);
    m_rows[row].reason = reason;
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

void FleetModel::touch(HostDevice *device)
{
    m_rows[rowOf(device)].isTouched = true;
    if (!m_updating.isActive())
        m_updating.start(updateMs);
}

void FleetModel::refreshAges()
{
    if (!m_rows.isEmpty())
        emit dataChanged(index(0, OldestAlarm), index(m_rows.size() - 1, Age), { Qt::DisplayRole });
}

void FleetModel::updateTouched()
{
    for (int row = 0; row < m_rows.size(); ++row)
        if (std::exchange(m_rows[row].isTouched, false))
            update(row);
}

void FleetModel::update(int row)
{
    Row &shown = m_rows[row];
    const DeviceStatus before = std::exchange(shown.status, statusOf(*shown.device));
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    if (before.level != shown.status.level || before.state != shown.status.state
        || before.mode != shown.status.mode)
        emit statusChanged(shown.device);
}

DeviceStatus FleetModel::statusOf(const HostDevice &device) const
{
    DeviceStatus::Facts facts;
    facts.link = device.state();
    facts.wasOnline = device.wasOnline();
    facts.data = device.data();
    facts.worstAlarm = m_log.worstActive(device.name());
    return DeviceStatus::of(facts);
}

int FleetModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int FleetModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant FleetModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return cellText(row, index.column());
    case Qt::TextAlignmentRole:
        return int((isNumber(index.column()) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    case Qt::ForegroundRole:
        return foreground(row, index.column());
    case Qt::FontRole: {
        QFont font = QGuiApplication::font();
        font.setBold(index.column() == State && row.status.level >= DeviceStatus::Level::Attention);
        // The last values of a device that is silent do not look like live ones.
        font.setItalic(!row.status.isLive && isValue(index.column()));
        return font;
    }
    case SortRole:
        return sortValue(row, index.column());
    case PercentRole:
        return index.column() == Load && row.status.load ? QVariant(*row.status.load) : QVariant();
    default:
        return {};
    }
}

QVariant FleetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int((isNumber(section) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? QVariant(tr(titles[section])) : QVariant();
}

QString FleetModel::cellText(const Row &row, int column) const
{
    switch (column) {
    case State:
        return DeviceStatus::mark(row.status.level) + QLatin1Char(' ') + row.status.state;
    case Device:
        return row.device->name();
    case Mode:
        return row.status.mode.isEmpty() ? unknownText : row.status.mode;
    case Load:
        return percentText(row.status.load);
    case Charge:
        return percentText(row.status.charge);
    case Autonomy:
        return row.status.autonomy ? tr("%1 min").arg(*row.status.autonomy) : unknownText;
    case OldestAlarm:
        return alarmText(row);
    case Age: {
        const qint64 age = row.device->dataAge();
        return age < 0 ? unknownText : spanText(age / 1000);
    }
    default:
        return {};
    }
}

QString FleetModel::alarmText(const Row &row) const
{
    if (!row.device->wasOnline()) {
        const QString place = row.device->spec().place();
        return row.reason.isEmpty() ? place : tr("%1: %2").arg(place, row.reason);
    }
    const AlarmRecord *alarm = m_log.oldestActive(row.device->name());
    if (!alarm)
        return row.status.isLive ? QString() : unknownText;
    const qint64 age = alarm->began.secsTo(QDateTime::currentDateTime());
    return tr("%1, for %2").arg(m_log.eventText(*alarm), spanText(qMax(qint64(0), age)));
}

QVariant FleetModel::sortValue(const Row &row, int column) const
{
    switch (column) {
    case State:
        return int(row.status.level);
    case Load:
        return row.status.load.value_or(-1);
    case Charge:
        return row.status.charge.value_or(-1);
    case Autonomy:
        return row.status.autonomy.value_or(-1);
    case OldestAlarm: {
        const AlarmRecord *alarm = m_log.oldestActive(row.device->name());
        return alarm ? alarm->began : QDateTime();
    }
    case Age:
        return row.device->dataAge();
    default:
        return cellText(row, column);
    }
}

QVariant FleetModel::foreground(const Row &row, int column) const
{
    const QPalette palette = QGuiApplication::palette();
    if (column == State)
        return DeviceStatus::color(row.status.level, palette);
    if (!row.status.isLive && isValue(column))
        return onGround(palette, 0xff5b6285, 0xffb4bad6);
    return {};
}
