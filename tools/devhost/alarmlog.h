#pragma once

#include "alarmrecord.h"
#include "hostevent.h"

#include <QAbstractTableModel>

/**
 * The host's event log as a model: alarms with their beginning, end and acknowledgement, and notes.
 *
 * Rows are in the order of their beginning. It is bounded: the oldest rows that are not open go.
 *
 * Threads: GUI thread only.
 */
class AlarmLog : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Time, Device, SeverityColumn, Event, State, Duration, ColumnCount };
    enum Role { SortRole = Qt::UserRole };

    static constexpr int mostRecords = 5000;

    using QAbstractTableModel::QAbstractTableModel;

    /** Takes over what was kept; nobody knows yet whether its active alarms still are. */
    void restore(const QList<AlarmRecord> &records);
    const QList<AlarmRecord> &records() const { return m_records; }

    /** The texts of the events in the current language. */
    void setEventTexts(const QStringList &texts);

    void take(const LogEntry &entry);

    /** Ends the alarms of a device that were active in an earlier run and are not in its report. */
    void reconcile(const QString &device, const DataMap &data, const QDateTime &now);

    /** Nobody knows of a device's active alarms until it communicates again. */
    void doubt(const QString &device);

    /** Ends the alarms of a device that is no longer monitored. */
    void abandon(const QString &device, const QDateTime &now);

    void acknowledge(const QList<qint64> &ids);

    /** The first of a device's alarms that are known to be present; null when there is none. */
    const AlarmRecord *oldestActive(const QString &device) const;
    Severity worstActive(const QString &device) const;
    int countToAcknowledge() const;

    /** Has the durations of active alarms shown anew. */
    void refreshDurations();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    QString eventText(const AlarmRecord &record) const;

signals:
    /** A record is new or has changed. */
    void changed(const AlarmRecord &record);

private:
    void append(AlarmRecord record);
    void end(int row, const QDateTime &when, AlarmRecord::End kind);
    void takeAlarm(const LogEntry &entry);
    void show(int row);
    void trim();
    int activeRow(const QString &device, AlarmRecord::Kind kind, int flag) const;
    static QString stateText(const AlarmRecord &record);
    QString cellText(const AlarmRecord &record, int column) const;
    QVariant sortValue(const AlarmRecord &record, int column) const;
    static QString durationText(const AlarmRecord &record);

    QList<AlarmRecord> m_records;
    QStringList m_eventTexts;
    qint64 m_lastId = 0;
};

/** A duration in the two units that count: "3 d 4 h", "2 min 5 s". */
QString spanText(qint64 seconds);
