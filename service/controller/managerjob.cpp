#include "managerjob.h"

#include "servicepaths.h"

#include <QCoreApplication>
#include <QDBusArgument>

namespace {

const QLatin1String unitInterface("org.freedesktop.systemd1.Unit");
const QLatin1String serviceInterface("org.freedesktop.systemd1.Service");
const QLatin1String propertiesInterface("org.freedesktop.DBus.Properties");

// A human types a password meanwhile.
constexpr std::chrono::milliseconds dialogueLimit { 300000 };

QString pathIn(const QDBusMessage &reply)
{
    return reply.arguments().value(0).value<QDBusObjectPath>().path();
}

} // namespace

ManagerJob::ManagerJob(const ServiceTarget &target, ServiceAction action, QObject *parent)
    : QObject(parent)
    , m_target(target)
    , m_action(action)
    , m_link(target.scope, this)
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this,
            [this] { conclude(failure(ServiceError::TimedOut, m_target.name)); });
    connect(&m_link, &ManagerLink::opened, this, &ManagerJob::proceed);
    connect(&m_link, &ManagerLink::jobRemoved, this, &ManagerJob::takeRemoval);
    connect(&m_link, &ManagerLink::lost, this,
            [this] { conclude(failure(ServiceError::Lost, m_target.name)); });
    connect(&m_link, &ManagerLink::unavailable, this, [this](const QString &text) {
        const QString none = QCoreApplication::translate("Service", "no service manager answers");
        conclude(failure(ServiceError::NotSupported, m_target.name,
                         text.isEmpty() ? none : none + QStringLiteral(" (%1)").arg(text)));
    });
}

void ManagerJob::begin()
{
    m_deadline.start(m_target.timeLimit);
    m_link.open();
}

void ManagerJob::proceed()
{
    if (m_action == ServiceAction::Reload)
        return reload();
    locateUnit();
}

void ManagerJob::locateUnit()
{
    call(ManagerLink::managerCall(QStringLiteral("LoadUnit"), { unitName(m_target.name) }),
         [this](const QDBusMessage &reply) {
             m_unitPath = pathIn(reply);
             readUnit(&ManagerJob::decide);
         });
}

void ManagerJob::readUnit(Next next)
{
    readProperties(unitInterface, [this, next] {
        readProperties(serviceInterface, [this, next] { (this->*next)(); });
    });
}

void ManagerJob::readProperties(const QString &interface, const std::function<void()> &next)
{
    call({ m_unitPath, propertiesInterface, QStringLiteral("GetAll"), { interface } },
         [this, next](const QDBusMessage &reply) {
             m_status.take(qdbus_cast<QVariantMap>(reply.arguments().value(0)));
             next();
         });
}

void ManagerJob::decide()
{
    const ServiceState state = m_status.state();
    const bool runs = state == ServiceState::Running;
    const bool rests = state == ServiceState::Stopped || state == ServiceState::Failed;
    // A unit whose file is gone may still run, and can be stopped.
    if (!m_status.isLoaded() && rests)
        return conclude(unusable(m_target.name, m_status));
    if (m_action == ServiceAction::Query || (m_action == ServiceAction::Start && runs)
        || (m_action == ServiceAction::Stop && rests))
        return concludeUnchanged();
    requestJob();
}

void ManagerJob::requestJob()
{
    const bool starts = m_action == ServiceAction::Start;
    const ManagerLink::Call request = ManagerLink::managerCall(
        starts ? QStringLiteral("StartUnit") : QStringLiteral("StopUnit"),
        { unitName(m_target.name), QStringLiteral("replace") }, m_target.authorization);
    if (m_target.authorization == ServiceAuthorization::Interactive)
        m_deadline.start(dialogueLimit);
    call(request, [this](const QDBusMessage &reply) {
        m_deadline.start(m_target.timeLimit);
        m_job = pathIn(reply);
        if (m_removedEarly.contains(m_job))
            takeRemoval(m_job, m_removedEarly.value(m_job));
    });
}

void ManagerJob::takeRemoval(const QString &job, const QString &result)
{
    if (m_job.isEmpty()) {
        m_removedEarly.insert(job, result);
        return;
    }
    if (job != m_job || !m_jobResult.isEmpty())
        return;
    m_jobResult = result;
    readUnit(&ManagerJob::judge);
}

void ManagerJob::judge()
{
    if (m_action == ServiceAction::Stop)
        return conclude(stopOutcome(m_target.name, m_jobResult, m_status));
    const ServiceResult outcome = startOutcome(m_target.name, m_jobResult, m_status);
    if (!outcome.ok())
        return conclude(outcome);
    m_startedPid = m_status.mainPid;
    m_deadline.start(m_target.settleTime + m_target.timeLimit);
    QTimer::singleShot(m_target.settleTime, this, [this] { readUnit(&ManagerJob::judgeSettled); });
}

void ManagerJob::judgeSettled()
{
    // Another main process: it crashed and the manager has already started it again.
    if (m_status.mainPid != m_startedPid)
        m_status.active = QStringLiteral("failed");
    conclude(startOutcome(m_target.name, m_jobResult, m_status));
}

void ManagerJob::reload()
{
    call(ManagerLink::managerCall(QStringLiteral("Reload"), {}, m_target.authorization),
         [this](const QDBusMessage &) { conclude({}); });
}

void ManagerJob::call(const ManagerLink::Call &call, const ManagerLink::Reply &reply)
{
    // Slightly later than our own deadline, so that there is one place that tells of it.
    const auto limit = m_deadline.remainingTimeAsDuration() + std::chrono::seconds(1);
    m_link.call(call, limit, [this, reply](const QDBusMessage &message) {
        if (m_concluded)
            return;
        if (message.type() != QDBusMessage::ReplyMessage)
            return conclude(refusal(m_target.name, message));
        reply(message);
    });
}

void ManagerJob::conclude(const ServiceResult &result)
{
    if (m_concluded)
        return;
    m_concluded = true;
    m_deadline.stop();
    ServiceResult complete = result;
    complete.installed = m_status.isLoaded();
    emit finished(complete);
}

void ManagerJob::concludeUnchanged()
{
    ServiceResult result;
    result.state = m_status.state();
    result.changed = false;
    result.text = QCoreApplication::translate("Service", "unchanged");
    conclude(result);
}
