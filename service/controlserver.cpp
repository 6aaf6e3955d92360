#include "controlserver.h"

#include <QLocalSocket>
#include <QPointer>
#include <QTimer>

namespace {

constexpr int peerLimit = 16;
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

ControlServer::ControlServer(Handler handler, std::chrono::milliseconds peerTime)
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
    while (QLocalSocket *peer = m_server.nextPendingConnection()) {
        if (m_peers < peerLimit)
            admit(peer);
        else
            delete peer;
    }
}

void ControlServer::admit(QLocalSocket *peer)
{
    ++m_peers;
    auto *patience = new QTimer(peer);
    patience->setSingleShot(true);
    patience->start(m_peerTime);
    connect(patience, &QTimer::timeout, peer, &QLocalSocket::abort);
    connect(peer, &QLocalSocket::readyRead, patience, qOverload<>(&QTimer::start));
    connect(peer, &QLocalSocket::readyRead, this,
            [this, peer, patience] { takeLines(peer, patience); });
    connect(peer, &QLocalSocket::disconnected, this, [this, peer] {
        --m_peers;
        peer->deleteLater();
    });
    peer->setReadBufferSize(ControlLineLimit);
    takeLines(peer, patience);
}

void ControlServer::takeLines(QLocalSocket *peer, QTimer *patience)
{
    const QPointer<QLocalSocket> alive(peer);
    while (peer->canReadLine()) {
        const auto request = parseControlRequest(peer->readLine(ControlLineLimit + 1).chopped(1));
        if (!request)
            return peer->abort();
        patience->stop(); // it is not the peer that is silent now
        const ControlReply reply = m_handler(*request);
        if (!alive)
            return; // the peer left while the handler ran events
        peer->write(controlLine(reply));
        peer->flush();
        if (request->verb != ControlVerb::Terminate || !reply.ok)
            patience->start();
    }
    if (peer->bytesAvailable() >= ControlLineLimit)
        peer->abort();
}
