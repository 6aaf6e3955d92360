#include "screenshots.h"

#include <QTabWidget>

namespace {

constexpr int PatienceMs = 90000; // a TCP peer that is slow to come may take two attempts
constexpr int SettleMs = 700;     // the tab's refresh and some steps of its animation

/** The name of a tab in file names: its page's object name without "Table", else its place. */
QString tabName(const QTabWidget &tabs, int index)
{
    QString name = tabs.widget(index)->objectName().toLower();
    if (name.endsWith(QLatin1String("table")))
        name.chop(5);
    return name.isEmpty() ? QString::number(index) : name;
}

/** The outermost tab widget below a widget. */
QTabWidget *outermostTabs(QWidget &widget)
{
    QTabWidget *direct = widget.findChild<QTabWidget *>({}, Qt::FindDirectChildrenOnly);
    return direct ? direct : widget.findChild<QTabWidget *>();
}

} // namespace

Screenshots::Screenshots(const QString &file, int delayMs, QWidget &window, QWidget &view,
                         HostDevice &device)
    : m_file(file.endsWith(QLatin1String(".png")) ? file.chopped(4) : file)
    , m_delayMs(delayMs)
    , m_window(window)
    , m_view(view)
{
    connect(&device, &HostDevice::posted, this, &Screenshots::take);
    connect(&m_patience, &QTimer::timeout, this,
            [this] { emit finished(QStringLiteral("the device was not reached")); });
    m_patience.setSingleShot(true);
    m_patience.start(PatienceMs);
}

void Screenshots::take(const HostEvent &event)
{
    if (m_started || event.type != DataReport || event.data().isEmpty())
        return;
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
        return emit finished({});
    for (const auto &[tabs, index] : qAsConst(m_shots.first().tabs))
        tabs->setCurrentIndex(index);
    QTimer::singleShot(SettleMs, this, &Screenshots::save);
}

void Screenshots::save()
{
    const QString file = m_file + m_shots.takeFirst().name + QLatin1String(".png");
    if (!m_window.grab().save(file))
        return emit finished(QStringLiteral("cannot save %1").arg(file));
    prepareNext();
}
