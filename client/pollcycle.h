#pragma once

#include "commands/commandrunner.h"
#include "cyclehost.h"
#include "link/devicelink.h"
#include "report/latestvalues.h"
#include "report/statusreport.h"

struct LinkStep;

/**
 * The cycle of one client: carries out commands, queries the device, follows the link, reports.
 *
 * Apart from the client so that a cycle can be run and tested without a thread of its own.
 *
 * Threads:   the polling thread, one at a time; commands() says what else may be called.
 * Ownership: owns the connection to the device; borrows all that it is given.
 * Errors:    told to the host as the device's: no answer, or a failed command.
 */
class PollCycle
{
public:
    /** @param callback, context  handed to the driver with each query */
    PollCycle(const Family &family, CycleHost &host, LinkRecord record, const StopSource &stop,
              const DriverBinding &driver, DataCallback callback, void *context);

    /** One cycle. A stop ends its waits, and then nothing is reported. */
    void run();

    /** Stores the latest value of a data identifier. */
    void store(int id, float value) { m_values.store(id, value); }

    /** Tells the host of changed flags and of all data. */
    void report();

    /** True when another program has begun, or ceased, to use the device since the last cycle. In
     *  the polling thread. */
    bool hasToTurn() const;

    /** Closes a connection; in any thread while nobody polls. */
    void dropConnection() { m_link.dropSocket(); }

    CommandRunner &commands() { return m_commands; }

private:
    bool isTaken() const;
    bool isHeldOff();
    void follow(const DeviceSettings &settings, bool answered, const QString &time);
    void postLinkChange(const LinkStep &step, const QVariantMap &map);
    void report(const DeviceSettings &settings);
    bool postFlagChanges(QVariantMap &map, const DataReport &values);
    void noteOnset(int event, bool appears, const QDateTime &now);

    const Family &m_family;
    CycleHost &m_host;
    LinkRecord m_record;
    const StopSource &m_stop;
    LatestValues m_values;
    TimeText m_time;
    DeviceLink m_link;
    CommandRunner m_commands;
    bool m_isHeldOff = false;
    bool m_hasReported = false; // with values
    bool m_keepPort = false;    // true: a lost port is not opened anew; nothing sets it
    unsigned m_idleCycles = 0;  // cycles since a command waited, for debugging
};
