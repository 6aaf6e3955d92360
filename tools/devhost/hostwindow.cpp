#include "hostwindow.h"

#include "alarmpanel.h"
#include "collectview.h"
#include "devicepages.h"
#include "fleetpage.h"
#include "languages.h"
#include "topbar.h"
#include "userlevels.h"
#include "viewtabs.h"

#include <QApplication>
#include <QBoxLayout>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>

using namespace HostContract;

namespace {

const QSize leastSize(1000, 640);
constexpr int leastPageHeight = 200; // the log never squeezes the page to nothing
constexpr int secondMs = 1000;

} // namespace

HostWindow::HostWindow(const HostOptions &options, DeviceHost &host)
    : m_options(options)
    , m_host(host)
    , m_logFile(AlarmFile::standardName())
    , m_fleet(m_log)
    , m_bar(new TopBar(options.userLevel, languageOf(options.language).code))
    , m_centre(new QStackedWidget)
    , m_fleetPage(new FleetPage(m_fleet))
    , m_pages(new DevicePages(languageOf(options.language).number))
    , m_panel(new AlarmPanel(m_log))
    , m_splitter(new QSplitter(Qt::Vertical))
    , m_editor(host, options.devicesAreRemembered ? &m_memory : nullptr, *this)
{
    m_centre->addWidget(m_fleetPage);
    m_centre->addWidget(m_pages);
    m_centre->setMinimumHeight(leastPageHeight);
    m_splitter->addWidget(m_centre);
    m_splitter->addWidget(m_panel);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 0);
    m_splitter->setChildrenCollapsible(false);
    auto *whole = new QWidget;
    auto *column = new QVBoxLayout(whole);
    column->setContentsMargins(8, 8, 8, 8);
    column->setSpacing(8);
    column->addWidget(m_bar);
    column->addWidget(m_splitter, 1);
    setCentralWidget(whole);

    openLog();
    connectParts();
    for (const auto &device : host.devices())
        add(device.get(), m_fleet.rowCount());
    m_fleetPage->setNote(host.driverFault());
    setUserLevel();
    restorePlace();
    // No control has the focus at first but the list: a stray key changes nothing.
    m_fleetPage->setFocus();
}

HostWindow::~HostWindow()
{
    m_host.disconnect(this);
}

CollectView *HostWindow::firstView()
{
    return m_host.devices().empty() ? nullptr : m_pages->view(m_host.devices().front().get());
}

int HostWindow::userLevel() const
{
    return m_bar->user().level();
}

void HostWindow::connectParts()
{
    connect(&m_host, &DeviceHost::posted, this, &HostWindow::take);
    connect(&m_host, &DeviceHost::added, this, &HostWindow::add);
    connect(&m_host, &DeviceHost::leaving, this, &HostWindow::remove);
    connect(&m_log, &AlarmLog::changed, this, [this](const AlarmRecord &record) {
        const Outcome kept = m_logFile.append(record, m_log.records());
        if (!kept.isGood())
            m_panel->setNote(kept.error);
    });
    connect(&m_fleet, &FleetModel::statusChanged, this, &HostWindow::showStatus);
    connect(m_fleetPage, &FleetPage::opened, this, &HostWindow::open);
    connect(m_fleetPage, &FleetPage::addAsked, this, &HostWindow::askForDevice);
    connect(m_fleetPage, &FleetPage::editAsked, this,
            [this](HostDevice *device) { m_editor.edit(*device); });
    connect(m_fleetPage, &FleetPage::removeAsked, this,
            [this](HostDevice *device) { m_editor.remove(*device); });
    connect(m_panel, &AlarmPanel::opened, this,
            [this](const QString &name) { open(m_host.device(name)); });
    connect(m_bar, &TopBar::allAsked, this, &HostWindow::openFleet);
    connect(m_bar, &TopBar::deviceAsked, this,
            [this](const QString &name) { open(m_host.device(name)); });
    connect(m_bar, &TopBar::userLevelChanged, this, &HostWindow::setUserLevel);
    connect(m_bar, &TopBar::languageChosen, this, [this](const QString &code) {
        savePlace();
        emit languageChosen(code);
    });
    auto *back = new QShortcut(QKeySequence::Back, this);
    connect(back, &QShortcut::activated, this, &HostWindow::openFleet);
    connect(&m_seconds, &QTimer::timeout, this, [this] {
        m_fleet.refreshAges();
        m_log.refreshDurations();
    });
    m_seconds.start(secondMs);
}

void HostWindow::openLog()
{
    const Outcome opened = m_logFile.open();
    if (opened.isGood())
        m_log.restore(m_logFile.load());
    else
        m_panel->setNote(opened.error);
}

void HostWindow::restorePlace()
{
    const bool isForPictures = !m_options.screenshot.isEmpty();
    const WindowMemory::Place place = isForPictures ? WindowMemory::Place() : m_memory.place();
    // A picture may be larger than the screen.
    const QSize room = isForPictures ? QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX)
                                     : QApplication::primaryScreen()->availableSize();
    setMinimumSize(leastSize.boundedTo(room));
    const bool isGiven = m_options.windowSize.isValid();
    if (isGiven || !restoreGeometry(place.geometry))
        resize((isGiven ? m_options.windowSize : leastSize).boundedTo(room));
    m_splitter->restoreState(place.splitter);
    HostDevice *device = m_host.device(place.device);
    // One device needs no list of one; several are looked over first.
    if (!device && (m_host.devices().size() == 1 || isForPictures))
        device = m_host.devices().front().get();
    open(device);
    QTabWidget *tabs =
        device && m_pages->view(device) ? outermostTabs(*m_pages->view(device)) : nullptr;
    if (tabs && device->name() == place.device && place.tab < tabs->count())
        tabs->setCurrentIndex(place.tab);
}

void HostWindow::savePlace()
{
    if (!m_options.screenshot.isEmpty())
        return;
    WindowMemory::Place place { saveGeometry(), m_splitter->saveState(), {}, 0 };
    HostDevice *device = shownDevice();
    if (device) {
        CollectView *view = m_pages->view(device);
        const QTabWidget *tabs = view ? outermostTabs(*view) : nullptr;
        place.device = device->name();
        place.tab = tabs ? tabs->currentIndex() : 0;
    }
    m_memory.setPlace(place);
}

void HostWindow::closeEvent(QCloseEvent *event)
{
    savePlace();
    QMainWindow::closeEvent(event);
}

void HostWindow::openFleet()
{
    m_fleetPage->choose(shownDevice());
    m_centre->setCurrentWidget(m_fleetPage);
    m_bar->setCurrent({});
    m_fleetPage->setFocus();
    showTitle();
}

void HostWindow::open(HostDevice *device)
{
    if (!device)
        return openFleet();
    m_pages->open(device);
    m_centre->setCurrentWidget(m_pages);
    m_bar->setCurrent(device->name());
    showTitle();
}

HostDevice *HostWindow::shownDevice() const
{
    return m_centre->currentWidget() == m_pages ? m_host.device(m_bar->current()) : nullptr;
}

void HostWindow::add(HostDevice *device, int index)
{
    m_log.setEventTexts(device->eventTexts());
    m_fleet.insert(device, index);
    m_pages->add(device);
    m_fleetPage->setNote(m_host.driverFault());
    showDevices();
}

void HostWindow::remove(HostDevice *device)
{
    if (shownDevice() == device)
        openFleet();
    m_pages->remove(device);
    m_fleet.remove(device);
    // A device that was edited comes again at once.
    const QString name = device->name();
    m_log.doubt(name);
    QTimer::singleShot(0, this, [this, name] {
        if (!m_host.device(name))
            m_log.abandon(name, QDateTime::currentDateTime());
    });
    showDevices();
}

void HostWindow::showDevices()
{
    const HostDevice *shown = shownDevice();
    QStringList names;
    m_bar->clearDevices();
    for (int row = 0; row < m_fleet.rowCount(); ++row) {
        const HostDevice *device = m_fleet.device(row);
        m_bar->addDevice(device->name(), m_fleet.status(device).level);
        names << device->name();
    }
    m_bar->setCurrent(shown ? shown->name() : QString());
    m_panel->setDevices(names);
    showTitle();
}

void HostWindow::take(HostDevice *device, const HostEvent &event)
{
    const std::optional<LogEntry> entry = logEntry(event, device->eventTexts());
    if (entry) {
        m_log.take(*entry);
        if (entry->kind == LogEntry::Kind::Lost
            || (entry->kind == LogEntry::Kind::Appear
                && Severities::ofFlag(entry->flag) > Severity::Information))
            QApplication::alert(this);
    }
    if (event.type == DataReportEvent && device->state() == 0)
        m_log.reconcile(device->name(), event.data(), event.received);
    if (event.type == LinkLostEvent && !device->wasOnline())
        findReason(device);
    m_pages->feed(device, event);
    m_fleet.touch(device);
}

void HostWindow::findReason(HostDevice *device)
{
    auto *check = new ReachCheck(device);
    connect(check, &ReachCheck::finished, this, [this, device, check](bool, const QString &text) {
        if (m_fleet.rowOf(device) >= 0)
            m_fleet.setReason(device, text);
        check->deleteLater();
    });
    check->start(device->spec());
}

void HostWindow::askForDevice()
{
    m_editor.add();
}

void HostWindow::setUserLevel()
{
    const int level = userLevel();
    m_pages->setUser(m_bar->user().userName(), level);
    m_panel->setMayAcknowledge(level > UserLevels::observer);
    m_fleetPage->setMayChange(level > UserLevels::observer);
}

void HostWindow::showStatus(HostDevice *device)
{
    m_bar->setLevel(device->name(), m_fleet.status(device).level);
    showTitle();
}

void HostWindow::showTitle()
{
    const HostDevice *device = shownDevice();
    QStringList parts;
    if (device) {
        const DeviceStatus &status = m_fleet.status(device);
        const bool says = status.isLive && !status.mode.isEmpty();
        parts << tr("%1: %2").arg(device->name(), says ? status.mode : status.state);
    }
    const QString summary = m_fleet.summary();
    if (!summary.isEmpty())
        parts << summary;
    parts << tr("KX300 device host");
    setWindowTitle(parts.join(QStringLiteral(" – ")));
}
