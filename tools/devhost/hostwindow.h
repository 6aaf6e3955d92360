#pragma once

#include "devicehost.h"

#include <QMainWindow>

class CollectView;
class EventTable;
class QComboBox;
class QSplitter;
class QStackedWidget;
class QTabBar;

/**
 * The host's window: the devices above, the view of the chosen one, the event log below.
 *
 * It feeds every view, shown or not, with the reports of its device.
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
    CollectView *firstView() const;

signals:
    /** The texts can only change with a new start. */
    void languageChosen(const QString &code);

private:
    QWidget *createTopBar();
    QComboBox *createUserLevels();
    QComboBox *createLanguages();
    void addDevice(HostDevice &device);
    void take(HostDevice *device, const HostEvent &event);
    void takeEntry(const LogEntry &entry);
    void feed(HostDevice &device, const HostEvent &event);
    void setUserLevel(int level);
    void select(int index);
    void showState(int index);
    void showTitle();
    int indexOf(const HostDevice *device) const;

    /** What the window keeps of a device. */
    struct Page
    {
        HostDevice *device = nullptr;
        CollectView *view = nullptr;
        EventMap information; ///< as given to the view last
        int shownState = -1;  ///< DeviceState::Level of its tab
    };

    HostOptions m_options;
    DeviceHost &m_host;
    QList<Page> m_pages;
    QTabBar *m_chooser = nullptr;
    QStackedWidget *m_views = nullptr;
    EventTable *m_log = nullptr;
};
