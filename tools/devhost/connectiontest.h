#pragma once

#include "devicehost.h"
#include "reachcheck.h"

/**
 * Tries whether a device answers: first the way to it, then plug-in and driver.
 *
 * Threads: GUI thread; nothing of it blocks.
 */
class ConnectionTest : public QObject
{
    Q_OBJECT

public:
    explicit ConnectionTest(DeviceHost &host, QObject *parent = nullptr);
    ~ConnectionTest() override;

    void start(const DeviceSpec &spec);
    void stop();
    bool isRunning() const { return m_isRunning; }

signals:
    void finished(bool answers, const QString &text);

private:
    void ask();
    void take(const HostEvent &event);
    void finish(bool answers, const QString &text);

    DeviceHost &m_host;
    DeviceSpec m_spec;
    ReachCheck m_way;
    std::unique_ptr<HostDevice> m_device;
    QString m_wayText;
    bool m_isRunning = false;
};
