// Control commands and the history download.
#include "commandtable.h"
#include "historytexts.h"
#include "hostevents.h"
#include "tavoclient.h"

#include "comm/portmanage.h"

#include <QDebug>

namespace {

constexpr int drainBudget = 201;

template <typename Rows> QMap<int, QString> translated(const Rows &rows)
{
    QMap<int, QString> words;
    for (const HistoryTextRow &row : rows)
        words.insert(row.code, tavoClient::tr(row.text));
    return words;
}

} // namespace

int tavoClient::control(int id, QString value)
{
    m_commands.append({ id, value });
    return 1;
}

int tavoClient::check_set_command()
{
    return drainCommands(settings());
}

int tavoClient::drainCommands(const CycleSettings &current)
{
    for (int i = 0; i < drainBudget && !m_stop.requested(); ++i) {
        const std::optional<ControlCmd> command = m_commands.take();
        if (!command)
            break;
        if (commandRow(command->controlId).form == CommandForm::ClosePort) {
            // What is queued behind it waits for the next cycle.
            current.ports->Close(current.portName);
            break;
        }
        carryOut(*command, current);
    }
    return 1;
}

void tavoClient::carryOut(const ControlCmd &command, const CycleSettings &current)
{
    const bool isDownload = command.controlId == downloadHistoryCommand;
    if (isDownload)
        qDebug() << "REMOTE_DOWNLOAD_HISTORY";
    CommandText text = commandText(command);
    const std::optional<int> outcome = m_link.control(current, text);
    qDebug() << command.controlId << command.controlValue << outcome.value_or(0);
    // Without a download the records in the file, if any, are those of another device.
    if (isDownload && (outcome || !m_stop.requested()))
        finishDownload(command, outcome.value_or(0), current.deviceName);
}

void tavoClient::finishDownload(const ControlCmd &command, int outcome, const QString &name)
{
    exportHistoryInfo(command.controlValue);
    // An export that was broken off is no result.
    if (m_stop.requested())
        return;
    const QString text = tr(commandRow(command.controlId).text);
    const QString outcomeText = outcome == 1 ? tr("successful") : tr("failed");
    emit postDEvent(HistoryDownloadedEvent,
                    { { QStringLiteral("controlId"), command.controlId + 1 },
                      { QStringLiteral("controlValue"), command.controlValue },
                      { QStringLiteral("name"), name },
                      { QStringLiteral("result"), 1 },
                      { QStringLiteral("desc"), tr("%1 %2 %3").arg(name, text, outcomeText) } });
}

void tavoClient::initHistoryInfo()
{
    m_historyWords.statuses = translated(historyStatusRows);
    m_historyWords.modes = translated(historyModeRows);
    m_historyWords.contents = translated(historyContentRows);
    m_historyWords.titles.clear();
    for (const char *title : historyTitles)
        m_historyWords.titles.append(tr(title));
}

void tavoClient::exportHistoryInfo(QString path)
{
    initHistoryInfo();
    exportHistory(m_historyWords, QStringLiteral("./history.txt"), path);
}
