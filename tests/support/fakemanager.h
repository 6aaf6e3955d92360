#pragma once

#include <QThread>

#include <QString>

/**
 * The part of systemd's manager that services are controlled with, on a private bus.
 *
 * It knows any unit and pretends to start and stop it; those of these names in their own manner:
 * "Missing", "Masked", "FailsToStart", "Deaf" (has to be killed to stop),
 * "Hung" (ends itself at its limit), "Sloppy" (its stop ends with an error),
 * "ConditionUnmet" (the job is done, nothing was started),
 * "CrashLoop"      (active, with a new process at each look),
 * "EarlyRemoval"   (the job is removed before the call is answered),
 * "OtherJobs"      (jobs of others fail meanwhile),
 * "Denied"         (unless the caller allows a dialogue),
 * "NeverDone"      (the job is never removed), "NeverAnswers",
 * "ManagerLeaves"  (the manager leaves the bus during the job).
 *
 * Threads: lives in a thread of its own, so that tests may block in the calls that it answers.
 */
class FakeManager
{
public:
    explicit FakeManager(const QString &busAddress);
    ~FakeManager();

    bool isOnBus() const { return m_onBus; }

private:
    QThread m_thread;
    bool m_onBus = false; // written before the constructor returns
};
