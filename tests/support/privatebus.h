#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

/** A bus daemon of the test's own, open to all users, which both buses of its environment stand for. */
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
        QFile configuration(m_folder.filePath("bus.conf"));
        if (!configuration.open(QIODevice::WriteOnly) || configuration.write(policy) < 0)
            return false;
        configuration.close();
        QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7755));
        m_daemon.start("dbus-daemon",
                       { "--config-file=" + configuration.fileName(), "--nofork", "--nopidfile",
                         "--print-address", "--address=" + m_address });
        return m_daemon.waitForReadyRead();
    }

    void kill()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    QString address() const { return m_address; }

private:
    static constexpr char policy[] =
        "<busconfig><type>session</type><listen>unix:tmpdir=/nowhere</listen><auth>EXTERNAL</"
        "auth><policy context='default'>"
        "<allow user='*'/><allow own='*'/><allow send_destination='*'/><allow eavesdrop='true'/>"
        "</policy></busconfig>";

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};
