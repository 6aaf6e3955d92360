#pragma once

#include "datareport.h"
#include "parameterinformation.h"

#include <QTabWidget>

class QTableWidget;
class SettingsTable;

/**
 * The tables of settings, a tab for each.
 *
 * Threads: GUI thread only.
 */
class SettingsTabs : public QTabWidget
{
    Q_OBJECT

public:
    explicit SettingsTabs(QWidget *parent = nullptr);

    /** @param table  a SettingsTable */
    void addTable(QTableWidget *table, const QString &title);

    /** Once all tables are there: keeps the tabs of a user who may only look usable. */
    void finish(const QFont &font);

    void showReport(const DataReport &report);
    void showEntered(const ParameterInformation *record);

    /** Slants what are the last values only. */
    void setStale(bool stale);

private:
    QList<SettingsTable *> m_tables;
};
