#include "tavoview.h"

#include "answers/requeststatus.h"
#include "banner/statebanner.h"
#include "displaytext.h"
#include "hostvocabulary.h"
#include "pages/alarmpage.h"
#include "pages/controlactions.h"
#include "pages/devicepages.h"
#include "pages/historynote.h"
#include "pages/maintenancepage.h"
#include "pages/overviewpage.h"
#include "pages/settingseditor.h"
#include "pages/settingstable.h"
#include "pages/valuepanel.h"
#include "style/viewstyle.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QHideEvent>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTimer>

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
    if (!m_pages) {
        m_tabs = new QTabWidget(this);
        m_tabs->setStyleSheet(
            QStringLiteral("QTabBar::tab:disabled {width: 0; color: transparent;}"));
        createPages();
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
        spreadFont(*this);
        showAccess();
        connect(m_tabs, &QTabWidget::currentChanged, this, &tavoView::UpdatePointTabInfo);
    }
    m_pages->overview().clearFlows();
}

void tavoView::createPages()
{
    const auto createCard = [this](QWidget *page, const QString &title, const auto &records) {
        QList<QLabel *> labels;
        return ShowPanalView(page, title, records, labels);
    };
    const auto createTable = [this](const QString &objectName, const auto &records) {
        QTableWidget *table = nullptr;
        initialConfigTable(objectName, records, table);
        connect(table, SIGNAL(cellDoubleClicked(int, int)), this,
                SLOT(slot_doubleClicked(int, int)));
        return table;
    };
    m_pages = std::make_unique<DevicePages>(
        m_family, m_viewData, m_record.trends(),
        PageParts { *this, createCard, createTable, SLOT(pushButtonSlot()) }, *m_tabs);
}

void tavoView::connectRequests()
{
    m_pages->follow(*m_actions, *m_requests);
    m_requests->setSettings(m_viewData.settings());
    connect(&m_pages->editor(), &SettingsEditor::postDEvent, this, &tavoView::postDEvent);
    connect(this, &CollectView::postDEvent, m_requests,
            [this](int, const QVariantMap &event) { m_requests->follow(event); });
    connect(m_actions, &ControlActions::upgradeBegins, m_requests, &RequestStatus::beginUpgrade);
    connect(m_actions, &ControlActions::upgradeEnded, m_requests, &RequestStatus::endUpgrade);
}

void tavoView::initialConfigTable(QString objectName, QList<ParameterInformation *> list,
                                  QTableWidget *&table)
{
    table = new SettingsTable(objectName, list);
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
    // Both follow every report, whichever tab is current: what the record misses is lost, and the
    // dialog checks against the ranges of the current battery type.
    m_record.takeReport(report);
    applyBatteryType(m_family, m_viewData, report);
    m_requests->takeReport(report);
    showState();
    refreshData();
}

void tavoView::refreshData()
{
    if (m_pages)
        UpdatePointTabInfo(m_tabs->currentIndex());
}

void tavoView::UpdatePointTabInfo(int tab)
{
    if (!m_record.hasReport() || !m_pages)
        return;
    switch (tab) {
    case OverviewTab:
        m_pages->overview().showReport(dataReport);
        if (m_record.isLost()) // with the date, once that is not today's any more
            m_pages->overview().setLost(m_record.lostText());
        break;
    case AlarmTab:
        showAlarms();
        break;
    case RealDataTab:
        m_pages->realData().showReport(dataReport);
        break;
    case ControlTab:
        m_pages->settings().showReport(dataReport);
        break;
    default:
        break;
    }
}

void tavoView::setUserInfo(QString user, int level)
{
    CollectView::setUserInfo(user, level);
    m_actions->setUserLevel(level);
    if (m_pages)
        showAccess();
}

void tavoView::slot_doubleClicked(int row, int)
{
    const auto *table = qobject_cast<const SettingsTable *>(sender());
    ParameterInformation *record = table ? table->recordAt(row) : nullptr;
    if (!record)
        return;
    m_pages->editor().load(record, dataReport, deviceName);
    if (userLevel > 0)
        m_pages->editor().show();
}

// A host that shows another device must not leave this one's dialog over it.
void tavoView::hideEvent(QHideEvent *event)
{
    if (m_pages && !event->spontaneous())
        m_pages->editor().close();
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

void tavoView::follow(ClientNews &news)
{
    connect(&news, &ClientNews::historyExported, this, [this](const HistoryOutcome &outcome) {
        if (m_pages)
            m_pages->maintenance().history().end(outcome);
    });
    connect(&news, &ClientNews::commandAnswered, m_requests, &RequestStatus::answer);
    const auto takeLink = [this, &news] {
        if (m_record.follow(news) && m_pages)
            showAccess();
    };
    connect(&news, &ClientNews::linkChanged, this, takeLink);
    takeLink();
}

void tavoView::flushUpsInfo(QString key, QVariant value)
{
    CollectView::flushUpsInfo(key, value);
    if (key == Key::state() && m_record.takeLink(value.toInt()) && m_pages)
        showAccess();
}

// Whether the device answers, and what this user may ask of it.
void tavoView::showAccess()
{
    m_pages->setAccess(m_record.lostText(), userLevel != 0);
    showAlarms();
    showState();
}

void tavoView::showAlarms()
{
    const EventRecord &events = m_record.events();
    m_pages->alarms().show(
        { events.events(), events.lastCleared(), m_record.hasReport(), m_record.lostText() });
}

// Nobody reads the banner of a hidden view.
void tavoView::showState()
{
    if (m_banner && isVisible())
        m_banner->say(bannerText(
            m_family,
            { m_record.isLost(), m_record.lostSince(), m_record.hasReport(), dataReport }));
}

void tavoView::showEvent(QShowEvent *event)
{
    showState();
    CollectView::showEvent(event);
}

void tavoView::changeEvent(QEvent *event)
{
    CollectView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        QTimer::singleShot(0, this, [this] { spreadPalette(*this); });
}
