#pragma once

#include "alarmfile.h"
#include "alarmlog.h"
#include "deviceeditor.h"
#include "devicehost.h"
#include "fleetmodel.h"
#include "reachcheck.h"
#include "windowmemory.h"

#include <QMainWindow>
#include <QTimer>

class AlarmPanel;
class CollectView;
class DevicePages;
class FleetPage;
class QSplitter;
class QStackedWidget;
class TopBar;

/**
 * The host's window: all devices or the view of one, the event log below.
 *
 * Threads:   GUI thread only.
 * Ownership: the views stay their clients'; the window gives them up when it goes, so it must go
 *            before the devices.
 */
class HostWindow : public QMainWindow
{
    Q_OBJECT

public:
    HostWindow(const HostOptions &options, DeviceHost &host);
    ~HostWindow() override;

    /** The view of the first device; null when its plug-in has none. */
    CollectView *firstView();

    int userLevel() const;
    const AlarmLog &log() const { return m_log; }

    void openFleet();
    void open(HostDevice *device);

    /** Asks for a new device. */
    void askForDevice();

signals:
    /** The texts can only change with a new start. */
    void languageChosen(const QString &code);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void connectParts();
    void openLog();
    void restorePlace();
    void savePlace();
    void add(HostDevice *device, int index);
    void remove(HostDevice *device);
    void take(HostDevice *device, const HostEvent &event);
    void findReason(HostDevice *device);
    void setUserLevel();
    void showDevices();
    void showStatus(HostDevice *device);
    void showTitle();
    HostDevice *shownDevice() const;

    HostOptions m_options;
    DeviceHost &m_host;
    WindowMemory m_memory;
    AlarmLog m_log;
    AlarmFile m_logFile;
    FleetModel m_fleet;
    QTimer m_seconds;
    TopBar *m_bar = nullptr;
    QStackedWidget *m_centre = nullptr;
    FleetPage *m_fleetPage = nullptr;
    DevicePages *m_pages = nullptr;
    AlarmPanel *m_panel = nullptr;
    QSplitter *m_splitter = nullptr;
    DeviceEditor m_editor;
};
