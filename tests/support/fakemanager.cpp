#include "fakemanager.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>

#include <algorithm>
#include <map>

namespace {

const char managerName[] = "org.freedesktop.systemd1";
const char managerPath[] = "/org/freedesktop/systemd1";

struct MannerRow
{
    const char *name;
    const char *load;
    const char *afterStart; // ActiveState
    const char *afterStop;
    const char *result; // of the last run
    const char *job;    // result of a job
    bool conditionMet;
};

// clang-format off
constexpr MannerRow manners[] = {
    { "Missing",        "not-found", "inactive", "inactive", "success",   "done",   true  },
    { "Masked",         "masked",    "inactive", "inactive", "success",   "done",   true  },
    { "FailsToStart",   "loaded",    "failed",   "inactive", "exit-code", "failed", true  },
    { "Deaf",           "loaded",    "active",   "failed",   "timeout",   "done",   true  },
    { "ConditionUnmet", "loaded",    "inactive", "inactive", "success",   "done",   false },
    { "",               "loaded",    "active",   "inactive", "success",   "done",   true  },
};
// clang-format on

struct Unit
{
    QString name;
    MannerRow manner;
    QString active = QStringLiteral("inactive");
    uint mainPid = 1;
};

class Manager : public QDBusVirtualObject
{
public:
    explicit Manager(const QString &busAddress)
        : m_bus(QDBusConnection::connectToBus(busAddress, QStringLiteral("fake manager")))
    {
    }

    ~Manager() override { QDBusConnection::disconnectFromBus(QStringLiteral("fake manager")); }

    bool enter()
    {
        return m_bus.registerVirtualObject(QLatin1String(managerPath), this,
                                           QDBusConnection::SubPath)
            && m_bus.registerService(QLatin1String(managerName));
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const QString member = message.member();
        if (member == QLatin1String("Subscribe") || member == QLatin1String("Reload"))
            return m_bus.send(message.createReply());
        if (member == QLatin1String("GetAll"))
            return m_bus.send(message.createReply(properties(message.path())));
        const QString path = pathOf(message.arguments().value(0).toString());
        if (member == QLatin1String("LoadUnit"))
            return m_bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(path))));
        return takeRequest(message, m_units.at(path), member == QLatin1String("StartUnit"));
    }

private:
    // Of a unit, which is made if need be.
    QString pathOf(const QString &unitName)
    {
        const QString name = unitName.section(QLatin1Char('.'), 0, 0);
        const QString path = QLatin1String(managerPath) + QStringLiteral("/unit/") + name;
        const auto row = std::find_if(
            std::begin(manners), std::end(manners) - 1,
            [&name](const MannerRow &manner) { return name == QLatin1String(manner.name); });
        m_units.insert({ path, Unit { name, *row } });
        return path;
    }

    QVariant properties(const QString &path)
    {
        Unit &unit = m_units.at(path);
        if (unit.name == QLatin1String("CrashLoop"))
            ++unit.mainPid;
        return QVariantMap {
            { QStringLiteral("LoadState"), QLatin1String(unit.manner.load) },
            { QStringLiteral("ActiveState"), unit.active },
            { QStringLiteral("Result"), QLatin1String(unit.manner.result) },
            { QStringLiteral("ConditionResult"), unit.manner.conditionMet },
            { QStringLiteral("MainPID"), unit.mainPid },
        };
    }

    bool takeRequest(const QDBusMessage &message, Unit &unit, bool starts)
    {
        if (unit.name == QLatin1String("NeverAnswers"))
            return true;
        if (unit.name == QLatin1String("Denied") && !message.isInteractiveAuthorizationAllowed())
            return m_bus.send(message.createErrorReply(
                QStringLiteral("org.freedesktop.DBus.Error.InteractiveAuthorizationRequired"),
                QStringLiteral("Interactive authentication required.")));
        const QString job =
            QStringLiteral("%1/job/%2").arg(QLatin1String(managerPath)).arg(++m_lastJob);
        const QDBusMessage reply = message.createReply(QVariant::fromValue(QDBusObjectPath(job)));
        unit.active = QLatin1String(starts ? unit.manner.afterStart : unit.manner.afterStop);
        const bool early = unit.name == QLatin1String("EarlyRemoval");
        if (early)
            removeJob(job, unit.manner.job);
        const bool sent = m_bus.send(reply);
        if (unit.name == QLatin1String("ManagerLeaves"))
            return m_bus.unregisterService(QLatin1String(managerName));
        if (unit.name == QLatin1String("OtherJobs"))
            removeJob(QStringLiteral("/other/job"), "failed");
        if (!early && unit.name != QLatin1String("NeverDone"))
            removeJob(job, unit.manner.job);
        return sent;
    }

    void removeJob(const QString &job, const char *result)
    {
        QDBusMessage signal = QDBusMessage::createSignal(
            QLatin1String(managerPath), QStringLiteral("org.freedesktop.systemd1.Manager"),
            QStringLiteral("JobRemoved"));
        signal.setArguments({ uint(1), QVariant::fromValue(QDBusObjectPath(job)), QString(),
                              QLatin1String(result) });
        m_bus.send(signal);
    }

    QDBusConnection m_bus;
    std::map<QString, Unit> m_units; // by their paths
    int m_lastJob = 0;
};

} // namespace

FakeManager::FakeManager(const QString &busAddress)
{
    auto *manager = new Manager(busAddress);
    m_onBus = manager->enter();
    manager->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, manager, &QObject::deleteLater);
    m_thread.start();
}

FakeManager::~FakeManager()
{
    m_thread.quit();
    m_thread.wait();
}
