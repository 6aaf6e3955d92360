#pragma once

#include <QCoreApplication>
#include <QIcon>

class HostDevice;

/**
 * How a device is shown at a glance: a colour that always comes with its own shape and a word.
 *
 * Threads: GUI thread only.
 */
class DeviceState
{
    Q_DECLARE_TR_FUNCTIONS(DeviceState)

public:
    enum Level { Unknown, Normal, Attention, Lost };

    static Level of(const HostDevice &device);

    /** A circle, dot, triangle or square. */
    static QIcon icon(Level level);
    static QString text(Level level);
};
