#include "hostgui.h"

#include "plugin/collectview.h"
#include "screenshots.h"
#include "windowmover.h"

#include <QApplication>
#include <QFile>
#include <QStyleFactory>

namespace {

constexpr const char *displayVariables[] = { "DISPLAY", "WAYLAND_DISPLAY" };

bool hasDisplay()
{
    return std::any_of(std::begin(displayVariables), std::end(displayVariables),
                       [](const char *name) { return !qEnvironmentVariableIsEmpty(name); });
}

void setLooks()
{
    // One style for every desktop, as the contract's pixel sizes expect; the colours are the user's.
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font = QApplication::font();
    font.setFamily(QStringLiteral("Microsoft YaHei"));
    font.setPointSize(10);
    QApplication::setFont(font);
    QFile sheet(QStringLiteral(":/devhost/devhost.qss"));
    if (sheet.open(QIODevice::ReadOnly))
        qApp->setStyleSheet(QString::fromUtf8(sheet.readAll()));
    else
        qWarning("the style sheet is missing");
}

/** Drops an option in both of its forms, "--name value" and "--name=value". */
void dropOption(QStringList &arguments, const QString &name)
{
    for (int i = arguments.size() - 1; i > 0; --i) {
        if (arguments.at(i).startsWith(name + QLatin1Char('=')))
            arguments.removeAt(i);
        else if (arguments.at(i) == name)
            arguments.erase(arguments.begin() + i,
                            arguments.begin() + qMin(i + 2, arguments.size()));
    }
}

} // namespace

HostGui::HostGui(const HostOptions &options, DeviceHost &host)
    : m_options(options)
    , m_host(host)
{
}

HostGui::~HostGui() = default;

bool HostGui::isWanted(const HostOptions &options)
{
    return !options.headless && (options.gui || !options.screenshot.isEmpty() || hasDisplay());
}

bool HostGui::preparePlatform(const HostOptions &options)
{
    if (hasDisplay() || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        return true;
    if (options.screenshot.isEmpty())
        return false;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return true;
}

DeviceHost::Failure HostGui::open()
{
    Q_INIT_RESOURCE(devhost);
    setLooks();
    qApp->installEventFilter(new WindowMover(this));
    m_window = std::make_unique<HostWindow>(m_options, m_host);
    connect(m_window.get(), &HostWindow::languageChosen, this, [this](const QString &code) {
        m_language = code;
        emit finished(Restart);
    });
    connect(qApp, &QGuiApplication::lastWindowClosed, this,
            [this] { emit finished(int(ExitCode::Ok)); });
    m_window->show();
    if (m_options.screenshot.isEmpty())
        return {};
    if (!m_window->firstView())
        return { ExitCode::Screenshot, QStringLiteral("the plug-in has no view") };
    m_screenshots =
        std::make_unique<Screenshots>(m_options.screenshot, int(m_options.screenshotDelay * 1000),
                                      *m_window, *m_window->firstView(), *m_host.devices().front());
    connect(m_screenshots.get(), &Screenshots::finished, this, [this](const QString &error) {
        if (!error.isEmpty())
            qWarning("--screenshot: %s", qUtf8Printable(error));
        emit finished(int(error.isEmpty() ? ExitCode::Ok : ExitCode::Screenshot));
    });
    return {};
}

QStringList HostGui::restartArguments(const QStringList &arguments) const
{
    QStringList kept = arguments;
    dropOption(kept, QStringLiteral("--send"));
    dropOption(kept, QStringLiteral("--language"));
    return kept << QStringLiteral("--language") << m_language;
}
