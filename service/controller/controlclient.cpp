#include "controlclient.h"

#include <algorithm>
#include <csignal>
#include <sys/socket.h>

using Reached = ControlOutcome::Reached;

ControlClient::ControlClient(const ControlRequest &request, const ServiceTarget &target,
                             QObject *parent)
    : QObject(parent)
    , m_request(request)
    , m_target(target)
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, &ControlClient::expire);
    connect(&m_socket, &QLocalSocket::connected, this,
            [this] { m_socket.write(controlLine(m_request)); });
    connect(&m_socket, &QLocalSocket::readyRead, this, &ControlClient::takeReplies);
    connect(&m_socket, &QLocalSocket::errorOccurred, this, &ControlClient::failed);
}

void ControlClient::begin(const QString &socket)
{
    m_whole = QDeadlineTimer(m_target.timeLimit);
    m_deadline.start(std::min(m_target.answerLimit, m_target.timeLimit));
    if (socket.isEmpty())
        return conclude(Reached::No);
    m_socket.connectToServer(socket);
}

void ControlClient::takeReplies()
{
    while (!m_concluded && m_socket.canReadLine()) {
        const auto reply = parseControlReply(m_socket.readLine(controlLineLimit + 1).chopped(1));
        if (!reply)
            return conclude(Reached::Broken);
        takeReply(*reply);
    }
    if (!m_concluded && m_socket.bytesAvailable() >= controlLineLimit)
        conclude(Reached::Broken);
}

void ControlClient::takeReply(const ControlReply &reply)
{
    m_completed = m_answered;
    m_answered = true;
    m_outcome.reply = reply;
    if (m_request.verb != ControlVerb::Terminate || !reply.ok)
        return conclude(Reached::Answered);
    if (!m_endAwaited)
        awaitEnd();
}

void ControlClient::failed()
{
    // The service may have answered and gone in one go.
    takeReplies();
    if (m_endAwaited)
        return conclude(m_completed ? Reached::Answered : Reached::Aborted);
    const auto error = m_socket.error();
    const bool absent =
        error == QLocalSocket::ServerNotFoundError || error == QLocalSocket::ConnectionRefusedError;
    conclude(absent ? Reached::No : Reached::Broken);
}

void ControlClient::expire()
{
    if (m_endAwaited || m_request.verb != ControlVerb::Terminate || !signalService())
        return conclude(Reached::TimedOut);
    awaitEnd();
}

void ControlClient::awaitEnd()
{
    m_endAwaited = true;
    m_deadline.start(std::chrono::milliseconds(m_whole.remainingTime()));
}

bool ControlClient::signalService() const
{
    // A caller whose patience ends first wants an answer, not an end at any price.
    if (m_target.timeLimit <= m_target.answerLimit
        || m_socket.state() != QLocalSocket::ConnectedState)
        return false;
    ucred service = {};
    socklen_t size = sizeof service;
    const int asked =
        getsockopt(int(m_socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &service, &size);
    // It still holds the other end, so the number is not another process's. 0: it has none here.
    return asked == 0 && service.pid > 0 && kill(service.pid, SIGTERM) == 0;
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
