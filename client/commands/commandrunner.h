#pragma once

#include "commandanswer.h"
#include "commands/commandqueue.h"
#include "family.h"
#include "history/historyexport.h"

#include <QVector>

class CycleHost;
class DeviceLink;
class StopSource;
struct DriverAnswer;

/**
 * The commands of one client: takes them at any time and has the device carry them out.
 *
 * Threads:   append() and hasCommands() in any thread; all others in the polling thread.
 * Ownership: borrows all that it is given.
 * Errors:    what came of a command is in the debug log and told to those who show it; a download is
 *            reported to the host.
 */
class CommandRunner
{
public:
    CommandRunner(const Family &family, DeviceLink &link, CycleHost &host, const StopSource &stop);

    void append(const ControlCmd &command) { m_commands.append(command); }
    bool hasCommands() const { return !m_commands.isEmpty(); }

    /** Carries out what is queued, at most 201 commands; a stop, or a command that closes the
     *  port, ends it, and so do settings that name a peer which is not connected yet. Blocks as
     *  long as the driver does. */
    void drain();

    /** Tells of the commands that failed since the last call: refused by a device that answers, or
     *  lost with the link. */
    void tellFailures(bool deviceAnswers);

    /** Translates the words of an exported history. */
    void translateHistory();

    /** Turns the driver's history file into comma-separated text at `path`; see exportHistory(). */
    HistoryOutcome exportHistoryTo(const QString &path);

private:
    bool carryOut(const CommandRow &row, const ControlCmd &command);
    void tell(const ControlCmd &command, const DriverAnswer &answer);
    void finishDownload(const CommandRow &row, const ControlCmd &command,
                        const DriverAnswer &answer);

    const Family &m_family;
    DeviceLink &m_link;
    CycleHost &m_host;
    const StopSource &m_stop;
    CommandQueue m_commands;
    QVector<ControlCmd> m_failed; // that nobody was told of; polling thread
    HistoryWords m_words;         // polling thread
};
