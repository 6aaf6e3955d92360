#include "servicejob.h"

#include "controlclient.h"
#include "managerjob.h"
#include "servicepaths.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

const QLatin1String unchangedReply("unchanged");

struct WayRow
{
    ServiceAction action;
    bool manager;     // asked first; the socket is the way of the others
    ControlVerb verb; // over the socket
};

// clang-format off
constexpr WayRow wayRows[] = {
    { ServiceAction::Query,   true,  ControlVerb::State     },
    { ServiceAction::Start,   true,  ControlVerb::State     },
    { ServiceAction::Stop,    true,  ControlVerb::Terminate },
    { ServiceAction::Pause,   false, ControlVerb::Pause     },
    { ServiceAction::Resume,  false, ControlVerb::Resume    },
    { ServiceAction::Command, false, ControlVerb::Command   },
    { ServiceAction::Reload,  true,  ControlVerb::State     },
};
// clang-format on

const WayRow &wayOf(ServiceAction action)
{
    return *std::find_if(std::begin(wayRows), std::end(wayRows),
                         [action](const WayRow &row) { return row.action == action; });
}

// Whether a service that the manager does not run may still be there on its own.
bool leavesOpen(const ServiceResult &result, ServiceAction action)
{
    if (action == ServiceAction::Reload)
        return false;
    const bool unmanaged =
        result.error == ServiceError::NotSupported || result.error == ServiceError::UnitMissing;
    const bool rests = result.ok() && !result.changed
        && (result.state == ServiceState::Stopped || result.state == ServiceState::Failed);
    return unmanaged || rests;
}

} // namespace

ServiceJob::ServiceJob(const ServiceTarget &target, const ServiceRequest &request, QObject *parent)
    : QObject(parent)
    , m_target(target)
    , m_request(request)
{
}

void ServiceJob::begin()
{
    const WayRow &way = wayOf(m_request.action);
    if (m_request.action != ServiceAction::Reload && !isServiceName(m_target.name))
        return emit finished(failure(ServiceError::InvalidName, m_target.name));
    if (!m_request.arguments.isEmpty()) {
        const QString why = QCoreApplication::translate(
            "Service", "the service manager passes no arguments to a service");
        return emit finished(failure(ServiceError::NotSupported, m_target.name, why));
    }
    way.manager ? askManager() : askService(way.verb);
}

void ServiceJob::askManager()
{
    auto *job = new ManagerJob(m_target, m_request.action, this);
    connect(job, &ManagerJob::finished, this, &ServiceJob::takeManagerResult);
    job->begin();
}

void ServiceJob::takeManagerResult(const ServiceResult &result)
{
    if (!leavesOpen(result, m_request.action))
        return emit finished(result);
    m_managerResult = result;
    askService(wayOf(m_request.action).verb);
}

void ServiceJob::askService(ControlVerb verb)
{
    auto *client = new ControlClient(ControlRequest { verb, m_request.command }, m_target, this);
    connect(client, &ControlClient::finished, this,
            [this, verb](const ControlOutcome &outcome) { takeOutcome(verb, outcome); });
    client->begin(controlSocket(m_target.scope, m_target.name));
}

void ServiceJob::takeOutcome(ControlVerb verb, const ControlOutcome &outcome)
{
    if (outcome.reached == ControlOutcome::Reached::Answered)
        return emit finished(answeredResult(verb, outcome.reply));
    emit finished(outcome.reached == ControlOutcome::Reached::Aborted ? abortedResult()
                                                                      : unansweredResult(outcome));
}

ServiceResult ServiceJob::abortedResult() const
{
    ServiceResult result;
    result.state = ServiceState::Stopped;
    result.installed = m_managerResult.installed;
    result.text = QCoreApplication::translate(
        "Service",
        "The service did not get to the end of its stop: it had to be killed, or crashed.");
    return result;
}

ServiceResult ServiceJob::unansweredResult(const ControlOutcome &outcome) const
{
    if (outcome.reached == ControlOutcome::Reached::TimedOut)
        return failure(ServiceError::TimedOut, m_target.name);
    const bool absent = outcome.reached == ControlOutcome::Reached::No;
    if (absent && wayOf(m_request.action).manager)
        return m_managerResult;
    return failure(ServiceError::NotReachable, m_target.name);
}

ServiceResult ServiceJob::answeredResult(ControlVerb verb, const ControlReply &reply) const
{
    if (!reply.ok)
        return failure(ServiceError::Failed, m_target.name, reply.text);
    ServiceResult result;
    result.state = verb == ControlVerb::Terminate ? ServiceState::Stopped : ServiceState::Running;
    result.installed = m_managerResult.installed;
    result.changed = verb != ControlVerb::State && reply.text != unchangedReply;
    result.text = result.changed ? reply.text : QCoreApplication::translate("Service", "unchanged");
    return result;
}
