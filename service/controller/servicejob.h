#pragma once

#include "controlprotocol.h"
#include "servicetypes.h"

#include <QObject>

struct ControlOutcome;

/**
 * One request to one service, by the way that fits it: its manager, its control socket, or the
 * socket where the manager does not run it.
 *
 * Threads:   the thread it lives in, whose event loop it needs; nothing blocks.
 * Errors:    all in the result: exactly one finished() for each begin(), possibly within it.
 */
class ServiceJob : public QObject
{
    Q_OBJECT

public:
    ServiceJob(const ServiceTarget &target, const ServiceRequest &request,
               QObject *parent = nullptr);

    void begin();

signals:
    void finished(const ServiceResult &result);

private:
    void askManager();
    void takeManagerResult(const ServiceResult &result);
    void askService(ControlVerb verb);
    void takeOutcome(ControlVerb verb, const ControlOutcome &outcome);
    ServiceResult abortedResult() const;
    ServiceResult unansweredResult(const ControlOutcome &outcome) const;
    ServiceResult answeredResult(ControlVerb verb, const ControlReply &reply) const;

    ServiceTarget m_target;
    ServiceRequest m_request;
    ServiceResult m_managerResult; // what holds when no socket answers either
};
