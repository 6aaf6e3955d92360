#include "hostdevice.h"

#include "collectthread.h"
#include "collectview.h"

#include <QEventLoop>
#include <QTimer>

using namespace HostContract;

namespace {
constexpr int releaseMs = 10000;
}

HostDevice::HostDevice(const DeviceSpec &spec, CollectThread &factory)
    : m_spec(spec)
    , m_factory(factory)
{
}

HostDevice::~HostDevice()
{
    release();
    if (m_client) {
        // A client that is busy with its line goes once that has returned.
        QEventLoop loop;
        connect(m_client, &QObject::destroyed, &loop, &QEventLoop::quit);
        QTimer::singleShot(releaseMs, &loop, &QEventLoop::quit);
        loop.exec();
    }
    if (m_client)
        qWarning("the client of %s did not end", qUtf8Printable(name()));
}

void HostDevice::release()
{
    if (!m_client || m_released)
        return;
    m_released = true;
    m_client->disconnect(this);
    connect(m_client, &QObject::destroyed, this, &HostDevice::gone);
    if (m_poller)
        m_poller->stop();
    // The contract's release() may schedule or do the deletion, or nothing at all.
    m_factory.release(m_client);
    if (m_client)
        m_client->deleteLater();
}

bool HostDevice::create()
{
    // No port manager of the host's: the plug-in uses its own.
    m_client = m_factory.create(nullptr);
    if (!m_client)
        return false;
    {
        const QMutexLocker lock(&m_client->mutex);
        m_client->deviceName = m_spec.name;
    }
    // By name, as between a host and a plug-in that share no meta-object.
    connect(m_client, SIGNAL(postDEvent(int, QMap<QString, QVariant>)), this,
            SLOT(take(int, QMap<QString, QVariant>)), Qt::QueuedConnection);
    m_client->loadConfig();
    m_eventTexts = m_client->getEventLogDesc();
    m_dataTitles = m_client->getDataLogDesc();
    return true;
}

void HostDevice::start(Drive drive)
{
    if (drive == Drive::Thread) {
        m_client->start();
        return;
    }
    m_poller = std::make_unique<PollThread>(*m_client);
    m_poller->start();
}

bool HostDevice::control(int id, const QString &value)
{
    return !m_released && m_client->control(id, value) != 0;
}

QStringList HostDevice::dataRow(const DataMap &data)
{
    return m_client->changeLogData(data);
}

CollectView *HostDevice::view()
{
    return m_client->getView();
}

EventMap HostDevice::information() const
{
    const QMutexLocker lock(&m_client->mutex);
    return m_client->deviceInformation;
}

void HostDevice::take(int type, QMap<QString, QVariant> map)
{
    if (m_released)
        return; // it was on its way while the device was given back
    const HostEvent event { type, map, QDateTime::currentDateTime() };
    follow(event);
    emit posted(event);
}

void HostDevice::follow(const HostEvent &event)
{
    if (event.type == LinkRestoredEvent || event.type == LinkLostEvent)
        m_state = event.type == LinkRestoredEvent ? 0 : 1;
    m_wasOnline = m_wasOnline || m_state == 0;
    // The reports of failed polls repeat the values of the last good one.
    if (event.type != DataReportEvent || m_state != 0)
        return;
    m_data = event.data();
    m_dataTime = event.received;
    m_dataAge.start();
}
