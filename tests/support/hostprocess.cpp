#include "hostprocess.h"

#include <QJsonDocument>
#include <QtTest>

namespace {
constexpr int patienceMs = 60000;
}

void HostProcess::startHost(const QString &plugin, const QStringList &arguments)
{
    QStringList all { "--headless", "--json" };
    if (!plugin.isEmpty())
        all << "--plugin" << plugin;
    start(qEnvironmentVariable("DEVHOST"), all + arguments);
}

int HostProcess::exitCodeOf()
{
    if (state() != NotRunning && !waitForFinished(patienceMs))
        return -1;
    return exitStatus() == NormalExit ? exitCode() : -1;
}

int HostProcess::terminateAndWait()
{
    terminate();
    return exitCodeOf();
}

const QList<QJsonObject> &HostProcess::objects()
{
    while (canReadLine())
        m_objects << QJsonDocument::fromJson(readLine()).object();
    return m_objects;
}

QList<QJsonObject> HostProcess::events(const QString &device, int type)
{
    QList<QJsonObject> found;
    for (const QJsonObject &object : objects()) {
        if (object["name"] == device && object["type"] == type)
            found << object;
    }
    return found;
}

bool HostProcess::waitForEvents(const QString &device, int type, int count)
{
    const auto there = [&] { return events(device, type).size() >= count; };
    return QTest::qWaitFor([&] { return there() || state() == NotRunning; }, patienceMs) && there();
}

QList<QJsonObject> HostProcess::answers()
{
    QList<QJsonObject> found;
    for (const QJsonObject &object : objects()) {
        if (object.contains("accepted") || object.contains("delay"))
            found << object;
    }
    return found;
}
