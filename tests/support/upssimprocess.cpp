#include "upssimprocess.h"

namespace {
constexpr int patience = 20'000; // ms; a busy machine takes its time
}

UpsSimProcess::UpsSimProcess()
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

UpsSimProcess::~UpsSimProcess()
{
    terminate();
}

bool UpsSimProcess::start(const QStringList &arguments)
{
    m_process.start(QStringLiteral(UPSSIM_FILE),
                    QStringList { "--tcp", "127.0.0.1:0", "--pty", terminalName() } + arguments);
    for (;;) {
        const QByteArray line = readLine();
        if (line.startsWith("tcp "))
            m_tcpPort = line.mid(line.lastIndexOf(':') + 1).toUShort();
        if (line == "ready")
            return true;
        if (line.isEmpty()) {
            m_message = m_process.errorString();
            return false;
        }
    }
}

bool UpsSimProcess::perform(const QByteArray &action)
{
    return request(action) == "ok " + action.simplified();
}

QByteArray UpsSimProcess::ask(const QByteArray &question)
{
    const QByteArray beginning = "ok " + question + ": ";
    const QByteArray line = request(question);
    return line.startsWith(beginning) ? line.mid(beginning.size()) : QByteArray();
}

// What the simulator answers; what it says in between is skipped.
QByteArray UpsSimProcess::request(const QByteArray &action)
{
    m_process.write(action + '\n');
    for (;;) {
        const QByteArray line = readLine();
        if (line.startsWith("ok " + action.simplified()))
            return line;
        if (line.isEmpty() || line.startsWith("error ")) {
            m_message = QString::fromUtf8(line);
            return line;
        }
    }
}

int UpsSimProcess::terminate()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.terminate();
        if (!m_process.waitForFinished(patience)) {
            m_process.kill();
            m_process.waitForFinished(patience);
        }
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

// The next line without its end; empty when the process has ended or says nothing.
QByteArray UpsSimProcess::readLine()
{
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(patience) && !m_process.canReadLine())
            return {};
    }
    return m_process.readLine().trimmed();
}
