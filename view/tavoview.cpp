#include "tavoview.h"

#include "answers/requeststatus.h"
#include "banner/statebanner.h"
#include "diagram/energyline.h"
#include "displaytext.h"
#include "hostvocabulary.h"
#include "pages/alarmpage.h"
#include "pages/controlactions.h"
#include "pages/controlpage.h"
#include "pages/historynote.h"
#include "pages/maintenancepage.h"
#include "pages/overviewpage.h"
#include "pages/realdatapage.h"
#include "pages/settingseditor.h"
#include "pages/settingstable.h"
#include "pages/settingstabs.h"
#include "pages/valuepanel.h"
#include "style/viewstyle.h"
#include "trends/trendpanel.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QHideEvent>
#include <QLabel>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTabWidget>

using namespace HostContract;

tavoView::tavoView(QWidget *parent)
    : CollectView(parent)
    , m_actions(new ControlActions(*this, m_family))
    , m_requests(new RequestStatus(m_family, this))
{
    setFont(QFont(QStringLiteral("Microsoft YaHei"), 10));
}

tavoView::~tavoView()
{
    // The tabs are deleted by the base class: what they signal then must not come here any more.
    if (m_tabs)
        m_tabs->disconnect(this);
}

void tavoView::refreshLayout()
{
    if (!m_tabs) {
        m_tabs = new QTabWidget(this);
        m_tabs->setStyleSheet(
            QStringLiteral("QTabBar::tab:disabled {width: 0; color: transparent;}"));
        m_tabs->addTab(createOverviewPage(), tr("Overview"));
        m_tabs->addTab(createAlarmPage(), tr("Alarm"));
        m_tabs->addTab(createRealDataPage(), tr("RT-data"));
        createSettings();
        const char *const clicked = SLOT(pushButtonSlot());
        m_controlPage = new ControlPage(m_family.commands, m_settings, this, clicked, m_tabs);
        m_maintenancePage = new MaintenancePage(m_family.commands, this, clicked, m_tabs);
        connect(m_actions, &ControlActions::downloadBegins, &m_maintenancePage->history(),
                &HistoryNote::begin);
        m_tabs->addTab(m_controlPage, tr("Control"));
        m_tabs->addTab(m_maintenancePage, tr("Maintenance"));
        auto *grid = new QGridLayout(this);
        grid->setObjectName(QStringLiteral("tavoView_grid"));
        grid->setContentsMargins(8, 8, 8, 8);
        grid->setHorizontalSpacing(0); // the stack beside the tabs takes no room while it is empty
        grid->setColumnStretch(0, 1);
        grid->addWidget(m_tabs, 0, 0);
        QStackedWidget *stack = createStack("devStacketTable", this); // spelling is bound by name
        stack->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
        grid->addWidget(stack, 0, 1);
        m_banner = new StateBanner(this);
        grid->setMenuBar(m_banner); // above the grid, whose cells keep their places
        connectRequests();
        // An upgrade covers the pages only: disabled tabs would lose their titles.
        m_actions->setPages(m_tabs->currentWidget()->parentWidget());
        spreadFont(*this);
        applyUserLevel();
        showStale();
        connect(m_tabs, &QTabWidget::currentChanged, this, &tavoView::UpdatePointTabInfo);
    }
    m_diagram->set_all_off_Flow();
}

QWidget *tavoView::createOverviewPage()
{
    m_diagram = new Energyline(this);
    m_overviewTrends = new TrendPanel(m_trends, this);
    return createScrollPage("OverviewTable", new OverviewPage(m_diagram, m_overviewTrends), m_tabs);
}

QWidget *tavoView::createAlarmPage()
{
    // Titles follow the cells: the time stands first.
    m_alarms = new AlarmPage({ tr("Data/Time"), tr("Event description") }, m_tabs);
    return m_alarms;
}

QWidget *tavoView::createRealDataPage()
{
    const struct
    {
        QString title;
        QList<ParameterInformation *> records;
    } panels[] = {
        { tr("DEVICE"), m_viewData.getDeviceData() },
        { tr("OUTPUT"), m_viewData.getOutputData() },
        { tr("INPUT"), m_viewData.getInputData() },
        { tr("BYPASS"), m_viewData.getBypassData() },
        { tr("BATTERY"), m_viewData.getBatteryData() },
        { tr("REC/INV"), m_viewData.getRecInvData() },
    };
    m_realData = new RealDataPage(m_tabs);
    QList<QLabel *> labels;
    for (const auto &panel : panels) {
        if (panel.records.isEmpty())
            continue; // the family has no such part
        m_realData->addPanel(ShowPanalView(m_realData, panel.title, panel.records, labels));
    }
    m_realDataTrends = new TrendPanel(m_trends, m_realData);
    m_realData->addTrends(m_realDataTrends);
    return createScrollPage("realDataTable", m_realData, m_tabs);
}

void tavoView::createSettings()
{
    const struct
    {
        const char *objectName;
        QString title;
        QList<ParameterInformation *> records;
    } pages[] = {
        { "basicTable", tr("Basic parameters"), m_viewData.getBasicConfig() },
        { "batteryTable", tr("Battery parameters"), m_viewData.getBatteryConfig() },
        { "adjustTable", tr("Adjusting parameters"), m_viewData.getAdjustConfig() },
        { "devinforTable", tr("UPS information"), m_viewData.getDevInfoConfig() },
    };
    m_settings = new SettingsTabs(m_tabs);
    for (const auto &page : pages) {
        if (page.records.isEmpty())
            continue;
        QTableWidget *table = nullptr;
        initialConfigTable(QString::fromLatin1(page.objectName), page.records, table);
        m_settings->addTable(table, page.title);
        connect(table, SIGNAL(cellDoubleClicked(int, int)), this,
                SLOT(slot_doubleClicked(int, int)));
    }
    m_settings->finish(font());
    m_editor = new SettingsEditor(*m_settings, this);
    connect(m_editor, &SettingsEditor::postDEvent, this, &tavoView::postDEvent);
    connect(m_actions, &ControlActions::upgradeBegins, m_editor, &SettingsEditor::close);
}

void tavoView::initialConfigTable(QString objectName, QList<ParameterInformation *> list,
                                  QTableWidget *&table)
{
    table = new SettingsTable(objectName, { tr("Parameter"), tr("Current settings"), tr("Range") },
                              list);
}

ValuePanel *tavoView::ShowPanalView(QWidget *parent, QString title,
                                    QList<ParameterInformation *> list, QList<QLabel *> &labels)
{
    auto *panel = new ValuePanel(title, list, parent);
    labels += panel->valueLabels();
    return panel;
}

QString tavoView::getPvalue(const ParameterInformation *record) const
{
    return displayText(*record, dataReport);
}

void tavoView::flushData(QMap<int, QVariant> report)
{
    CollectView::flushData(report);
    // A device that has never answered is reported without any value: that is no report to show.
    m_hasReport = m_hasReport || !report.isEmpty();
    // Both follow every report, whichever tab is current: the time of an event is when it was
    // first seen, and the dialog checks against the ranges of the current battery type.
    const QDateTime now = QDateTime::currentDateTime();
    const QVector<RecordedEvent> appeared =
        m_eventRecord.update(report, m_viewData.getAlarmList().size(),
                             m_news ? m_news->onsets() : QMap<int, EventOnset>(), now);
    keepTrends(appeared, now);
    applyBatteryType(m_family, m_viewData, report);
    m_requests->takeReport(report);
    showState();
    refreshData();
}

void tavoView::refreshData()
{
    if (m_tabs)
        UpdatePointTabInfo(m_tabs->currentIndex());
}

void tavoView::UpdatePointTabInfo(int tab)
{
    if (!m_hasReport || !m_tabs)
        return;
    switch (tab) {
    case OverviewTab:
        m_diagram->flushData(dataReport);
        if (m_link.isLost()) // with the date, once that is not today's any more
            m_diagram->setStale(true, m_link.text(QDate::currentDate()));
        m_overviewTrends->refresh();
        break;
    case AlarmTab:
        showAlarms();
        break;
    case RealDataTab:
        m_realData->showReport(dataReport);
        m_realDataTrends->refresh();
        break;
    case ControlTab:
        m_settings->showReport(dataReport);
        break;
    default:
        break;
    }
}

void tavoView::setUserInfo(QString user, int level)
{
    CollectView::setUserInfo(user, level);
    m_actions->setUserLevel(level);
    if (m_tabs)
        applyUserLevel();
}

void tavoView::applyUserLevel()
{
    const bool mayControl = userLevel != 0;
    showReason();
    m_controlPage->setEnabled(mayControl);
    m_tabs->setTabEnabled(MaintenanceTab, mayControl);
    // The tab bar does not measure a tab again when it is only disabled.
    m_tabs->setTabVisible(MaintenanceTab, mayControl);
    if (!mayControl)
        m_editor->close();
}

void tavoView::slot_doubleClicked(int row, int)
{
    const auto *table = qobject_cast<const SettingsTable *>(sender());
    ParameterInformation *record = table ? table->recordAt(row) : nullptr;
    if (!record)
        return;
    m_editor->load(record, dataReport, deviceName);
    if (userLevel > 0)
        m_editor->show();
}

void tavoView::tellOfHistory(const HistoryOutcome &outcome)
{
    if (m_maintenancePage)
        m_maintenancePage->history().end(outcome);
}

// A host that shows another device must not leave this one's dialog over it.
void tavoView::hideEvent(QHideEvent *event)
{
    if (m_editor && !event->spontaneous())
        m_editor->close();
    CollectView::hideEvent(event);
}

void tavoView::setUpgradeDevice(UpgradeDevice *device)
{
    m_actions->setUpgradeDevice(device);
}

void tavoView::pushButtonSlot()
{
    m_actions->setDeviceName(deviceName);
    if (const auto *button = qobject_cast<const QAbstractButton *>(sender()))
        m_actions->press(*button);
}
