#pragma once

#include "service/servicecontroller.h"
#include "upgradeplan.h"

#include <QPointer>
#include <QProcess>
#include <QWidget>

/**
 * One upgrade: stops the host's service, runs the upgrade program, starts the service again.
 *
 * The service is started again whatever happened before. Only when it is there and would not stop
 * the program is not run: two programs must not talk to a device whose firmware is replaced.
 * Meanwhile the page shows that it is busy and takes no input. An application that quits waits
 * for the program's end: an upgrade that is killed half-way leaves a device without firmware.
 *
 * Threads:   GUI thread, which it never blocks but at the application's end.
 * Ownership: its own; it outlives the page and deletes itself after finished().
 * Errors:    each failure is logged, and shown over the page if that still exists.
 */
class UpgradeRun : public QObject
{
    Q_OBJECT

public:
    /** Begins an upgrade over `page`. */
    static UpgradeRun *begin(QWidget *page, const UpgradePlan &plan);

signals:
    /** The service was asked to run again.
     *  @param failures  what people should know; empty after a good upgrade */
    void finished(const QStringList &failures);

private:
    explicit UpgradeRun(QWidget *page, const UpgradePlan &plan);

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
    ServiceError m_stopError = ServiceError::None;
    QStringList m_failures;
};
