#pragma once

#include "service/servicecontroller.h"
#include "upgradeplan.h"

#include <QPointer>
#include <QProcess>
#include <QWidget>

/**
 * One upgrade: stops the host's service, runs the upgrade program, starts the service again.
 *
 * The service is started again whatever happened before; of several runs at a time, the last to
 * end does it. Only when it is there and would not stop the program is not run: it would have to
 * share the device with the service. The client is not stopped by this: it polls on. Meanwhile the
 * page shows that it is busy and takes no input. An application that quits waits for the program's
 * end: an upgrade that is killed half-way leaves a device without firmware.
 *
 * Threads:   GUI thread, which it never blocks but at the application's end.
 * Ownership: its own; it outlives the page and deletes itself after finished().
 * Errors:    each failure is logged, and shown over the page if that still exists.
 */
class UpgradeRun : public QObject
{
    Q_OBJECT

public:
    /** Begins an upgrade over `page`, which lies in another widget. */
    static UpgradeRun *begin(QWidget *page, const UpgradePlan &plan);

signals:
    /** The service runs again, or is left to another run that still needs it stopped.
     *  @param failures  what people should know; empty after a good upgrade */
    void finished(const QStringList &failures);

private:
    explicit UpgradeRun(QWidget *page, const UpgradePlan &plan);

    bool isAlone() const;
    void stopService();
    void serviceDone(ServiceAction action, const ServiceResult &result);
    void serviceStopped(const ServiceResult &result);
    void programFailed(QProcess::ProcessError error);
    void programFinished(int exitCode, QProcess::ExitStatus status);
    void startService();
    void serviceStarted(const ServiceResult &result);
    void finishBeforeQuit();
    void addFailure(const QString &text);
    void conclude();

    const UpgradePlan m_plan;
    ServiceController m_controller;
    QProcess m_program;
    QPointer<QWidget> m_page;
    QPointer<QWidget> m_cover; // over the page, with the busy indicator
    bool m_isStarting = false; // the service, as the last run
    ServiceError m_stopError = ServiceError::None;
    QStringList m_failures;
};
