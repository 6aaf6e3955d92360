#pragma once

#include "datareport.h"
#include "parameterinformation.h"

#include <QPair>
#include <QTableWidget>
#include <QVector>

/**
 * A table of settings: their names, values and ranges, a row for each record.
 *
 * Threads:   GUI thread only.
 * Ownership: the records stay the caller's and must outlive the table.
 */
class SettingsTable : public QTableWidget
{
    Q_OBJECT

public:
    enum Column { NameColumn, ValueColumn, RangeColumn, ColumnCount };

    SettingsTable(const QString &objectName, const QList<ParameterInformation *> &records,
                  QWidget *parent = nullptr);

    /** Writes the values of a report and the ranges that changed. */
    void showReport(const DataReport &report);

    /** Shows the value that was entered last for a record, if it is one of the table's. */
    void showEntered(const ParameterInformation *record);

    /** The record of a row; null outside of the table. */
    ParameterInformation *recordAt(int row) const { return m_records.value(row); }

private:
    void writeValue(int row, const QString &text);
    void writeRange(int row);

    const QList<ParameterInformation *> m_records;
    QVector<QPair<int, int>> m_shownBounds; // raw, by row; a range is written when they change
};
