#include "controlclient.h"

using Reached = ControlOutcome::Reached;

ControlClient::ControlClient(const ControlRequest &request, std::chrono::milliseconds limit,
                             QObject *parent)
    : QObject(parent)
    , m_request(request)
    , m_limit(limit)
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] { conclude(Reached::TimedOut); });
    connect(&m_socket, &QLocalSocket::connected, this,
            [this] { m_socket.write(controlLine(m_request)); });
    connect(&m_socket, &QLocalSocket::readyRead, this, &ControlClient::takeReply);
    connect(&m_socket, &QLocalSocket::errorOccurred, this, &ControlClient::failed);
}

void ControlClient::begin(const QString &socket)
{
    m_deadline.start(m_limit);
    if (socket.isEmpty())
        return conclude(Reached::No);
    m_socket.connectToServer(socket);
}

void ControlClient::takeReply()
{
    if (m_outcome.reached == Reached::Answered)
        return;
    if (!m_socket.canReadLine()) {
        if (m_socket.bytesAvailable() >= ControlLineLimit)
            conclude(Reached::Broken);
        return;
    }
    const auto reply = parseControlReply(m_socket.readLine(ControlLineLimit + 1).chopped(1));
    if (!reply)
        return conclude(Reached::Broken);
    m_outcome = { Reached::Answered, *reply };
    if (m_request.verb != ControlVerb::Terminate || !reply->ok)
        conclude(Reached::Answered);
}

void ControlClient::failed()
{
    // The service may have answered and gone in one go.
    if (m_socket.bytesAvailable() > 0)
        takeReply();
    if (m_outcome.reached == Reached::Answered)
        return conclude(Reached::Answered);
    const auto error = m_socket.error();
    const bool absent =
        error == QLocalSocket::ServerNotFoundError || error == QLocalSocket::ConnectionRefusedError;
    conclude(absent ? Reached::No : Reached::Broken);
}

void ControlClient::conclude(Reached reached)
{
    if (m_concluded)
        return;
    m_concluded = true;
    m_deadline.stop();
    m_socket.disconnect(this);
    m_socket.abort();
    m_outcome.reached = reached;
    emit finished(m_outcome);
}
