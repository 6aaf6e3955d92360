#pragma once

#include "service/controlprotocol.h"

#include <QLocalServer>
#include <QObject>

#include <chrono>
#include <functional>

class QLocalSocket;
class QTimer;

/**
 * The service's end of its control socket: answers the requests of a few peers at a time.
 *
 * Peers are not trusted with more than a request: a line that is too long or is none, and a
 * silence longer than the peer's time, end the connection. That of a "terminate" stays: its end
 * tells the peer of the service's end.
 *
 * Threads:   the thread it lives in, in which the handler is called; it may run events.
 * Ownership: owns its peers; deleting it ends their connections and removes the socket.
 */
class ControlServer : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds DefaultPeerTime { 5000 };
    using Handler = std::function<ControlReply(const ControlRequest &)>;
    enum class Outcome { Listening, Taken, Failed };

    /** @param peerTime  how long a peer may be silent */
    explicit ControlServer(Handler handler, std::chrono::milliseconds peerTime = DefaultPeerTime);

    /** Listens for the same user only. A socket file that nobody listens to is replaced. */
    [[nodiscard]] Outcome listen(const QString &path);

    QString errorString() const { return m_server.errorString(); }

private:
    void admitPeers();
    void admit(QLocalSocket *peer);
    void takeLines(QLocalSocket *peer, QTimer *patience);

    Handler m_handler;
    std::chrono::milliseconds m_peerTime;
    QLocalServer m_server;
    int m_peers = 0;
};
