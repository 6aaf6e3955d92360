#pragma once

#include "devicestatus.h"

#include <QAbstractTableModel>
#include <QTimer>

class AlarmLog;
class HostDevice;

/**
 * The devices as a table: how each is, what it carries and how old that is.
 *
 * Threads: GUI thread only.
 */
class FleetModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { State, Device, Mode, OldestAlarm, Load, Charge, Autonomy, Age, ColumnCount };
    enum Role { SortRole = Qt::UserRole, PercentRole };

    explicit FleetModel(const AlarmLog &log, QObject *parent = nullptr);

    void insert(HostDevice *device, int row);
    void remove(HostDevice *device);
    HostDevice *device(int row) const { return m_rows.at(row).device; }
    int rowOf(const HostDevice *device) const;

    const DeviceStatus &status(const HostDevice *device) const;
    /** How many devices are how: "■1 ▲2 ●11". */
    QString summary() const;

    /** Why a device was never reached, as far as the host found out. */
    void setReason(const HostDevice *device, const QString &reason);

    /** Has a device shown anew, soon: reports come faster than anybody reads. */
    void touch(HostDevice *device);
    /** Has all ages shown anew. */
    void refreshAges();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    /** The level or the mode of a device is another one. */
    void statusChanged(HostDevice *device);

private:
    struct Row
    {
        HostDevice *device = nullptr;
        DeviceStatus status;
        QString reason;
        bool isTouched = false;
    };

    void update(int row);
    void updateTouched();
    DeviceStatus statusOf(const HostDevice &device) const;
    QString cellText(const Row &row, int column) const;
    QVariant sortValue(const Row &row, int column) const;
    QVariant foreground(const Row &row, int column) const;
    QString alarmText(const Row &row) const;

    const AlarmLog &m_log;
    QList<Row> m_rows;
    QTimer m_updating;
};
