#pragma once

#include "hostevent.h"

#include <QElapsedTimer>
#include <QStackedWidget>
#include <QVector>

class CollectView;
class HostDevice;

/**
 * The views of the devices, one page each, made when a device is first opened or when there is time.
 *
 * A view that is shown gets every report of its device, the others one in a second: they collect
 * what they draw over time.
 *
 * Threads:   GUI thread only.
 * Ownership: the views stay their clients'; they are given up when a device leaves and when this
 *            goes, which must be before the devices go.
 */
class DevicePages : public QStackedWidget
{
    Q_OBJECT

public:
    /** @param language  number of the host's language */
    explicit DevicePages(int language, QWidget *parent = nullptr);
    ~DevicePages() override;

    void add(HostDevice *device);
    void remove(HostDevice *device);

    /** The device's view; null when its plug-in has none. */
    CollectView *view(HostDevice *device);

    void open(HostDevice *device);
    void setUser(const QString &name, int level);
    void feed(HostDevice *device, const HostEvent &event);

private:
    struct Page
    {
        HostDevice *device = nullptr;
        QWidget *widget = nullptr; // null until it is made
        CollectView *view = nullptr;
        EventMap information; // as given to the view last
        QElapsedTimer fed;
    };

    Page *pageOf(const HostDevice *device);
    void make(Page &page);
    void makeNext();
    void giveUp(Page &page);
    void feed(Page &page, const DataMap &report);

    QVector<Page> m_devicePages;
    QString m_userName;
    int m_userLevel = 0;
    int m_language;
};
