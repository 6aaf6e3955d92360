#include "commands/commandrunner.h"

#include "commands/commandtext.h"
#include "cyclehost.h"
#include "history/historywords.h"
#include "hostvocabulary.h"
#include "link/devicelink.h"
#include "lookup.h"
#include "portmanage.h"
#include "stopsource.h"

#include <QDebug>

#include <utility>

using namespace HostContract;

namespace {

constexpr int drainBudget = 201;
constexpr const char *context = "tavoClient";

QString outcomeText(int result)
{
    return result == 1 ? QCoreApplication::translate("tavoClient", "successful")
                       : QCoreApplication::translate("tavoClient", "failed");
}

} // namespace

CommandRunner::CommandRunner(const Family &family, DeviceLink &link, CycleHost &host,
                             const StopSource &stop)
    : m_family(family)
    , m_link(link)
    , m_host(host)
    , m_stop(stop)
{
}

void CommandRunner::drain()
{
    for (int i = 0; i < drainBudget && !m_stop.requested(); ++i) {
        const std::optional<ControlCmd> command = m_commands.take();
        if (!command)
            return;
        const CommandRow row = commandRow(m_family, command->controlId);
        if (row.form == CommandForm::ClosePort) {
            const DeviceSettings settings = m_host.settings();
            settings.ports->Close(settings.portName);
            return; // what is queued behind it waits for the next cycle
        }
        if (!carryOut(row, *command)) {
            m_commands.putBack(*command);
            return;
        }
    }
}

// False when the command has to wait.
bool CommandRunner::carryOut(const CommandRow &row, const ControlCmd &command)
{
    const bool isDownload = row.form == CommandForm::Download;
    if (isDownload)
        qDebug() << "REMOTE_DOWNLOAD_HISTORY";
    CommandText text = commandText(row, command.controlValue);
    const DriverAnswer answer = m_link.control(text);
    if (answer.delivery == DriverAnswer::Delivery::Later)
        return false;
    qDebug() << command.controlId << command.controlValue << answer.result;
    // Without a download the records in the file, if any, are those of another device.
    const bool wasAsked = answer.delivery == DriverAnswer::Delivery::Asked;
    if (wasAsked || !m_stop.requested())
        tell(command, answer);
    if (isDownload && (wasAsked || !m_stop.requested()))
        finishDownload(row, command, answer);
    return true;
}

void CommandRunner::tell(const ControlCmd &command, const DriverAnswer &answer)
{
    using Kind = CommandAnswer::Kind;
    if (answer.delivery == DriverAnswer::Delivery::NotAsked)
        m_host.commandAnswered({ command.controlId, command.controlValue, Kind::NotSent });
    else if (answer.result == 1)
        m_host.commandAnswered({ command.controlId, command.controlValue, Kind::Accepted });
    else
        m_failed.append(command); // a driver gives no reason; the next query does
}

void CommandRunner::tellFailures(bool deviceAnswers)
{
    using Kind = CommandAnswer::Kind;
    const Kind kind = deviceAnswers ? Kind::Refused : Kind::NoAnswer;
    for (const ControlCmd &command : std::exchange(m_failed, {}))
        m_host.commandAnswered({ command.controlId, command.controlValue, kind });
}

void CommandRunner::finishDownload(const CommandRow &row, const ControlCmd &command,
                                   const DriverAnswer &answer)
{
    const HistoryOutcome outcome = exportHistoryTo(command.controlValue);
    // An export that was broken off is no result.
    if (m_stop.requested())
        return;
    m_host.historyExported(outcome);
    const QString name = m_host.settings().deviceName;
    const QString text =
        QCoreApplication::translate("tavoClient", "%1 %2 %3")
            .arg(name, translated(context, row.reportText), outcomeText(answer.result));
    m_host.post(HistoryDownloadedEvent,
                { { Key::controlId(), command.controlId + 1 },
                  { Key::controlValue(), command.controlValue },
                  { Key::name(), name },
                  { Key::result(), 1 },
                  { Key::description(), text } });
}

void CommandRunner::translateHistory()
{
    m_words = historyWords(m_family.history);
}

HistoryOutcome CommandRunner::exportHistoryTo(const QString &path)
{
    translateHistory();
    return exportHistory(m_words, QStringLiteral("./history.txt"), path);
}
