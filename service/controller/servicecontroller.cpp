#include "servicecontroller.h"

#include "servicejob.h"

#include <QEventLoop>
#include <QThread>

#include <memory>

ServiceController::ServiceController(const QString &name, QObject *parent)
    : QObject(parent)
{
    m_target.name = name;
    qRegisterMetaType<ServiceAction>();
    qRegisterMetaType<ServiceResult>();
}

ServiceController::~ServiceController() = default;

bool ServiceController::isInstalled()
{
    carryOut({ ServiceAction::Query });
    if (m_last.error == ServiceError::UnitMissing)
        m_last = {}; // a certain answer, not a failure
    return m_last.installed;
}

bool ServiceController::isRunning()
{
    return state() == ServiceState::Running;
}

ServiceState ServiceController::state()
{
    return carryOut({ ServiceAction::Query }) ? m_last.state : ServiceState::Unknown;
}

bool ServiceController::start(const QStringList &arguments)
{
    return carryOut({ ServiceAction::Start, 0, arguments });
}

bool ServiceController::stop()
{
    return carryOut({ ServiceAction::Stop });
}

bool ServiceController::pause()
{
    return carryOut({ ServiceAction::Pause });
}

bool ServiceController::resume()
{
    return carryOut({ ServiceAction::Resume });
}

bool ServiceController::sendCommand(int command)
{
    return carryOut({ ServiceAction::Command, command });
}

bool ServiceController::reloadManager()
{
    return carryOut({ ServiceAction::Reload });
}

// In a thread of its own: the job needs an event loop, and that of the caller must not turn.
bool ServiceController::carryOut(const ServiceRequest &request)
{
    ServiceResult result;
    const std::unique_ptr<QThread> thread(QThread::create([&result, request, target = m_target] {
        QEventLoop loop;
        ServiceJob job(target, request);
        QObject::connect(&job, &ServiceJob::finished, &loop,
                         [&result, &loop](const ServiceResult &outcome) {
                             result = outcome;
                             loop.quit();
                         });
        QMetaObject::invokeMethod(&job, &ServiceJob::begin, Qt::QueuedConnection);
        loop.exec();
    }));
    thread->start();
    thread->wait();
    m_last = result;
    return m_last.ok();
}

void ServiceController::request(const ServiceRequest &request)
{
    m_pending.push_back({ m_target, request });
    if (m_pending.size() == 1)
        QMetaObject::invokeMethod(this, &ServiceController::beginNext, Qt::QueuedConnection);
}

void ServiceController::beginNext()
{
    m_job = new ServiceJob(m_pending.front().target, m_pending.front().request, this);
    // Queued: whoever hears of the end may delete this object, and the job with it.
    connect(m_job, &ServiceJob::finished, this, &ServiceController::conclude, Qt::QueuedConnection);
    m_job->begin();
}

void ServiceController::conclude(const ServiceResult &result)
{
    m_job->deleteLater();
    const ServiceAction action = m_pending.front().request.action;
    m_pending.pop_front();
    m_last = result;
    if (!m_pending.empty())
        QMetaObject::invokeMethod(this, &ServiceController::beginNext, Qt::QueuedConnection);
    emit finished(action, result); // last: a slot may delete this object
}
