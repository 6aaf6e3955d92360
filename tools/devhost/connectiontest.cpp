#include "connectiontest.h"

#include <utility>

using namespace HostContract;

ConnectionTest::ConnectionTest(DeviceHost &host, QObject *parent)
    : QObject(parent)
    , m_host(host)
{
    connect(&m_way, &ReachCheck::finished, this, [this](bool isOpen, const QString &text) {
        m_wayText = text;
        if (!m_isRunning)
            return;
        if (isOpen)
            ask();
        else
            finish(false, text);
    });
}

ConnectionTest::~ConnectionTest()
{
    stop();
}

void ConnectionTest::start(const DeviceSpec &spec)
{
    stop();
    m_spec = spec;
    // A name of its own, beside that of a device which may be running.
    m_spec.name = QStringLiteral("connection test");
    m_isRunning = true;
    m_way.start(m_spec);
}

void ConnectionTest::stop()
{
    m_isRunning = false;
    if (!m_device)
        return;
    m_device->disconnect(this);
    m_host.giveBack(std::move(m_device));
}

void ConnectionTest::ask()
{
    MadeDevice made = m_host.makeProbe(m_spec);
    if (!made.outcome.isGood())
        return finish(false, made.outcome.error);
    m_device = std::move(made.device);
    connect(m_device.get(), &HostDevice::posted, this, &ConnectionTest::take);
    m_device->start(HostDevice::Drive::Thread);
}

void ConnectionTest::take(const HostEvent &event)
{
    if (event.type == LinkRestoredEvent)
        finish(true, tr("The device answers."));
    else if (event.type == LinkLostEvent)
        finish(false, m_host.driverFault().isEmpty() ? m_wayText : tr("there is no driver for it"));
}

void ConnectionTest::finish(bool answers, const QString &text)
{
    stop();
    emit finished(answers, text);
}
