#pragma once

#include "pages/realdatapage.h"
#include "pages/settingstabs.h"

class AlarmPage;
class ControlActions;
class ControlPage;
class MaintenancePage;
class OverviewPage;
class RequestStatus;
class SettingsEditor;
class TrendStore;
struct Family;

/** What the pages need of the view that they are in: what builds their parts, and its slot. */
struct PageParts
{
    QWidget &view;
    RealDataPage::CardMaker createCard;
    SettingsTabs::TableMaker createTable;
    const char *clicked; ///< its slot for every button's click, as SLOT() writes it
};

/**
 * The pages of the view, each on its tab, and the dialog that edits the settings on them.
 *
 * Threads:   GUI thread only.
 * Ownership: the pages belong to the tabs, the dialog to the view; the parameters stay the caller's.
 */
class DevicePages
{
public:
    DevicePages(const Family &family, const tavoViewData &viewData, const TrendStore &trends,
                const PageParts &parts, QTabWidget &tabs);

    /** Shows what the user has asked for, and what came of it. */
    void follow(ControlActions &actions, RequestStatus &requests);

    /** Shows what can be asked for, and which values are the last ones only.
     *  @param lost        why the device cannot be reached; empty when it can
     *  @param mayControl  what is not for this user is disabled, or not to be seen */
    void setAccess(const QString &lost, bool mayControl);

    OverviewPage &overview() { return *m_overview; }
    AlarmPage &alarms() { return *m_alarms; }
    RealDataPage &realData() { return *m_realData; }
    SettingsTabs &settings() { return *m_settings; }
    SettingsEditor &editor() { return *m_editor; }
    MaintenancePage &maintenance() { return *m_maintenance; }

private:
    QTabWidget &m_tabs;
    OverviewPage *m_overview;
    AlarmPage *m_alarms;
    RealDataPage *m_realData;
    SettingsTabs *m_settings;
    SettingsEditor *m_editor;
    ControlPage *m_control;
    MaintenancePage *m_maintenance;
};
