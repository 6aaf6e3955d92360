#pragma once

#include "controlpeer.h"

#include <QLocalServer>

#include <vector>

/**
 * The service's end of its control socket: answers the requests of a few peers at a time.
 *
 * Peers are not trusted with more than a request: a line that is too long or is none, and a
 * silence longer than the peer's time, end the connection. When all places are taken, whoever is
 * closest to that end makes way for a new one. The connection of a "terminate" stays: its end tells
 * the peer of the service's end.
 *
 * Threads:   the thread it lives in, in which the handler is called; it may run events.
 * Ownership: owns its peers; deleting it ends their connections and removes the socket.
 */
class ControlServer : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds defaultPeerTime { 5000 };
    enum class Outcome { Listening, Taken, Failed };

    /** @param peerTime  what a peer has for a request */
    explicit ControlServer(ControlHandler handler,
                           std::chrono::milliseconds peerTime = defaultPeerTime);

    /** Listens for the same user only. A socket file that nobody listens to is replaced. */
    [[nodiscard]] Outcome listen(const QString &path);

    QString errorString() const { return m_server.errorString(); }

private:
    void admitPeers();
    bool makeRoom();

    ControlHandler m_handler;
    std::chrono::milliseconds m_peerTime;
    QLocalServer m_server;
    std::vector<ControlPeer *> m_peers; // connected ones, its children
};
