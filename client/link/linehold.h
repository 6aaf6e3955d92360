#pragma once

#include "linepause.h"
#include "upgradedevice.h"

/** Keeps all clients of a line off it during an upgrade. */
class LineHold : public DeviceHold
{
public:
    explicit LineHold(const QString &line)
        : m_pause(line)
    {
    }
    bool isQuiet() const override { return m_pause.isQuiet(); }

private:
    LinePause m_pause;
};
