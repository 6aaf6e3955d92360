#include "tavoview.h"

#include "controlbuttons.h"
#include "dialog.h"
#include "displaytext.h"
#include "energyline.h"
#include "lookonly.h"
#include "msgbox.h"
#include "recordtable.h"
#include "upgraderun.h"
#include "valuepanel.h"
#include "viewstyle.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QDateTimeEdit>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QPointer>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTabWidget>

namespace {

constexpr int Gap = 16; // between cards and groups
constexpr int PanelColumns = 3;

QFont viewFont(int pointSize, QFont::Weight weight = QFont::Normal)
{
    return QFont(QStringLiteral("Microsoft YaHei"), pointSize, weight);
}

} // namespace

tavoView::tavoView(QWidget *parent)
    : CollectView(parent)
{
    setFont(viewFont(10));
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
        m_tabs->addTab(createControlPage(), tr("Control"));
        m_tabs->addTab(createMaintenancePage(), tr("Maintenance"));
        auto *grid = new QGridLayout(this);
        grid->setObjectName(QStringLiteral("tavoView_grid"));
        grid->setContentsMargins(8, 8, 8, 8);
        grid->setHorizontalSpacing(0); // the stack beside the tabs takes no room while it is empty
        grid->setColumnStretch(0, 1);
        grid->addWidget(m_tabs, 0, 0);
        QStackedWidget *stack = createStack("devStacketTable", this); // spelling is bound by name
        stack->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
        grid->addWidget(stack, 0, 1);
        createDialog();
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
    QScrollArea *page = createScrollPage(m_diagram, m_tabs);
    page->setObjectName(QStringLiteral("OverviewTable"));
    return page;
}

QWidget *tavoView::createAlarmPage()
{
    auto *page = new QWidget(m_tabs);
    page->setObjectName(QStringLiteral("AlarmTable"));
    // Titles follow the cells: the time stands first.
    m_recordTable = new RecordTable({ tr("Data/Time"), tr("Event description") }, page);
    auto *column = new QVBoxLayout(page);
    column->addWidget(m_recordTable);
    return page;
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
    auto *contents = new QWidget(m_tabs);
    auto *grid = new QGridLayout(contents);
    grid->setSpacing(Gap);
    int place = 0;
    for (const auto &panel : panels) {
        QWidget *card = ShowPanalView(contents, panel.title, panel.records, m_panelLabels);
        m_panelRecords += panel.records;
        grid->addWidget(card, place / PanelColumns, place % PanelColumns);
        ++place;
    }
    for (int column = 0; column < PanelColumns; ++column)
        grid->setColumnStretch(column, 1);
    grid->setRowStretch(grid->rowCount(), 1);
    QScrollArea *page = createScrollPage(contents, m_tabs);
    page->setObjectName(QStringLiteral("realDataTable"));
    return page;
}

QWidget *tavoView::createControlPage()
{
    m_controlPage = new QWidget(m_tabs);
    m_controlPage->setObjectName(QStringLiteral("ControlTable"));
    auto *grid = new QGridLayout(m_controlPage);
    grid->setObjectName(QStringLiteral("ControlGrid"));
    const int row = addControlButtons(*grid, ControlPage::Control, this, SLOT(pushButtonSlot()));
    auto *title = new QLabel(tr("Configuration"), m_controlPage);
    title->setObjectName(QStringLiteral("DevBigTitle"));
    title->setStyleSheet(QStringLiteral("margin-top:20px"));
    title->setFont(viewFont(13, QFont::Bold));
    title->setIndent(0);
    grid->addWidget(title, row, 0, 1, -1);
    grid->addWidget(createConfiguration(), row + 1, 0, 1, -1);
    grid->setRowStretch(row + 1, 1);
    return m_controlPage;
}

QWidget *tavoView::createConfiguration()
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
    QStackedWidget *stack = createStack("configStack", m_controlPage);
    auto *tabs = new QTabWidget(stack);
    for (const auto &page : pages) {
        QTableWidget *table = nullptr;
        initialConfigTable(QString::fromLatin1(page.objectName), page.records, table);
        m_settings.append({ table, page.records, {} });
        tabs->addTab(table, page.title);
        connect(table, SIGNAL(cellDoubleClicked(int, int)), this,
                SLOT(slot_doubleClicked(int, int)));
    }
    keepDisabledTabs(*tabs, font());
    new LookOnly(*tabs);
    stack->addWidget(tabs);
    return stack;
}

QWidget *tavoView::createMaintenancePage()
{
    auto *page = new QWidget(m_tabs);
    page->setObjectName(QStringLiteral("MaintainTable"));
    auto *grid = new QGridLayout(page);
    const int row =
        addControlButtons(*grid, ControlPage::Maintenance, this, SLOT(pushButtonSlot()));
    grid->setRowStretch(row, 1);
    return page;
}

void tavoView::createDialog()
{
    m_dialog = new Dialog(this);
    connect(m_dialog, &Dialog::postDEvent, this, [this](int type, const auto &map) {
        for (const SettingsTable &settings : qAsConst(m_settings))
            showEnteredValue(settings, m_editedRecord);
        emit postDEvent(type, map);
    });
}

void tavoView::initialConfigTable(QString objectName, QList<ParameterInformation *> list,
                                  QTableWidget *&table)
{
    table = createSettingsTable(objectName,
                                { tr("Parameter"), tr("Current settings"), tr("Range") }, list);
}

QWidget *tavoView::ShowPanalView(QWidget *parent, QString title, QList<ParameterInformation *> list,
                                 QList<QLabel *> &labels)
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
    m_eventRecord.update(report, m_viewData.getAlarmList().size(), QDateTime::currentDateTime());
    applyBatteryType(m_viewData.getBasicConfig(), report);
    refreshData();
}

void tavoView::flushUpsInfo(QString key, QVariant value)
{
    CollectView::flushUpsInfo(key, value);
    if (m_tabs && key == QLatin1String("state"))
        showStale();
}

void tavoView::showStale()
{
    const bool stale = deviceInformation.value(QStringLiteral("state")).toInt() == 1;
    m_diagram->setStale(stale);
    for (QLabel *label : qAsConst(m_panelLabels))
        showAsStale(*label, stale);
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
        break;
    case AlarmTab:
        m_recordTable->showEvents(m_eventRecord.events(), m_viewData.getAlarmList());
        break;
    case RealDataTab:
        refreshPanels();
        break;
    case ControlTab:
        for (SettingsTable &settings : m_settings)
            refreshSettingsTable(settings, dataReport);
        break;
    default:
        break;
    }
}

void tavoView::refreshPanels()
{
    for (int i = 0; i < m_panelLabels.size(); ++i) {
        const ParameterInformation *record = m_panelRecords.at(i);
        const QString text =
            dataReport.contains(record->dataId) ? getPvalue(record) : QStringLiteral("-");
        if (m_panelLabels.at(i)->text() != text)
            m_panelLabels.at(i)->setText(text);
    }
}

void tavoView::setUserInfo(QString user, int level)
{
    CollectView::setUserInfo(user, level);
    if (m_tabs)
        applyUserLevel();
}

void tavoView::applyUserLevel()
{
    const bool mayControl = userLevel != 0;
    m_controlPage->setEnabled(mayControl);
    m_tabs->setTabEnabled(MaintenanceTab, mayControl);
    // The tab bar does not measure a tab again when it is only disabled.
    m_tabs->setTabVisible(MaintenanceTab, mayControl);
    if (!mayControl)
        m_dialog->reject();
}

void tavoView::slot_doubleClicked(int row, int)
{
    for (const SettingsTable &settings : qAsConst(m_settings)) {
        if (settings.table != sender() || row < 0 || row >= settings.records.size())
            continue;
        m_editedRecord = settings.records.at(row);
        m_dialog->initial(m_editedRecord);
        if (dataReport.contains(m_editedRecord->dataId))
            m_dialog->selectOption(integerAt(dataReport, m_editedRecord->dataId));
        m_dialog->setDevName(deviceName);
        if (userLevel > 0)
            showDialog();
    }
}

void tavoView::showDialog()
{
    if (!m_dialog->isVisible())
        return m_dialog->show();
    m_dialog->raise(); // it may be behind another window
    m_dialog->activateWindow();
}

void tavoView::setUpgradePlanner(UpgradePlanner planner)
{
    m_upgradePlanner = std::move(planner);
}

void tavoView::pushButtonSlot()
{
    const auto *button = qobject_cast<const QAbstractButton *>(sender());
    if (!button)
        return;
    const QString name = button->objectName();
    const QPointer<tavoView> alive(this);
    const bool isConfirmed = MsgBox::ask(this, MsgBox::Question, button->text() + QLatin1Char('?'));
    // The host goes on meanwhile: it may have closed the view or logged the user off.
    if (isConfirmed && alive && userLevel != 0)
        dispatch(name);
}

void tavoView::dispatch(const QString &name)
{
    for (const ControlCommandRow &row : ControlTables::commands) {
        if (name == QLatin1String(row.name)) {
            control(row.command, QString());
            return;
        }
    }
    if (name == QLatin1String("timeSet")) {
        setTime();
    } else if (name == QLatin1String("ups_upgrade")) {
        control(ControlTables::Upgrade, QString());
        if (m_upgradePlanner && m_tabs)
            upgrade();
    } else if (name == QLatin1String("download_history_log")) {
        downloadHistory();
    } else {
        control(ControlTables::SetParameter, QString::fromLatin1(ControlTables::OtherArgument));
    }
}

void tavoView::upgrade()
{
    m_dialog->reject(); // no setting may be sent meanwhile
    // Over the pages only: disabled tabs would lose their titles.
    UpgradeRun::begin(m_tabs->currentWidget()->parentWidget(), m_upgradePlanner());
}

void tavoView::setTime()
{
    const auto *editor = findChild<QDateTimeEdit *>(QStringLiteral("timeEdit"));
    if (editor)
        control(ControlTables::SetTime, editor->text());
}

void tavoView::downloadHistory()
{
    const QPointer<tavoView> alive(this);
    QFileDialog dialog(nullptr, tr("Save"), QString(), tr("files(*.csv)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    placeOver(this, dialog);
    // A cancelled dialog still sends the command, with an empty name: the host expects it.
    const QString name =
        dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
    if (!alive || userLevel == 0)
        return;
    if (!name.isEmpty()) {
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            qWarning("tavoView: cannot write %s: %s", qPrintable(name),
                     qPrintable(file.errorString()));
            MsgBox::ask(this, MsgBox::Notice, tr("The file cannot be written!"));
            return; // intended: a command with this name could only fail as well
        }
    }
    control(ControlTables::DownloadHistory, name);
}
