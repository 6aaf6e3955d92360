#pragma once

#include "service/controlprotocol.h"

#include <QLocalSocket>
#include <QObject>
#include <QTimer>

#include <chrono>

/** What became of a control request. */
struct ControlOutcome
{
    enum class Reached { No, Answered, TimedOut, Broken };

    Reached reached = Reached::No;
    ControlReply reply; // when Answered
};

/**
 * Asks one service one thing over its control socket.
 *
 * A termination is answered twice: with a reply, and by the end of the connection when the
 * process is gone; its outcome waits for the latter.
 *
 * Threads:   the thread it lives in, whose event loop it needs; nothing blocks.
 * Errors:    all in the outcome: exactly one finished() for each begin().
 */
class ControlClient : public QObject
{
    Q_OBJECT

public:
    ControlClient(const ControlRequest &request, std::chrono::milliseconds limit, QObject *parent);

    /** @param socket  absolute path; empty or nothing there is the outcome No */
    void begin(const QString &socket);

signals:
    void finished(const ControlOutcome &outcome);

private:
    void takeReply();
    void failed();
    void conclude(ControlOutcome::Reached reached);

    ControlRequest m_request;
    std::chrono::milliseconds m_limit;
    QLocalSocket m_socket;
    QTimer m_deadline;
    ControlOutcome m_outcome;
    bool m_concluded = false;
};
