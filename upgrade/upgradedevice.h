#pragma once

#include <QString>

#include <memory>

/** Keeps the process off a device while it lives. */
class DeviceHold
{
public:
    virtual ~DeviceHold() = default;

    /** True once nobody in this process talks to the device any more. */
    virtual bool isQuiet() const = 0;
};

/** The device of an upgrade, as its client knows it. GUI thread. */
class UpgradeDevice
{
public:
    /** How other programs find it: a port's name, or a TCP peer as "10.0.0.5:502". */
    virtual QString location() = 0;

    /** Keeps this process off it, all its clients included. */
    virtual std::unique_ptr<DeviceHold> hold() = 0;

protected:
    ~UpgradeDevice() = default;
};
