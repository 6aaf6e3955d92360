#pragma once

#include "eventrecord.h"
#include "plugin/collectview.h"
#include "settingstable.h"
#include "tavo_6_20k_view.h"
#include "upgradeplan.h"

#include <functional>

class Dialog;
class Energyline;
class QLabel;
class QTabWidget;
class RecordTable;

/**
 * The device's widget in the host application.
 *
 * It shows the reports it is given and posts what the user asks for. Only the current tab is
 * refreshed with a report; the others catch up when they become current.
 *
 * Threads:   GUI thread only.
 * Ownership: owns the parameter descriptions, the widgets and the setting dialog.
 */
class tavoView : public CollectView
{
    Q_OBJECT

public:
    /** Says what an upgrade does; asked when it begins. */
    using UpgradePlanner = std::function<UpgradePlan()>;

    /** The pages, in the order of their tabs. */
    enum Tab { OverviewTab, AlarmTab, RealDataTab, ControlTab, MaintenanceTab };

    explicit tavoView(QWidget *parent = nullptr);
    ~tavoView() override;

    /** Builds the widgets on the first call; each call clears the diagram's flows. */
    void refreshLayout() override;

    /** Writes the latest report into the current tab; nothing before the first report. */
    void refreshData() override;

    void flushData(QMap<int, QVariant> report) override;

    /** "state" 1, the link is lost: what is shown are the last values, and looks so. */
    void flushUpsInfo(QString key, QVariant value) override;

    /** Level 0 may neither control nor maintain the device, nor change a setting. */
    void setUserInfo(QString user, int level) override;

    /** Writes the latest report into one tab; only what differs is written. */
    void UpdatePointTabInfo(int tab);

    /** The display text of a parameter in the latest report. */
    QString getPvalue(const ParameterInformation *record) const;

    /** Builds the settings table `objectName` into `table`. */
    void initialConfigTable(QString objectName, QList<ParameterInformation *> list,
                            QTableWidget *&table);

    /** Builds a panel of names and values; its value labels are added to `labels`. */
    QWidget *ShowPanalView(QWidget *parent, QString title, QList<ParameterInformation *> list,
                           QList<QLabel *> &labels);

    /** Without a planner an upgrade ends with its command. */
    void setUpgradePlanner(UpgradePlanner planner);

public slots:
    /** Opens the dialog for the setting at `row` of the table that sent the signal. */
    void slot_doubleClicked(int row, int column);

    /** Asks, then posts the command of the button that sent the signal. */
    void pushButtonSlot();

private:
    QWidget *createOverviewPage();
    QWidget *createAlarmPage();
    QWidget *createRealDataPage();
    QWidget *createControlPage();
    QWidget *createConfiguration();
    QWidget *createMaintenancePage();
    void createDialog();
    void applyUserLevel();
    void showDialog();
    void refreshPanels();
    void showStale();
    void dispatch(const QString &name);
    void upgrade();
    void setTime();
    void downloadHistory();

    tavo_6_20k_View m_viewData;
    bool m_hasReport = false; // one with values
    EventRecord m_eventRecord;
    QTabWidget *m_tabs = nullptr; // null until the layout is built
    Energyline *m_diagram = nullptr;
    RecordTable *m_recordTable = nullptr;
    QWidget *m_controlPage = nullptr;
    QList<ParameterInformation *> m_panelRecords; // in the order of m_panelLabels
    QList<QLabel *> m_panelLabels;
    QList<SettingsTable> m_settings;
    Dialog *m_dialog = nullptr;
    ParameterInformation *m_editedRecord = nullptr;
    UpgradePlanner m_upgradePlanner;
};
