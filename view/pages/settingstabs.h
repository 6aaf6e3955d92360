#pragma once

#include "datareport.h"
#include "parameterinformation.h"

#include <QTabWidget>

#include <functional>

class QTableWidget;
class SettingsTable;
class tavoViewData;

/**
 * The tables of settings, a tab for each.
 *
 * Threads: GUI thread only.
 */
class SettingsTabs : public QTabWidget
{
    Q_OBJECT

public:
    /** Makes a SettingsTable. */
    using TableMaker = std::function<QTableWidget *(const QString &objectName,
                                                    const QList<ParameterInformation *> &records)>;

    /** @param font  of the titles */
    SettingsTabs(const tavoViewData &viewData, const TableMaker &createTable, const QFont &font,
                 QWidget *parent = nullptr);

    void showReport(const DataReport &report);
    void showEntered(const ParameterInformation *record);

    /** Slants what are the last values only. */
    void setStale(bool stale);

private:
    QList<SettingsTable *> m_tables;
};
