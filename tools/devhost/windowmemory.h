#pragma once

#include "devicespec.h"

#include <QByteArray>
#include <QSettings>

/**
 * What the window remembers from one start to the next, in the user's settings: size and place, what
 * was shown, and the devices that were added in it.
 *
 * The user's level is none of it: a start never gives more rights than its command line.
 */
class WindowMemory
{
public:
    WindowMemory();

    struct Place
    {
        QByteArray geometry;
        QByteArray splitter;
        QString device; ///< empty: all devices
        int tab = 0;    ///< of the device's view
    };

    Place place() const;
    void setPlace(const Place &place);

    /** The devices that the window was given when it was started without any. */
    QList<DeviceSpec> devices() const;
    void setDevices(const QList<DeviceSpec> &devices);

private:
    mutable QSettings m_settings;
};
