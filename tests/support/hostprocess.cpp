#include "hostprocess.h"

#include <QJsonDocument>
#include <QtTest>

namespace {
constexpr int PatienceMs = 60000;
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
    if (state() != NotRunning && !waitForFinished(PatienceMs))
        return -1;
    readLines();
    return exitStatus() == NormalExit ? exitCode() : -1;
}

int HostProcess::terminateAndWait()
{
    terminate();
    return exitCodeOf();
}

void HostProcess::readLines()
{
    m_rest += readAllStandardOutput();
    for (int end = m_rest.indexOf('\n'); end >= 0; end = m_rest.indexOf('\n')) {
        m_lines << QString::fromUtf8(m_rest.left(end));
        m_rest.remove(0, end + 1);
    }
}

QList<QJsonObject> HostProcess::objects(const QString &key, const QJsonValue &value)
{
    readLines();
    QList<QJsonObject> found;
    for (const QString &line : qAsConst(m_lines)) {
        const QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
        if (object.value(key) == value)
            found << object;
    }
    return found;
}

QList<QJsonObject> HostProcess::events(const QString &device, int type)
{
    QList<QJsonObject> found = objects("type", type);
    const auto other = [&device](const QJsonObject &object) {
        return object.value("name") != device;
    };
    found.erase(std::remove_if(found.begin(), found.end(), other), found.end());
    return found;
}

bool HostProcess::waitForEvents(const QString &device, int type, int count)
{
    const auto there = [&] { return events(device, type).size() >= count; };
    return QTest::qWaitFor([&] { return there() || state() == NotRunning; }, PatienceMs) && there();
}
