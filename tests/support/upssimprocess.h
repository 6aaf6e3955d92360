#pragma once

#include <QProcess>
#include <QTemporaryDir>

/**
 * A running simulator, on any free TCP port and on a pseudo-terminal in a folder of its own.
 *
 * Ends the process when it goes out of scope.
 */
class UpsSimProcess
{
public:
    UpsSimProcess();
    ~UpsSimProcess();

    /** Starts the simulator and waits until it serves. @return false with message() set */
    bool start(const QStringList &arguments = {});

    /** Has the simulator do `action`; true when it did. */
    bool perform(const QByteArray &action);

    /** Asks the simulator: "show state", for instance. @return the answer, empty when there is none */
    QByteArray ask(const QByteArray &question);

    /** Ends it with SIGTERM. @return the exit code, -1 when it did not end by itself */
    int terminate();

    QString terminalName() const { return m_folder.filePath(QStringLiteral("ups")); }
    quint16 tcpPort() const { return m_tcpPort; }
    QString message() const { return m_message; }

private:
    QByteArray request(const QByteArray &action);
    QByteArray readLine();

    QTemporaryDir m_folder;
    QProcess m_process;
    quint16 m_tcpPort = 0;
    QString m_message;
};
