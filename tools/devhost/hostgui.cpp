#include "hostgui.h"

#include "collectview.h"
#include "screenshots.h"
#include "wheelguard.h"
#include "windowmover.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>

namespace {

constexpr const char *displayVariables[] = { "DISPLAY", "WAYLAND_DISPLAY" };

bool hasDisplay()
{
    return std::any_of(std::begin(displayVariables), std::end(displayVariables),
                       [](const char *name) { return !qEnvironmentVariableIsEmpty(name); });
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

void HostGui::setLooks()
{
    Q_INIT_RESOURCE(devhost);
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

void HostGui::setPalette(const QString &name)
{
    if (name == QLatin1String("light"))
        QApplication::setPalette(QApplication::style()->standardPalette());
    if (name != QLatin1String("dark"))
        return;
    QPalette dark(QColor(0x3A, 0x3D, 0x44), QColor(0x2B, 0x2D, 0x33));
    dark.setColor(QPalette::Base, QColor(0x1E, 0x20, 0x25));
    dark.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2E));
    for (const auto role : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText })
        dark.setColor(role, QColor(0xF2, 0xF3, 0xF7));
    dark.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x8A, 0x8D, 0x96));
    dark.setColor(QPalette::Disabled, QPalette::Text, QColor(0x8A, 0x8D, 0x96));
    dark.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(0x8A, 0x8D, 0x96));
    QApplication::setPalette(dark);
}

DeviceHost::Failure HostGui::open()
{
    setLooks();
    setPalette(m_options.palette);
    qApp->installEventFilter(new WindowMover(this));
    qApp->installEventFilter(new WheelGuard(this));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/devhost/kx300-devhost.png")));
    QGuiApplication::setDesktopFileName(QStringLiteral("kx300-devhost"));
    m_window = std::make_unique<HostWindow>(m_options, m_host);
    connect(m_window.get(), &HostWindow::languageChosen, this, [this](const QString &code) {
        m_language = code;
        emit finished(restart);
    });
    connect(qApp, &QGuiApplication::lastWindowClosed, this,
            [this] { emit finished(int(ExitCode::Ok)); });
    m_window->show();
    if (m_host.devices().empty())
        QTimer::singleShot(0, m_window.get(), &HostWindow::askForDevice);
    if (m_options.screenshot.isEmpty())
        return {};
    if (!m_window->firstView())
        return { ExitCode::Screenshot, QStringLiteral("the plug-in has no view") };
    m_screenshots = std::make_unique<Screenshots>(m_options, *m_window, *m_window->firstView(),
                                                  *m_host.devices().front());
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
    // The window may have other devices and fewer rights by now, and keeps its size itself.
    for (const char *name : { "--send", "--language", "--user-level", "--window-size", "--device" })
        dropOption(kept, QLatin1String(name));
    kept << QStringLiteral("--language") << m_language << QStringLiteral("--user-level")
         << QString::number(m_window->userLevel());
    if (!m_options.devicesAreRemembered)
        for (const DeviceSpec &spec : m_host.specs())
            kept << QStringLiteral("--device") << spec.text();
    return kept;
}
