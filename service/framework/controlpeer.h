#pragma once

#include "controlprotocol.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

class QLocalSocket;

using ControlHandler = std::function<ControlReply(const ControlRequest &)>;

/**
 * One connection to a service's control socket: its requests, one at a time, and their replies.
 *
 * The next request is looked at when the reply to the last one is on its way, so a peer that asks
 * and does not read fills no memory of ours. Its time runs from one reply to the whole next line:
 * neither single bytes nor unread replies prolong it.
 *
 * Threads:   the thread it lives in, in which the handler is called; it may run events.
 * Ownership: owns the socket, and deletes itself once the connection has ended.
 */
class ControlPeer : public QObject
{
    Q_OBJECT

public:
    ControlPeer(QLocalSocket *socket, ControlHandler handler, std::chrono::milliseconds time,
                QObject *parent);

    /** Tells a peer that asked for the service's end that it is reached in good order. */
    ~ControlPeer() override;

    /** What is left of its time, which is endless while it waits for us. */
    std::chrono::milliseconds timeLeft() const;
    static constexpr auto endless = std::chrono::milliseconds::max();

    void disconnectFromUs();

signals:
    void left();

private:
    void takeLines();
    void answer(const ControlRequest &request);

    QLocalSocket *m_socket;
    ControlHandler m_handler;
    QTimer m_patience;
    bool m_answering = false;
    bool m_awaitsEnd = false;
};
