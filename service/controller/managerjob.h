#pragma once

#include "managerlink.h"
#include "managertexts.h"

#include <QHash>
#include <QTimer>

/**
 * One request to the service manager, step by step: connect and subscribe, read the unit, ask
 * for the job, wait until it is removed, read the unit again.
 *
 * Threads:   the thread it lives in, whose event loop it needs; nothing blocks.
 * Ownership: deleting it closes its connection; a job that was asked for goes on.
 * Errors:    all in the result: exactly one finished() for each begin().
 */
class ManagerJob : public QObject
{
    Q_OBJECT

public:
    /** @param action  Query, Start, Stop or Reload */
    ManagerJob(const ServiceTarget &target, ServiceAction action, QObject *parent);

    void begin();

signals:
    void finished(const ServiceResult &result);

private:
    using Next = void (ManagerJob::*)();

    void proceed();
    void locateUnit();
    void readUnit(Next next);
    void readProperties(const QString &interface, const std::function<void()> &next);
    void decide();
    void requestJob();
    void takeRemoval(const QString &job, const QString &result);
    void judge();
    void judgeSettled();
    void reload();
    void call(const ManagerLink::Call &call, const ManagerLink::Reply &reply);
    void conclude(const ServiceResult &result);
    void concludeUnchanged();

    ServiceTarget m_target;
    ServiceAction m_action;
    ManagerLink m_link;
    QTimer m_deadline;
    QString m_unitPath;
    UnitStatus m_status;
    QString m_job;                          // its path, once the manager replied
    QHash<QString, QString> m_removedEarly; // job path -> result, until then
    QString m_jobResult;
    uint m_startedPid = 0; // main process when the start was found to have worked
    bool m_concluded = false;
};
