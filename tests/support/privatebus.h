#pragma once

#include <QProcess>
#include <QTemporaryDir>

/** A bus daemon of the test's own, which both buses of its environment stand for. */
class PrivateBus
{
public:
    ~PrivateBus() { kill(); }

    bool start()
    {
        m_address = "unix:path=" + m_folder.filePath("bus");
        for (const char *variable : { "DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS" })
            qputenv(variable, m_address.toUtf8());
        m_daemon.setStandardErrorFile(QProcess::nullDevice());
        m_daemon.start("dbus-daemon",
                       { "--session", "--nofork", "--nopidfile", "--print-address",
                         "--address=" + m_address });
        return m_daemon.waitForReadyRead();
    }

    void kill()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    QString address() const { return m_address; }

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};
