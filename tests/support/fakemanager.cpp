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
    int exitCode; // of the last run
};

// clang-format off
constexpr MannerRow manners[] = {
    { "Missing",        "not-found", "inactive", "inactive", "success",   "done",   true,  0 },
    { "Masked",         "masked",    "inactive", "inactive", "success",   "done",   true,  0 },
    { "FailsToStart",   "loaded",    "failed",   "inactive", "exit-code", "failed", true,  1 },
    { "Deaf",           "loaded",    "active",   "failed",   "timeout",   "done",   true,  0 },
    { "Hung",           "loaded",    "active",   "failed",   "exit-code", "done",   true,  6 },
    { "Sloppy",         "loaded",    "active",   "failed",   "exit-code", "done",   true,  1 },
    { "ConditionUnmet", "loaded",    "inactive", "inactive", "success",   "done",   false, 0 },
    { "",               "loaded",    "active",   "inactive", "success",   "done",   true,  0 },
};
// clang-format on

struct Unit
{
    QString name;
    MannerRow manner;
    QString active = "inactive";
    uint mainPid = 1;
};

class Manager : public QDBusVirtualObject
{
public:
    explicit Manager(const QString &busAddress)
        : m_bus(QDBusConnection::connectToBus(busAddress, "fake manager"))
    {
    }

    ~Manager() override { QDBusConnection::disconnectFromBus("fake manager"); }

    bool enter()
    {
        return m_bus.registerVirtualObject(managerPath, this, QDBusConnection::SubPath)
            && m_bus.registerService(managerName);
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const QString member = message.member();
        if (member == "Subscribe" || member == "Reload")
            return m_bus.send(message.createReply());
        if (member == "GetAll")
            return m_bus.send(message.createReply(properties(message.path())));
        const QString path = pathOf(message.arguments().value(0).toString());
        if (member == "LoadUnit")
            return m_bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(path))));
        return takeRequest(message, m_units.at(path), member == "StartUnit");
    }

private:
    // Of a unit, which is made if need be.
    QString pathOf(const QString &unitName)
    {
        const QString name = unitName.section('.', 0, 0);
        // As the real one escapes what an object path may not hold.
        const QString path = QString(managerPath) + "/unit/" + QString(name).replace("-", "_2d");
        const auto row = std::find_if(
            std::begin(manners), std::end(manners) - 1,
            [&name](const MannerRow &manner) { return name == QLatin1String(manner.name); });
        m_units.insert({ path, Unit { name, *row } });
        return path;
    }

    QVariant properties(const QString &path)
    {
        Unit &unit = m_units.at(path);
        if (unit.name == "CrashLoop")
            ++unit.mainPid;
        return QVariantMap {
            { "LoadState", QLatin1String(unit.manner.load) },
            { "ActiveState", unit.active },
            { "Result", QLatin1String(unit.manner.result) },
            { "ConditionResult", unit.manner.conditionMet },
            { "MainPID", unit.mainPid },
            { "ExecMainStatus", unit.manner.exitCode },
        };
    }

    bool takeRequest(const QDBusMessage &message, Unit &unit, bool starts)
    {
        if (unit.name == "NeverAnswers")
            return true;
        if (unit.name == "Denied" && !message.isInteractiveAuthorizationAllowed())
            return m_bus.send(message.createErrorReply(
                "org.freedesktop.DBus.Error.InteractiveAuthorizationRequired",
                "Interactive authentication required."));
        const QString job = QStringLiteral("%1/job/%2").arg(managerPath).arg(++m_lastJob);
        const QDBusMessage reply = message.createReply(QVariant::fromValue(QDBusObjectPath(job)));
        unit.active = QLatin1String(starts ? unit.manner.afterStart : unit.manner.afterStop);
        const bool early = unit.name == "EarlyRemoval";
        if (early)
            removeJob(job, unit.manner.job);
        const bool sent = m_bus.send(reply);
        if (unit.name == "ManagerLeaves")
            return m_bus.unregisterService(managerName);
        if (unit.name == "OtherJobs")
            removeJob("/other/job", "failed");
        if (!early && unit.name != "NeverDone")
            removeJob(job, unit.manner.job);
        return sent;
    }

    void removeJob(const QString &job, const char *result)
    {
        QDBusMessage signal = QDBusMessage::createSignal(
            managerPath, "org.freedesktop.systemd1.Manager", "JobRemoved");
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
