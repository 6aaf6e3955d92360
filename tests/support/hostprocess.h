#pragma once

#include <QJsonObject>
#include <QProcess>

/** A devhost process under test, run in the test's working directory. */
class HostProcess : public QProcess
{
public:
    /** Starts it; arguments are added after "--headless --json" and the plug-in. */
    void startHost(const QString &plugin, const QStringList &arguments);

    /** Waits until it ends.
     *  @return its exit code, -1 when it crashed or still runs */
    int exitCodeOf();

    /** Asks it to end with SIGTERM and waits. */
    int terminateAndWait();

    /** The objects that were printed so far. */
    const QList<QJsonObject> &objects();

    /** Waits for at least `count` events of a type of a device. */
    bool waitForEvents(const QString &device, int type, int count = 1);
    QList<QJsonObject> events(const QString &device, int type);

    /** The answers to commands. */
    QList<QJsonObject> answers();

    QString errors() { return QString::fromLocal8Bit(readAllStandardError()); }

private:
    QList<QJsonObject> m_objects;
};
