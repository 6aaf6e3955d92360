#pragma once

#include "controlprotocol.h"
#include "servicetypes.h"

#include <QDeadlineTimer>
#include <QLocalSocket>
#include <QObject>
#include <QTimer>

/** What became of a control request. */
struct ControlOutcome
{
    enum class Reached {
        No,
        Answered,
        Aborted, // a termination: the process is gone, but it did not get to the end of its stop
        TimedOut,
        Broken
    };

    Reached reached = Reached::No;
    ControlReply reply; // when Answered
};

/**
 * Asks one service one thing over its control socket.
 *
 * A termination is answered twice: at once, and when the stop is complete, just before the process
 * and the connection end; its outcome waits for that end. A service that does not answer it within
 * the answer limit is ended by a signal, which it watches for in a thread of its own.
 *
 * Threads:   the thread it lives in, whose event loop it needs; nothing blocks.
 * Errors:    all in the outcome: exactly one finished() for each begin().
 */
class ControlClient : public QObject
{
    Q_OBJECT

public:
    /** Of the target, the two limits count. */
    ControlClient(const ControlRequest &request, const ServiceTarget &target, QObject *parent);

    /** @param socket  absolute path; empty or nothing there is the outcome No */
    void begin(const QString &socket);

signals:
    void finished(const ControlOutcome &outcome);

private:
    void takeReplies();
    void takeReply(const ControlReply &reply);
    void failed();
    void expire();
    void awaitEnd();
    bool signalService() const;
    void conclude(ControlOutcome::Reached reached);

    ControlRequest m_request;
    ServiceTarget m_target;
    QDeadlineTimer m_whole;
    QLocalSocket m_socket;
    QTimer m_deadline;
    ControlOutcome m_outcome;
    bool m_endAwaited = false; // it took the termination, or was sent the signal
    bool m_answered = false;
    bool m_completed = false; // the second answer to a termination came
    bool m_concluded = false;
};
