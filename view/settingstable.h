#pragma once

#include "datareport.h"
#include "parameterinformation.h"

#include <QPair>
#include <QTableWidget>
#include <QVector>

/** The columns of a settings table. */
enum SettingsColumn { NameColumn, ValueColumn, RangeColumn, SettingsColumnCount };

/** A settings table and the record behind each of its rows. */
struct SettingsTable
{
    QTableWidget *table = nullptr;
    QList<ParameterInformation *> records;
    QVector<QPair<int, int>> shownBounds; ///< raw, by row; a range's text is made when they change
};

/** Builds a table with a row for each record; `parent` or the caller owns it. */
QTableWidget *createSettingsTable(const QString &objectName, const QStringList &headers,
                                  const QList<ParameterInformation *> &records,
                                  QWidget *parent = nullptr);

/** Writes the values and ranges that changed. */
void refreshSettingsTable(SettingsTable &settings, const DataReport &report);

/** Shows the value that was entered last for a record of the table. */
void showEnteredValue(const SettingsTable &settings, const ParameterInformation *record);
