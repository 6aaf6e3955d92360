#pragma once

#include <QProcess>

#include <csignal>

/** The words of a command line, without any quoting. */
inline QStringList words(const char *line)
{
    return QString::fromLatin1(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/** The service that all tests control. */
const QString serviceName = QStringLiteral("kx300-example");

/** One run of the example service, for the user's manager; killed at the end if need be. */
class ExampleProgram
{
public:
    explicit ExampleProgram(const QStringList &switches)
    {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(QStringLiteral(EXAMPLE_SERVICE), words("-user") + switches);
    }

    ~ExampleProgram()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    /** Whether it has printed the text by now, or does so soon. */
    bool prints(const char *text)
    {
        while (!m_output.contains(text) && m_process.waitForReadyRead(20'000))
            m_output += m_process.readAll();
        return m_output.contains(text);
    }

    bool isRunning() const { return m_process.state() == QProcess::Running; }

    void signal(int number) { ::kill(pid_t(m_process.processId()), number); }

    /** Waits for the end; -1 after a crash. */
    int exitCode()
    {
        const bool ended = m_process.waitForFinished() || m_process.state() == QProcess::NotRunning;
        m_output += m_process.readAll();
        return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

    QString output() const { return QString::fromUtf8(m_output).trimmed(); }

private:
    QProcess m_process;
    QByteArray m_output;
};
