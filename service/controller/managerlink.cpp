#include "managerlink.h"

#include "managertexts.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QThread>
#include <QUuid>

namespace {

const QLatin1String managerName("org.freedesktop.systemd1");
const QLatin1String managerPath("/org/freedesktop/systemd1");
const QLatin1String managerInterface("org.freedesktop.systemd1.Manager");
const QLatin1String busInterface("org.freedesktop.DBus");
const QLatin1String localInterface("org.freedesktop.DBus.Local");

constexpr std::chrono::milliseconds subscribeLimit { 10000 };

// Empty without a user bus: left to itself, the library would try to start one.
QString userBusAddress()
{
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty())
        return address;
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return QFileInfo::exists(socket) ? QStringLiteral("unix:path=") + socket : QString();
}

} // namespace

/** A bus connection under a name of its own. Made and closed in any thread. */
class ManagerLink::Connection
{
public:
    ~Connection() { QDBusConnection::disconnectFromBus(m_name); }

    void make(ServiceScope scope)
    {
        if (scope == ServiceScope::System)
            QDBusConnection::connectToBus(QDBusConnection::SystemBus, m_name);
        else if (const QString address = userBusAddress(); !address.isEmpty())
            QDBusConnection::connectToBus(address, m_name);
    }

    QDBusConnection bus() const { return QDBusConnection(m_name); }

private:
    const QString m_name = QUuid::createUuid().toString();
};

ManagerLink::Call ManagerLink::managerCall(const QString &method, const QVariantList &arguments,
                                           ServiceAuthorization authorization)
{
    return { managerPath, managerInterface, method, arguments, authorization };
}

ManagerLink::ManagerLink(ServiceScope scope, QObject *parent)
    : QObject(parent)
    , m_scope(scope)
    , m_connection(std::make_shared<Connection>())
{
}

ManagerLink::~ManagerLink()
{
    // Before the connection, which deletes its pending calls no matter who still refers to them.
    qDeleteAll(findChildren<QDBusPendingCallWatcher *>());
}

void ManagerLink::open()
{
    QThread *maker =
        QThread::create([connection = m_connection, scope = m_scope] { connection->make(scope); });
    connect(maker, &QThread::finished, maker, &QObject::deleteLater);
    connect(maker, &QThread::finished, this, &ManagerLink::subscribe);
    maker->start();
}

void ManagerLink::subscribe()
{
    QDBusConnection bus = m_connection->bus();
    if (!bus.isConnected())
        return emit unavailable(bus.lastError().message());

    // Without a sender's name: to look it up would block. The handlers compare it instead.
    bus.connect(QString(), managerPath, managerInterface, QStringLiteral("JobRemoved"), this,
                SLOT(takeJobRemoved(QDBusMessage)));
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus"), busInterface,
                QStringLiteral("NameOwnerChanged"), QStringList { managerName }, QString(), this,
                SLOT(takeOwnerChange(QDBusMessage)));
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"), localInterface,
                QStringLiteral("Disconnected"), this, SLOT(takeDisconnection()));

    call(managerCall(QStringLiteral("Subscribe")), subscribeLimit,
         [this](const QDBusMessage &reply) {
             if (reply.type() != QDBusMessage::ReplyMessage)
                 return emit unavailable(reply.errorMessage());
             m_manager = reply.service();
             emit opened();
         });
}

void ManagerLink::call(const Call &call, std::chrono::milliseconds limit, const Reply &reply)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(managerName, call.path, call.interface, call.method);
    message.setArguments(call.arguments);
    message.setAutoStartService(false);
    message.setInteractiveAuthorizationAllowed(call.authorization
                                               == ServiceAuthorization::Interactive);
    auto *watcher = new QDBusPendingCallWatcher(
        m_connection->bus().asyncCall(message, int(limit.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, reply] {
        watcher->deleteLater();
        reply(watcher->reply());
    });
}

void ManagerLink::takeJobRemoved(const QDBusMessage &message)
{
    // id, job path, unit, result
    const QVariantList arguments = message.arguments();
    if (message.service() != m_manager || message.signature() != QLatin1String("uoss"))
        return;
    emit jobRemoved(arguments[1].value<QDBusObjectPath>().path(), arguments[3].toString());
}

void ManagerLink::takeOwnerChange(const QDBusMessage &message)
{
    // name, old owner, new owner
    const QVariantList arguments = message.arguments();
    if (message.service() != busInterface || message.signature() != QLatin1String("sss"))
        return;
    if (!m_manager.isEmpty() && arguments[0] == managerName && arguments[1] == m_manager)
        emit lost();
}

void ManagerLink::takeDisconnection()
{
    if (!m_manager.isEmpty())
        emit lost();
}
