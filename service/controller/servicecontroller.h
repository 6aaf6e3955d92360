#pragma once

#include "servicetypes.h"

#include <QObject>

#include <deque>

class ServiceJob;

/**
 * Controls one named background service: state, start, stop, pause, resume, commands.
 *
 * The service manager is asked over D-Bus for the state, start and stop; pause, resume and
 * commands go to services built with Service, through their control socket. Where there is no
 * manager, such a service can still be asked and stopped through its socket.
 *
 * Every operation comes in two forms. The request...() functions return at once; each ends with
 * exactly one finished(), in the order of the requests, even when it fails at once. The plain
 * functions block until the end (at most the time limit, the settle time and, when interactive,
 * the dialogue) without running the caller's event loop: not for a window's thread.
 *
 * Threads:   one thread, the one it lives in; the request...() forms need its event loop.
 * Ownership: deleting it drops its requests without finished(); what the manager was already
 *            asked to do is still done.
 * Errors:    false, or a result that is not ok(); errorString() tells people why. Never throws.
 */
class ServiceController : public QObject
{
    Q_OBJECT

public:
    explicit ServiceController(const QString &name, QObject *parent = nullptr);
    ~ServiceController() override;

    QString name() const { return m_target.name; }

    /** These hold for the requests made after them. */
    void setScope(ServiceScope scope) { m_target.scope = scope; }
    void setAuthorization(ServiceAuthorization mode) { m_target.authorization = mode; }
    void setTimeLimit(std::chrono::milliseconds limit) { m_target.timeLimit = limit; }
    void setAnswerLimit(std::chrono::milliseconds limit) { m_target.answerLimit = limit; }
    void setSettleTime(std::chrono::milliseconds time) { m_target.settleTime = time; }

    /** False also when it cannot be known; error() is None when the answer is certain. */
    bool isInstalled();
    bool isRunning();
    ServiceState state();

    /** True when the service is running afterwards; also when it was before (see unchanged()). */
    bool start(const QStringList &arguments = {});

    /** True when the service is stopped afterwards, also when the manager had to kill it. */
    bool stop();

    bool pause();
    bool resume();
    bool sendCommand(int command);

    /** Makes the manager read the unit files again. */
    bool reloadManager();

    /** What the functions above are short for. */
    bool carryOut(const ServiceRequest &request);

    void request(const ServiceRequest &request);
    void requestStart() { request({ ServiceAction::Start }); }
    void requestStop() { request({ ServiceAction::Stop }); }
    void requestState() { request({ ServiceAction::Query }); }

    /** How the operation that ended last ended, of either form. */
    const ServiceResult &lastResult() const { return m_last; }
    ServiceError error() const { return m_last.error; }
    QString errorString() const { return m_last.ok() ? QString() : m_last.text; }
    bool unchanged() const { return m_last.ok() && !m_last.changed; }

signals:
    void finished(ServiceAction action, const ServiceResult &result);

private:
    struct Pending
    {
        ServiceTarget target;
        ServiceRequest request;
    };

    void beginNext();
    void conclude(const ServiceResult &result);

    ServiceTarget m_target;
    ServiceResult m_last;
    std::deque<Pending> m_pending; // the first is under way
    ServiceJob *m_job = nullptr;   // of the first, once begun
};
