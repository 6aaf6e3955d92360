#pragma once

#include "devicespec.h"

#include <QCoreApplication>

class DeviceHost;
class HostDevice;
class QWidget;
class WindowMemory;

/**
 * Adds, edits and removes devices by asking the user.
 *
 * Devices that the window was not given on the command line are remembered for its next start.
 *
 * Threads: GUI thread only.
 */
class DeviceEditor
{
    Q_DECLARE_TR_FUNCTIONS(DeviceEditor)

public:
    /** @param memory  where the devices are remembered; null: nowhere */
    DeviceEditor(DeviceHost &host, WindowMemory *memory, QWidget &window);

    void add();
    void edit(const HostDevice &device);
    void remove(const HostDevice &device);

private:
    void remember();

    DeviceHost &m_host;
    WindowMemory *m_memory;
    QWidget &m_window;
};
