#include "portmanage.h"

#include "portlock.h"
#include "serialini.h"
#include "serialport.h"
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

SerialPort *serialPortOf(const CommHandle &handle)
{
    return handle.kind == CommHandle::Hid ? nullptr : static_cast<SerialPort *>(handle.device);
}

QString hidKey(int vendorId, int productId)
{
    return QStringLiteral("%1.%2").arg(vendorId).arg(productId);
}

void openAsConfigured(SerialPort &port, const QString &name)
{
    const StoredPortSettings settings = readSerialIni(name);
    port.CommOpen(name, settings.param, settings.timeout);
}

} // namespace

PortManage::PortManage()
    : timer(new QTimer(this))
    , m_retry(new QTimer(this))
{
    qRegisterMetaType<QMap<QString, SerialPort *>>("QMap<QString,SerialPort*>");
    connect(timer, SIGNAL(timeout()), this, SLOT(timerProc()));
    connect(m_retry, &QTimer::timeout, this, &PortManage::closeDue);
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
    static QMutex creation;
    const QMutexLocker lock(&creation);
    if (!theInstance.load(std::memory_order_relaxed))
        theInstance.store(new PortManage, std::memory_order_release);
    return theInstance.load(std::memory_order_relaxed);
}

// Null when the name is a HID device's. A new port comes locked, so that nobody gets it before it
// was opened; of a known one `tickDue` tells that a tick wanted to close it.
SerialPort *PortManage::findOrCreate(const QString &name, bool *created, bool *tickDue)
{
    if (const CommHandle *handle = handles.value(name)) {
        *tickDue = m_due.remove(name);
        return serialPortOf(*handle);
    }
    auto port = std::make_unique<SerialPort>();
    port->Lock();
    handles.insert(name, new CommHandle { port.get(), CommHandle::Serial });
    *created = true;
    return port.release();
}

SerialPort *PortManage::getPortHandle(const QString &name)
{
    SerialPort *port = getLockedPort(name);
    if (port)
        port->UnLock();
    return port;
}

SerialPort *PortManage::getLockedPort(const QString &name)
{
    SerialPort *port = nullptr;
    bool created = false;
    bool tickDue = false;
    {
        const ManagerLock lock(mutex);
        port = lock ? findOrCreate(name, &created, &tickDue) : nullptr;
    }
    if (!port)
        return nullptr;
    if (created)
        openAsConfigured(*port, name);
    else if (!StopSource::lock(*port->mutex)) {
        if (tickDue)
            keepDue(name);
        return nullptr;
    }
    if (tickDue)
        closeIfIdle(*port);
    if (!port->isOpen() || port->isHungUp())
        port->ReOpen();
    return port;
}

// In the manager's thread: a client that stops waits for nobody. The tick may have stopped trying
// when it found nothing due.
void PortManage::keepDue(const QString &name)
{
    const auto keep = [this, name] {
        const QMutexLocker lock(&mutex);
        m_due.insert(name);
        m_retry->start();
    };
    QMetaObject::invokeMethod(this, keep, Qt::QueuedConnection);
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
    SerialPort *port = getLockedPort(name);
    if (!port)
        return;
    const PortLock lock(*port, std::adopt_lock);
    port->close();
    openAsConfigured(*port, name);
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

void PortManage::Close(const QString &name)
{
    SerialPort *port = getLockedPort(name);
    if (!port)
        return;
    const PortLock lock(*port, std::adopt_lock);
    port->close();
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
    closeDue();
}

// Port by port as far as they are free; the rest follows shortly, or with the port's next user.
void PortManage::closeDue()
{
    if (!mutex.tryLock()) {
        m_retry->start();
        return;
    }
    const std::unique_lock<QMutex> lock(mutex, std::adopt_lock);
    for (auto it = handles.cbegin(); m_tick && it != handles.cend(); ++it) {
        if (it.value()->kind == CommHandle::Serial)
            m_due.insert(it.key());
    }
    m_tick = false;
    for (auto it = m_due.begin(); it != m_due.end();) {
        SerialPort *port = serialPortOf(*handles.value(*it));
        it = closeAtOnce(*port) ? m_due.erase(it) : std::next(it);
    }
    if (!m_due.isEmpty())
        m_retry->start();
}

// False when that would have to wait.
bool PortManage::closeAtOnce(SerialPort &port)
{
    if (!port.mutex->tryLock())
        return false;
    const PortLock lock(port, std::adopt_lock);
    if (port.isSending())
        return false;
    closeIfIdle(port);
    return true;
}

void PortManage::closeIfIdle(SerialPort &port)
{
    if (!port.inUse)
        port.close();
    port.inUse = false;
}
