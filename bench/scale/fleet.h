#pragma once

#include "collectthread.h"

#include <QMap>
#include <QVariant>

#include <vector>

/** Many clients of the plug-in over TCP, and the host's part: its thread receives and keeps every
 *  report.
 *  Threads: GUI thread. */
class Fleet : public QObject
{
    Q_OBJECT

public:
    /** Makes the clients and starts them. @param port  of the device on loopback */
    Fleet(CollectThread &plugin, int count, quint16 port);
    ~Fleet() override;

    /** Waits until each client has reported, at most a minute; tells whether all did. */
    bool waitForAll();

    int size() const { return int(m_clients.size()); }
    long reports() const { return m_reports; }

    /** Gives all clients back and waits until they are gone. */
    void releaseAll();

private:
    void take(std::size_t index, const QMap<QString, QVariant> &map);

    std::vector<CollectThread *> m_clients;
    std::vector<QMap<int, QVariant>> m_kept; // the last report of each
    long m_reports = 0;
    int m_reported = 0; // clients
    int m_alive = 0;    // clients
};
