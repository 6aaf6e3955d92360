#include "controlpeer.h"

#include <QLocalSocket>
#include <QPointer>

ControlPeer::ControlPeer(QLocalSocket *socket, ControlHandler handler,
                         std::chrono::milliseconds time, QObject *parent)
    : QObject(parent)
    , m_socket(socket)
    , m_handler(std::move(handler))
{
    m_socket->setParent(this);
    m_socket->setReadBufferSize(controlLineLimit);
    m_patience.setSingleShot(true);
    m_patience.setInterval(time);
    m_patience.start();
    connect(&m_patience, &QTimer::timeout, m_socket, &QLocalSocket::abort);
    connect(m_socket, &QLocalSocket::readyRead, this, &ControlPeer::takeLines);
    connect(m_socket, &QLocalSocket::bytesWritten, this, &ControlPeer::takeLines);
    connect(m_socket, &QLocalSocket::disconnected, this, &ControlPeer::left);
    connect(m_socket, &QLocalSocket::disconnected, this, &QObject::deleteLater);
    // What came with the connection is told of by no signal any more.
    QMetaObject::invokeMethod(this, &ControlPeer::takeLines, Qt::QueuedConnection);
}

ControlPeer::~ControlPeer()
{
    m_socket->disconnect(this);
    if (!m_awaitsEnd || m_socket->state() != QLocalSocket::ConnectedState)
        return;
    m_socket->write(controlLine(ControlReply { true, {} }));
    m_socket->flush();
}

std::chrono::milliseconds ControlPeer::timeLeft() const
{
    return m_patience.isActive() ? m_patience.remainingTimeAsDuration() : endless;
}

void ControlPeer::disconnectFromUs()
{
    m_socket->abort();
}

void ControlPeer::takeLines()
{
    const QPointer<ControlPeer> alive(this);
    while (!m_answering && m_socket->bytesToWrite() == 0 && m_socket->canReadLine()) {
        const auto request =
            parseControlRequest(m_socket->readLine(controlLineLimit + 1).chopped(1));
        if (!request)
            return m_socket->abort();
        answer(*request);
        if (!alive)
            return;
    }
    if (m_socket->bytesAvailable() >= controlLineLimit && !m_socket->canReadLine())
        m_socket->abort();
}

void ControlPeer::answer(const ControlRequest &request)
{
    m_answering = true;
    m_patience.stop(); // it is not the peer that is silent now
    const QPointer<ControlPeer> alive(this);
    const ControlReply reply = m_handler(request);
    if (!alive)
        return; // the peer left while the handler ran events
    m_socket->write(controlLine(reply));
    m_socket->flush();
    m_answering = false;
    m_awaitsEnd = m_awaitsEnd || (request.verb == ControlVerb::Terminate && reply.ok);
    if (!m_awaitsEnd)
        m_patience.start();
}
