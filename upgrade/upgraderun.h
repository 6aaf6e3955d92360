#pragma once

#include "servicecontroller.h"
#include "upgrade.h"
#include "upgradeplan.h"

#include <QDeadlineTimer>
#include <QProcess>

/**
 * One upgrade: stops the host's service, runs the upgrade program, starts the service again.
 *
 * The service is started again whatever happened before; of several runs at a time, the last to end
 * does it. Only when it is there and would not stop the program is not run: it would have to share
 * the device with the service. So it would with our own clients, which are held off the device from
 * the begin to the end, and waited for before the program starts. An application that quits waits
 * for the program's end: an upgrade that is killed half-way leaves a device without firmware.
 *
 * Threads:   GUI thread, which it never blocks but at the application's end.
 * Ownership: its own; it deletes itself after finished().
 * Errors:    each failure is logged, and told with finished().
 */
class UpgradeRun : public Upgrade
{
    Q_OBJECT

public:
    /** Begins an upgrade; it ends with finished(), never before the event loop turns.
     *  @param hold  kept until the end; null when nobody in this process knows the device */
    static UpgradeRun *begin(const UpgradePlan &plan, std::unique_ptr<DeviceHold> hold = nullptr);

    void abandon() override;

private:
    UpgradeRun(const UpgradePlan &plan, std::unique_ptr<DeviceHold> hold);

    bool isAlone() const;
    void stopService();
    void serviceDone(ServiceAction action, const ServiceResult &result);
    void serviceStopped(const ServiceResult &result);
    void runProgram();
    void programFailed(QProcess::ProcessError error);
    void programFinished(int exitCode, QProcess::ExitStatus status);
    void startService();
    void serviceStarted(const ServiceResult &result);
    void finishBeforeQuit();
    void addFailure(const QString &text);
    void conclude();

    const UpgradePlan m_plan;
    std::unique_ptr<DeviceHold> m_hold; // until the run has ended
    QDeadlineTimer m_quietBy;           // when the clients must have left the device
    ServiceController m_controller;
    QProcess m_program;
    bool m_isStarting = false; // the service, as the last run
    ServiceError m_stopError = ServiceError::None;
    QStringList m_failures;
};
