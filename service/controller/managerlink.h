#pragma once

#include "servicetypes.h"

#include <QDBusMessage>
#include <QObject>

#include <functional>
#include <memory>

/**
 * A connection of our own to the bus on which a service manager is, and calls to that manager.
 *
 * Calls answer later, through the event loop. Signals of jobs come for all jobs of the manager,
 * and may come before the reply of the call that made the job.
 *
 * Threads:   the thread it lives in. Only the connection itself is made in a thread of its own,
 *            because that blocks for as long as a hung bus likes.
 *            On a bus that takes connections and never answers, requests end in time, but Qt
 *            makes the end of the process wait until that bus is gone.
 * Ownership: the connection is closed when this is deleted (if need be, once it was made).
 * Errors:    unavailable() before opened(), lost() after; a reply may be an error message.
 */
class ManagerLink : public QObject
{
    Q_OBJECT

public:
    using Reply = std::function<void(const QDBusMessage &)>;

    struct Call
    {
        QString path;
        QString interface;
        QString method;
        QVariantList arguments {};
        ServiceAuthorization authorization = ServiceAuthorization::Silent;
    };

    /** A call to the manager itself, and not to one of its units. */
    static Call managerCall(const QString &method, const QVariantList &arguments = {},
                            ServiceAuthorization authorization = ServiceAuthorization::Silent);

    ManagerLink(ServiceScope scope, QObject *parent);
    ~ManagerLink() override;

    /** Connects and subscribes to the manager's signals. */
    void open();

    /** @param limit  after it, the reply is an error message */
    void call(const Call &call, std::chrono::milliseconds limit, const Reply &reply);

signals:
    void opened();
    void unavailable(const QString &text);
    void lost();
    void jobRemoved(const QString &job, const QString &result);

private slots:
    void takeJobRemoved(const QDBusMessage &message);
    void takeOwnerChange(const QDBusMessage &message);
    void takeDisconnection();

private:
    class Connection;

    void subscribe();

    ServiceScope m_scope;
    std::shared_ptr<Connection> m_connection;
    QString m_manager; // its unique bus name: signals of others do not count
};
