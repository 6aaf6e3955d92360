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

    /** Takes what was printed since the last call. */
    void readLines();

    /** The printed objects whose `key` has this value, in order. */
    QList<QJsonObject> objects(const QString &key, const QJsonValue &value);

    /** Waits for at least `count` events of a type of a device. */
    bool waitForEvents(const QString &device, int type, int count = 1);
    QList<QJsonObject> events(const QString &device, int type);

    QStringList lines() const { return m_lines; }
    QString errors() { return QString::fromLocal8Bit(readAllStandardError()); }

private:
    QByteArray m_rest;
    QStringList m_lines;
};
