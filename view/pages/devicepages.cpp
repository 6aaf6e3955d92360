#include "pages/devicepages.h"

#include "answers/requeststatus.h"
#include "answers/statuslines.h"
#include "family.h"
#include "pages/alarmpage.h"
#include "pages/controlactions.h"
#include "pages/controlpage.h"
#include "pages/historynote.h"
#include "pages/maintenancepage.h"
#include "pages/overviewpage.h"
#include "pages/settingseditor.h"
#include "style/viewstyle.h"
#include "tavoviewdata.h"

#include <QCoreApplication>

namespace {

QString viewText(const char *text)
{
    return QCoreApplication::translate("tavoView", text);
}

} // namespace

DevicePages::DevicePages(const Family &family, const tavoViewData &viewData,
                         const TrendStore &trends, const PageParts &parts, QTabWidget &tabs)
    : m_tabs(tabs)
    , m_overview(new OverviewPage(trends, &parts.view))
    , m_alarms(new AlarmPage(viewData.getAlarmList(), &tabs))
    , m_realData(new RealDataPage(viewData, trends, parts.createCard, &tabs))
    , m_settings(new SettingsTabs(viewData, parts.createTable, parts.view.font(), &tabs))
    , m_editor(new SettingsEditor(*m_settings, &parts.view))
    , m_control(new ControlPage(family.commands, m_settings, &parts.view, parts.clicked, &tabs))
    , m_maintenance(new MaintenancePage(family.commands, &parts.view, parts.clicked, &tabs))
{
    QWidget *const overview = createScrollPage("OverviewTable", m_overview, &tabs);
    tabs.addTab(overview, viewText(QT_TRANSLATE_NOOP("tavoView", "Overview")));
    tabs.addTab(m_alarms, viewText(QT_TRANSLATE_NOOP("tavoView", "Alarm")));
    QWidget *const realData = createScrollPage("realDataTable", m_realData, &tabs);
    tabs.addTab(realData, viewText(QT_TRANSLATE_NOOP("tavoView", "RT-data")));
    tabs.addTab(m_control, viewText(QT_TRANSLATE_NOOP("tavoView", "Control")));
    tabs.addTab(m_maintenance, viewText(QT_TRANSLATE_NOOP("tavoView", "Maintenance")));
}

void DevicePages::follow(ControlActions &actions, RequestStatus &requests)
{
    // An upgrade covers the pages only: disabled tabs would lose their titles.
    actions.setPages(m_tabs.currentWidget()->parentWidget());
    QObject::connect(&actions, &ControlActions::upgradeBegins, m_editor, &SettingsEditor::close);
    QObject::connect(&actions, &ControlActions::downloadBegins, &m_maintenance->history(),
                     &HistoryNote::begin);
    for (StatusLines *lines : { &m_control->status(), &m_maintenance->status() })
        QObject::connect(&requests, &RequestStatus::changed, lines, &StatusLines::showAnswer);
}

void DevicePages::setAccess(const QString &lost, bool mayControl)
{
    const bool isLost = !lost.isEmpty();
    m_overview->setLost(lost);
    m_realData->setStale(isLost);
    m_settings->setStale(isLost);
    m_editor->setObstacle(lost);
    m_control->setAccess(lost, mayControl);
    m_maintenance->setLost(lost);
    const int maintenance = m_tabs.indexOf(m_maintenance);
    m_tabs.setTabEnabled(maintenance, mayControl);
    // The tab bar does not measure a tab again when it is only disabled.
    m_tabs.setTabVisible(maintenance, mayControl);
    if (!mayControl)
        m_editor->close();
}
