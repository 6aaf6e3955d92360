#include "managedport.h"

#include "linepause.h"
#include "serial/portlock.h"
#include "serial/serialini.h"

#include <utility>

ManagedPort::ManagedPort(const QString &name)
    : m_name(name)
{
}

ManagedPort::~ManagedPort() = default;

void ManagedPort::note(Due due)
{
    // Released to doDue(), which must find the file that was written before.
    Due before = m_due.load(std::memory_order_relaxed);
    while (before < due && !m_due.compare_exchange_weak(before, due, std::memory_order_release)) { }
}

void ManagedPort::doDue()
{
    switch (m_due.exchange(Due::Nothing, std::memory_order_acquire)) {
    case Due::Nothing:
        break;
    case Due::IdleClose:
        if (!std::exchange(inUse, false))
            close();
        break;
    case Due::Close:
        close();
        break;
    case Due::ReOpen:
        close();
        openAsConfigured();
        if (!isOpen() && LinePause::isOn(m_name))
            note(Due::ReOpen);
        break;
    }
}

bool ManagedPort::tryDue()
{
    if (!isDue())
        return true;
    if (!mutex->tryLock())
        return false;
    const PortLock lock(*this, std::adopt_lock);
    // What is closed already waits for the end of a pause.
    const bool isHeld = !isOpen() && m_due.load(std::memory_order_relaxed) == Due::ReOpen
        && LinePause::isOn(m_name);
    if (isHeld || isSending())
        return false;
    doDue();
    return !isDue();
}

bool ManagedPort::open(OpenMode mode)
{
    auto use = std::make_unique<LineUse>(m_name);
    if (!*use)
        return failToOpen(std::errc::device_or_resource_busy);
    const bool isGood = SerialPort::open(mode);
    if (isGood)
        m_use = std::move(use);
    return isGood;
}

void ManagedPort::close()
{
    SerialPort::close();
    m_use.reset();
}

void ManagedPort::openAsConfigured()
{
    const StoredPortSettings settings = readSerialIni(m_name);
    CommOpen(m_name, settings.param, settings.timeout);
}

void ManagedPort::makeReady()
{
    doDue();
    if ((!isOpen() || isHungUp()) && !LinePause::isOn(m_name))
        ReOpen();
}
