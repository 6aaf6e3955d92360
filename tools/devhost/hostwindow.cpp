#include "hostwindow.h"

#include "devicestate.h"
#include "eventtable.h"
#include "languages.h"
#include "plugin/collectview.h"

#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>

namespace {

// clang-format off
constexpr const char *userLevels[] = {
    QT_TRANSLATE_NOOP("HostWindow", "Observer"),
    QT_TRANSLATE_NOOP("HostWindow", "Operator"),
    QT_TRANSLATE_NOOP("HostWindow", "Administrator"),
};
// clang-format on

constexpr int LastLevel = int(std::size(userLevels)) - 1;

} // namespace

HostWindow::HostWindow(const HostOptions &options, DeviceHost &host)
    : m_options(options)
    , m_host(host)
    , m_chooser(new QTabBar)
    , m_views(new QStackedWidget)
    , m_log(new EventTable)
{
    setMinimumSize(1000, 640);
    auto *splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(m_views);
    splitter->addWidget(m_log);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 0);
    splitter->setChildrenCollapsible(false);
    auto *centre = new QWidget;
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(8, 8, 8, 8);
    column->setSpacing(8);
    column->addWidget(createTopBar());
    column->addWidget(splitter, 1);
    setCentralWidget(centre);

    for (const auto &device : host.devices())
        addDevice(*device);
    setUserLevel(options.userLevel);
    connect(m_chooser, &QTabBar::currentChanged, this, &HostWindow::select);
    connect(&host, &DeviceHost::posted, this, &HostWindow::take);
    connect(&host, &DeviceHost::logged, this, &HostWindow::takeEntry);
    select(0);
    // No control has the focus at first: a stray key changes nothing.
    setFocus();
    resize(options.windowSize);
}

HostWindow::~HostWindow()
{
    for (const Page &page : qAsConst(m_pages)) {
        if (!page.view)
            continue;
        m_views->removeWidget(page.view);
        page.view->setParent(nullptr);
    }
}

CollectView *HostWindow::firstView() const
{
    return m_pages.isEmpty() ? nullptr : m_pages.first().view;
}

QWidget *HostWindow::createTopBar()
{
    m_chooser->setObjectName(QStringLiteral("deviceChooser"));
    m_chooser->setAccessibleName(tr("Device"));
    m_chooser->setDrawBase(false);
    m_chooser->setExpanding(false);
    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(m_chooser, 1);
    QComboBox *const boxes[] = { createUserLevels(), createLanguages() };
    const QString labels[] = { tr("&User:"), tr("&Language:") };
    for (size_t i = 0; i < std::size(boxes); ++i) {
        auto *label = new QLabel(labels[i]);
        label->setBuddy(boxes[i]);
        row->addSpacing(8);
        row->addWidget(label);
        row->addWidget(boxes[i]);
    }
    return bar;
}

QComboBox *HostWindow::createUserLevels()
{
    auto *box = new QComboBox;
    box->setObjectName(QStringLiteral("userLevel"));
    for (const char *text : userLevels)
        box->addItem(tr(text));
    box->setCurrentIndex(qMin(m_options.userLevel, LastLevel));
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &HostWindow::setUserLevel);
    return box;
}

QComboBox *HostWindow::createLanguages()
{
    auto *box = new QComboBox;
    box->setObjectName(QStringLiteral("language"));
    for (const HostLanguage &language : hostLanguages)
        box->addItem(QString::fromUtf8(language.name), QString::fromLatin1(language.code));
    box->setCurrentIndex(box->findData(QString::fromLatin1(languageOf(m_options.language).code)));
    connect(box, QOverload<int>::of(&QComboBox::activated), this, [this, box](int index) {
        const QString code = box->itemData(index).toString();
        if (code != QLatin1String(languageOf(m_options.language).code))
            emit languageChosen(code);
    });
    return box;
}

void HostWindow::addDevice(HostDevice &device)
{
    CollectView *view = device.view();
    if (view) {
        view->setLanguage(languageOf(m_options.language).number);
        m_views->addWidget(view);
    } else {
        auto *label = new QLabel(tr("The plug-in has no view for this device."));
        label->setAlignment(Qt::AlignCenter);
        m_views->addWidget(label);
    }
    m_pages.append({ &device, view, {}, -1 });
    m_chooser->addTab(device.name());
    showState(m_pages.size() - 1);
}

void HostWindow::setUserLevel(int level)
{
    const QString user = tr(userLevels[qBound(0, level, LastLevel)]);
    for (const Page &page : qAsConst(m_pages))
        if (page.view)
            page.view->setUserInfo(user, level);
}

void HostWindow::take(HostDevice *device, const HostEvent &event)
{
    const int index = indexOf(device);
    if (event.type == DataReport && m_pages.at(index).view)
        feed(*device, event);
    showState(index);
}

void HostWindow::takeEntry(const LogEntry &entry)
{
    m_log->prepend(entry);
    if (entry.kind == LogEntry::Kind::Appear || entry.kind == LogEntry::Kind::Lost)
        QApplication::alert(this);
}

void HostWindow::feed(HostDevice &device, const HostEvent &event)
{
    Page &page = m_pages[indexOf(&device)];
    const EventMap information = device.information();
    for (auto it = information.constBegin(); it != information.constEnd(); ++it)
        if (page.information.value(it.key()) != it.value())
            page.view->flushUpsInfo(it.key(), it.value());
    page.information = information;
    page.view->flushData(event.data());
}

void HostWindow::select(int index)
{
    m_views->setCurrentIndex(index);
    showTitle();
}

void HostWindow::showState(int index)
{
    Page &page = m_pages[index];
    const DeviceState::Level level = DeviceState::of(*page.device);
    if (level == page.shownState)
        return;
    page.shownState = level;
    m_chooser->setTabIcon(index, DeviceState::icon(level));
    m_chooser->setTabToolTip(index, DeviceState::text(level));
    showTitle();
}

void HostWindow::showTitle()
{
    const Page &page = m_pages.at(qMax(m_chooser->currentIndex(), 0));
    setWindowTitle(
        tr("%1 - %2").arg(page.device->name(), DeviceState::text(DeviceState::of(*page.device))));
}

int HostWindow::indexOf(const HostDevice *device) const
{
    for (int i = 0; i < m_pages.size(); ++i)
        if (m_pages.at(i).device == device)
            return i;
    return -1;
}
