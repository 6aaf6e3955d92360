#include "screenshots.h"

#include "dialogscenes.h"
#include "viewtabs.h"

#include <QTabWidget>

using namespace HostContract;

namespace {

constexpr int patienceMs = 90000; // a TCP peer that is slow to come may take two attempts
constexpr int settleMs = 700;     // the tab's refresh and some steps of its animation

/** The name of a tab in file names: its page's object name without "Table", else its place. */
QString tabName(const QTabWidget &tabs, int index)
{
    QString name = tabs.widget(index)->objectName().toLower();
    if (name.endsWith(QLatin1String("table")))
        name.chop(5);
    return name.isEmpty() ? QString::number(index) : name;
}

} // namespace

Screenshots::Screenshots(const HostOptions &options, QWidget &window, QWidget &view,
                         HostDevice &device)
    : m_file(options.screenshot)
    , m_delayMs(int(options.screenshotDelay * 1000))
    , m_takesDialogs(options.screenshotDialogs)
    , m_window(window)
    , m_view(view)
{
    if (m_file.endsWith(QLatin1String(".png")))
        m_file.chop(4);
    if (options.screenshotUnreached) {
        start();
        return;
    }
    connect(&device, &HostDevice::posted, this, &Screenshots::take);
    connect(&m_patience, &QTimer::timeout, this,
            [this] { emit finished(QStringLiteral("the device was not reached")); });
    m_patience.setSingleShot(true);
    m_patience.start(patienceMs);
}

void Screenshots::take(const HostEvent &event)
{
    if (!m_started && event.type == DataReportEvent && !event.data().isEmpty())
        start();
}

void Screenshots::start()
{
    m_started = true;
    m_patience.stop();
    QTimer::singleShot(m_delayMs, this, [this] {
        QTabWidget *tabs = outermostTabs(m_view);
        if (!tabs)
            return emit finished(QStringLiteral("the view has no tabs"));
        collect(*tabs, {});
        prepareNext();
    });
}

void Screenshots::collect(QTabWidget &tabs, const Shot &outer)
{
    for (int i = 0; i < tabs.count(); ++i) {
        if (!tabs.isTabEnabled(i))
            continue;
        Shot shot = outer;
        shot.name += QLatin1Char('-') + tabName(tabs, i);
        shot.tabs.append({ &tabs, i });
        QTabWidget *inner = outermostTabs(*tabs.widget(i));
        if (inner)
            collect(*inner, shot);
        else
            m_shots.append(shot);
    }
}

void Screenshots::prepareNext()
{
    if (m_shots.isEmpty())
        return m_takesDialogs ? takeDialogs() : emit finished({});
    for (const auto &[tabs, index] : qAsConst(m_shots.first().tabs))
        tabs->setCurrentIndex(index);
    QTimer::singleShot(settleMs, this, [this] {
        if (save(m_shots.takeFirst().name))
            prepareNext();
    });
}

void Screenshots::takeDialogs()
{
    auto *scenes = new DialogScenes(m_view, m_file + QLatin1String("-history.csv"), this);
    connect(scenes, &DialogScenes::shown, this,
            [this](const QString &name) { save(QLatin1Char('-') + name); });
    connect(scenes, &DialogScenes::finished, this, [this] { emit finished({}); });
    scenes->start();
}

bool Screenshots::save(const QString &name)
{
    const QString file = m_file + name + QLatin1String(".png");
    if (grabWithDialogs(m_window).save(file))
        return true;
    emit finished(QStringLiteral("cannot save %1").arg(file));
    return false;
}
