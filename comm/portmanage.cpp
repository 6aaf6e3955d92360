#include "portmanage.h"

#include "serial/portlock.h"
#include "stopsource.h"

#include <atomic>
#include <hidapi/hidapi.h>
#include <memory>
#include <mutex>
#include <QCoreApplication>
#include <QDebug>
#include <QThread>

namespace {

constexpr int idlePeriod = 30000; // ms
constexpr int retryPeriod = 50;   // ms

std::atomic<PortManage *> theInstance = nullptr;

/** A lock of the manager's mutex that a stopping client does not wait for. */
class ManagerLock
{
public:
    explicit ManagerLock(QMutex &mutex)
        : m_mutex(StopSource::lock(mutex) ? &mutex : nullptr)
    {
    }
    ~ManagerLock()
    {
        if (m_mutex)
            m_mutex->unlock();
    }
    ManagerLock(const ManagerLock &) = delete;
    ManagerLock &operator=(const ManagerLock &) = delete;
    explicit operator bool() const { return m_mutex != nullptr; }

private:
    QMutex *m_mutex;
};

ManagedPort *serialPortOf(const CommHandle &handle)
{
    return handle.kind == CommHandle::Hid
        ? nullptr
        : static_cast<ManagedPort *>(static_cast<SerialPort *>(handle.device));
}

QString hidKey(int vendorId, int productId)
{
    return QStringLiteral("%1.%2").arg(vendorId).arg(productId);
}

// A client's thread has to have the line, and its StopSource ends the wait. Any other may be the
// host's.
LineQueue::Patience patience()
{
    return StopSource::isInScope() ? LineQueue::Patience::UntilStopped
                                   : LineQueue::Patience::OfHost;
}

} // namespace

PortManage::PortManage()
    : timer(new QTimer(this))
    , m_retry(new QTimer(this))
{
    qRegisterMetaType<QMap<QString, SerialPort *>>("QMap<QString,SerialPort*>");
    connect(timer, SIGNAL(timeout()), this, SLOT(timerProc()));
    connect(m_retry, &QTimer::timeout, this, &PortManage::doDue);
    timer->setInterval(idlePeriod);
    m_retry->setInterval(retryPeriod);
    m_retry->setSingleShot(true);
    // A client's thread may be the one that asks first, but it ends with its client.
    if (const QCoreApplication *application = QCoreApplication::instance())
        moveToThread(application->thread());
    QMetaObject::invokeMethod(timer, "start", Qt::QueuedConnection);
}

PortManage::~PortManage()
{
    for (CommHandle *handle : qAsConst(handles)) {
        if (handle->kind == CommHandle::Hid)
            closeHid(*handle);
        else
            delete serialPortOf(*handle);
        delete handle;
    }
}

PortManage *PortManage::instance()
{
    if (PortManage *manager = theInstance.load(std::memory_order_acquire))
        return manager;
    // Never destroyed, as clients' threads go on while the process exits.
    static QMutex &creation = *new QMutex;
    const QMutexLocker lock(&creation);
    if (!theInstance.load(std::memory_order_relaxed))
        theInstance.store(new PortManage, std::memory_order_release);
    return theInstance.load(std::memory_order_relaxed);
}

// Null when the name is a HID device's, or the thread was asked to stop. A new port is opened first
// by whoever asks for it: it comes with that due.
ManagedPort *PortManage::findOrCreate(const QString &name)
{
    const ManagerLock lock(mutex);
    if (!lock)
        return nullptr;
    if (const CommHandle *handle = handles.value(name))
        return serialPortOf(*handle);
    auto port = std::make_unique<ManagedPort>(name);
    port->note(ManagedPort::Due::ReOpen);
    SerialPort *device = port.get(); // which is what users take the handle's first word for
    handles.insert(name, new CommHandle { device, CommHandle::Serial });
    return port.release();
}

SerialPort *PortManage::getPortHandle(const QString &name)
{
    ManagedPort *port = findOrCreate(name);
    if (!port)
        return nullptr;
    if (port->lockWithin(patience())) {
        const PortLock lock(*port, std::adopt_lock);
        // The host's thread does not wait for what is being sent: what is due stays due.
        if (StopSource::isInScope() || !port->isSending())
            port->makeReady();
    } else if (StopSource::currentRequested()) {
        return nullptr;
    }
    return port;
}

SerialPort *PortManage::getLockedPort(const QString &name)
{
    ManagedPort *port = findOrCreate(name);
    if (!port || !port->lockWithin(LineQueue::Patience::UntilStopped))
        return nullptr;
    port->makeReady();
    return port;
}

CommHandle *PortManage::getPortHandle(int vendorId, int productId)
{
    const ManagerLock lock(mutex);
    if (!lock)
        return nullptr;
    CommHandle *&handle = handles[hidKey(vendorId, productId)];
    if (!handle)
        handle = new CommHandle { nullptr, CommHandle::Hid };
    if (handle->kind != CommHandle::Hid)
        return nullptr;
    openHid(*handle, vendorId, productId);
    return handle;
}

void PortManage::ReOpen(const QString &name)
{
    doAtOnceOrLater(name, ManagedPort::Due::ReOpen);
}

void PortManage::Close(const QString &name)
{
    doAtOnceOrLater(name, ManagedPort::Due::Close);
}

void PortManage::doAtOnceOrLater(const QString &name, ManagedPort::Due due)
{
    ManagedPort *port = findOrCreate(name);
    if (!port)
        return;
    if (!port->lockWithin(patience())) {
        if (!StopSource::currentRequested())
            leave(*port, due);
        return;
    }
    const PortLock lock(*port, std::adopt_lock);
    if (!StopSource::isInScope() && port->isSending()) {
        leave(*port, due);
        return;
    }
    port->makeReady();
    port->note(due);
    port->doDue();
    if (port->isDue())
        leave(*port, due);
}

// To the line's next user, or to the manager's thread if nobody comes.
void PortManage::leave(ManagedPort &port, ManagedPort::Due due)
{
    port.note(due);
    QMetaObject::invokeMethod(m_retry, [this] { m_retry->start(); });
}

void PortManage::ReOpen(int vendorId, int productId)
{
    CommHandle *handle = getPortHandle(vendorId, productId);
    const ManagerLock lock(mutex);
    if (!handle || !lock)
        return;
    closeHid(*handle);
    openHid(*handle, vendorId, productId);
    if (handle->device)
        qDebug() << "ReOpen" << handle->device;
}

void PortManage::Close(int vendorId, int productId)
{
    CommHandle *handle = getPortHandle(vendorId, productId);
    const ManagerLock lock(mutex);
    if (handle && lock)
        closeHid(*handle);
}

void PortManage::openHid(CommHandle &handle, int vendorId, int productId)
{
    if (handle.device)
        return;
    hid_device *device = hid_open(static_cast<unsigned short>(vendorId),
                                  static_cast<unsigned short>(productId), nullptr);
    if (device)
        hid_set_nonblocking(device, 1);
    handle.device = device;
}

void PortManage::closeHid(CommHandle &handle)
{
    if (handle.device)
        hid_close(static_cast<hid_device *>(handle.device));
    handle.device = nullptr; // or the next request would hand out what is gone
}

void PortManage::timerProc()
{
    m_tick = true;
    doDue();
}

// Port by port as far as they are free; the rest follows shortly, or with the port's next user.
void PortManage::doDue()
{
    if (!mutex.tryLock()) {
        m_retry->start();
        return;
    }
    const std::vector<ManagedPort *> ports = serialPorts();
    mutex.unlock();
    bool isDone = true;
    for (ManagedPort *port : ports) {
        if (m_tick)
            port->note(ManagedPort::Due::IdleClose);
        isDone = port->tryDue() && isDone;
    }
    m_tick = false;
    if (!isDone)
        m_retry->start();
}

std::vector<ManagedPort *> PortManage::serialPorts() const
{
    std::vector<ManagedPort *> ports;
    for (const CommHandle *handle : handles) {
        if (ManagedPort *port = serialPortOf(*handle))
            ports.push_back(port);
    }
    return ports;
}
