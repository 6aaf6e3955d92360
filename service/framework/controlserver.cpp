#include "controlserver.h"

#include <QLocalSocket>

#include <algorithm>

namespace {

constexpr size_t peerLimit = 16;
constexpr std::chrono::milliseconds probeTime { 500 };

// True also for one that is too busy to accept: better to refuse than to take its socket away.
bool somebodyListens(const QString &path)
{
    QLocalSocket probe;
    probe.connectToServer(path);
    if (probe.waitForConnected(int(probeTime.count())))
        return true;
    return probe.error() != QLocalSocket::ServerNotFoundError
        && probe.error() != QLocalSocket::ConnectionRefusedError;
}

} // namespace

ControlServer::ControlServer(ControlHandler handler, std::chrono::milliseconds peerTime)
    : m_handler(std::move(handler))
    , m_peerTime(peerTime)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &ControlServer::admitPeers);
}

ControlServer::Outcome ControlServer::listen(const QString &path)
{
    if (somebodyListens(path))
        return Outcome::Taken;
    QLocalServer::removeServer(path);
    return m_server.listen(path) ? Outcome::Listening : Outcome::Failed;
}

void ControlServer::admitPeers()
{
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        if (!makeRoom()) {
            delete socket;
            continue;
        }
        auto *peer = new ControlPeer(socket, m_handler, m_peerTime, this);
        m_peers.push_back(peer);
        connect(peer, &ControlPeer::left, this, [this, peer] {
            m_peers.erase(std::remove(m_peers.begin(), m_peers.end(), peer), m_peers.end());
        });
    }
}

// False when all places are taken by peers that wait for us.
bool ControlServer::makeRoom()
{
    if (m_peers.size() < peerLimit)
        return true;
    const auto slowest = std::min_element(m_peers.begin(), m_peers.end(),
                                          [](const ControlPeer *one, const ControlPeer *other) {
                                              return one->timeLeft() < other->timeLeft();
                                          });
    if ((*slowest)->timeLeft() == ControlPeer::endless)
        return false;
    (*slowest)->disconnectFromUs();
    return true;
}
