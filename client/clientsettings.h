#pragma once

#include "collectthread.h"
#include "devicesettings.h"

/**
 * The settings of one client: its own, and those that the host sees in its base class.
 *
 * Threads: any; what the host writes in the base class it writes before the client runs.
 */
class ClientSettings
{
public:
    /** @param host  the base of the client whose settings these are */
    explicit ClientSettings(CollectThread &host)
        : m_host(host)
    {
    }

    /** The settings of this moment. */
    DeviceSettings current();

    void replace(const DeviceSettings &settings);
    void setPort(const QString &name, const QString &settings);
    void setUnit(int unit);

    /** Raises an interval of 0 to 1 s. */
    void raiseInterval();

    /** The name of the port, which is about to be opened anew. */
    QString portToReopen();

private:
    template <typename Visit> void visitShared(DeviceSettings &settings, const Visit &visit);

    CollectThread &m_host;
    QMutex m_mutex;              // never held across a call out
    DeviceSettings m_settings;   // guarded by m_mutex, as the base's settings are
    bool m_portReopened = false; // guarded by m_mutex; for debugging
};
