#include "upgraderun.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>

namespace {

using namespace std::chrono_literals;

constexpr auto quietPatience = 60s; // for the clients to leave the device
constexpr auto lookAgain = 50ms;

// Those that have not ended. Confined to the GUI thread.
QList<UpgradeRun *> &runs()
{
    static QList<UpgradeRun *> all;
    return all;
}

// Nothing was stopped, because there is nothing to stop.
bool isAbsent(ServiceError error)
{
    return error == ServiceError::UnitMissing || error == ServiceError::NotSupported;
}

} // namespace

Upgrade *beginUpgrade(const Family &family, UpgradeDevice &device)
{
    const UpgradePlan plan = planUpgrade(family, device.location());
    return UpgradeRun::begin(plan, device.hold());
}

UpgradeRun *UpgradeRun::begin(const UpgradePlan &plan, std::unique_ptr<DeviceHold> hold)
{
    auto *run = new UpgradeRun(plan, std::move(hold));
    run->stopService();
    return run;
}

UpgradeRun::UpgradeRun(const UpgradePlan &plan, std::unique_ptr<DeviceHold> hold)
    : m_plan(plan)
    , m_hold(std::move(hold))
    , m_controller(plan.service)
{
    runs().append(this);
    m_controller.setScope(plan.scope);
    m_controller.setAuthorization(ServiceAuthorization::Interactive);
    connect(&m_controller, &ServiceController::finished, this, &UpgradeRun::serviceDone);
    connect(&m_program, &QProcess::errorOccurred, this, &UpgradeRun::programFailed);
    connect(&m_program, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &UpgradeRun::programFinished);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &UpgradeRun::finishBeforeQuit);
}

bool UpgradeRun::isAlone() const
{
    const QList<UpgradeRun *> &all = runs();
    return std::none_of(all.begin(), all.end(), [this](const UpgradeRun *other) {
        return other != this && other->m_plan.service == m_plan.service;
    });
}

void UpgradeRun::stopService()
{
    // A start that is under way would overtake the stop: it ends first.
    for (const UpgradeRun *other : qAsConst(runs())) {
        if (other->m_isStarting && other->m_plan.service == m_plan.service) {
            connect(other, &UpgradeRun::finished, this, &UpgradeRun::stopService);
            return;
        }
    }
    m_controller.requestStop();
}

void UpgradeRun::serviceDone(ServiceAction action, const ServiceResult &result)
{
    if (action == ServiceAction::Stop)
        serviceStopped(result);
    else
        serviceStarted(result);
}

void UpgradeRun::serviceStopped(const ServiceResult &result)
{
    m_stopError = result.error;
    if (!result.ok())
        addFailure(tr("The service %1 could not be stopped: %2").arg(m_plan.service, result.text));
    if (!result.ok() && !isAbsent(result.error)) {
        startService();
        return;
    }
    m_quietBy.setRemainingTime(quietPatience);
    runProgram();
}

// A driver's call that is under way is not for us to end: it is waited for.
void UpgradeRun::runProgram()
{
    if (m_hold && !m_hold->isQuiet()) {
        if (!m_quietBy.hasExpired()) {
            QTimer::singleShot(lookAgain, this, &UpgradeRun::runProgram);
            return;
        }
        addFailure(tr("The device is still in use: the upgrade program was not started."));
        startService();
        return;
    }
    m_program.setProcessChannelMode(QProcess::ForwardedChannels);
    m_program.start(m_plan.program, m_plan.arguments);
}

void UpgradeRun::programFailed(QProcess::ProcessError error)
{
    if (error != QProcess::FailedToStart)
        return; // finished() follows
    addFailure(tr("The upgrade program %1 could not be started: %2")
                   .arg(m_plan.program, m_program.errorString()));
    startService();
}

void UpgradeRun::programFinished(int exitCode, QProcess::ExitStatus status)
{
    if (status == QProcess::CrashExit)
        addFailure(tr("The upgrade program crashed."));
    else if (exitCode != 0)
        addFailure(tr("The upgrade program ended with code %1.").arg(exitCode));
    startService();
}

void UpgradeRun::startService()
{
    if (!isAlone())
        return conclude();
    m_isStarting = true;
    m_controller.requestStart();
}

void UpgradeRun::serviceStarted(const ServiceResult &result)
{
    // A service that is not there was reported when it should have been stopped.
    if (!result.ok() && !(isAbsent(result.error) && result.error == m_stopError))
        addFailure(
            tr("The service %1 could not be started again: %2").arg(m_plan.service, result.text));
    conclude();
}

void UpgradeRun::finishBeforeQuit()
{
    disconnect(&m_program, nullptr, this, nullptr);
    disconnect(&m_controller, nullptr, this, nullptr);
    if (m_program.state() != QProcess::NotRunning) {
        QEventLoop loop;
        connect(&m_program, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), &loop,
                &QEventLoop::quit);
        emit quitWaits();
        loop.exec();
    }
    runs().removeOne(this);
    if (isAlone() && !m_controller.start())
        qWarning("upgrade: %s", qPrintable(m_controller.errorString()));
    deleteLater();
}

void UpgradeRun::abandon()
{
    qWarning("upgrade: given up while %s runs", qPrintable(m_plan.program));
    m_program.kill();
}

void UpgradeRun::addFailure(const QString &text)
{
    qWarning("upgrade: %s", qPrintable(text));
    m_failures.append(text);
}

void UpgradeRun::conclude()
{
    disconnect(qApp, nullptr, this, nullptr);
    runs().removeOne(this);
    m_hold.reset();
    deleteLater();
    emit finished(m_failures);
}
