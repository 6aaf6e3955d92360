#pragma once

#include "devicespec.h"

#include <QObject>
#include <QTcpSocket>
#include <QTimer>

/**
 * Finds out, without the driver, how far the way to a device is open: whether its port is there and
 * may be used, or whether its peer takes connections.
 *
 * Threads: GUI thread; nothing of it blocks.
 */
class ReachCheck : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void start(const DeviceSpec &spec);

signals:
    /** @param isOpen  whether a device could answer on this way
     *  @param text    what stands in the way, or that nobody answered */
    void finished(bool isOpen, const QString &text);

private:
    void checkPort(const DeviceSpec &spec);
    void finish(bool isOpen, const QString &text);

    QTcpSocket m_socket;
    QTimer m_patience;
    bool m_isRunning = false;
};
