#pragma once

#include "hostwindow.h"

#include <memory>

class Screenshots;

/**
 * What the program adds to the host when it has a window: style, window and pictures.
 *
 * Threads:   GUI thread.
 * Ownership: owns the window; must go before the host, whose clients own the views.
 */
class HostGui : public QObject
{
    Q_OBJECT

public:
    HostGui(const HostOptions &options, DeviceHost &host);
    ~HostGui() override;

    /** Shows the window and prepares the pictures; the host is open and not yet started. */
    DeviceHost::Failure open();

    /** Whether the options and the environment ask for a window. */
    static bool isWanted(const HostOptions &options);

    /** Chooses the platform for pictures without a display; before the application object.
     *  @return false when there is none for the window that was asked for */
    static bool preparePlatform(const HostOptions &options);

    /** The code with which the event loop ends to start again in another language. */
    static constexpr int restart = 256;

    /** Gives the application style, font and style sheet. */
    static void setLooks();

    /** Sets the colours "light" or "dark"; any other name leaves the desktop's. */
    static void setPalette(const QString &name);

    /** The arguments of that start; commands that were sent are not sent again. */
    QStringList restartArguments(const QStringList &arguments) const;

signals:
    void finished(int code);

private:
    HostOptions m_options;
    DeviceHost &m_host;
    QString m_language;
    std::unique_ptr<HostWindow> m_window;
    std::unique_ptr<Screenshots> m_screenshots;
};
