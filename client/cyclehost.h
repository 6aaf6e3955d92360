#pragma once

#include "clientnews.h"
#include "devicesettings.h"
#include "report/latestvalues.h"
#include "report/statusreport.h"

#include <QMap>
#include <QVariant>

/** The part of the host's own client object that a cycle keeps. */
struct LinkRecord
{
    int &state;                     ///< a LinkState; other threads read it at any time
    int &failCount;                 ///< failed queries since the link came up
    QMap<int, int> &reportedStates; ///< last reported event flags
};

/** What a cycle asks of the client that it is run for. Called in the polling thread. */
class CycleHost
{
public:
    /** The settings of this moment. */
    virtual DeviceSettings settings() = 0;

    /** Tells the host of an event. */
    virtual void post(int type, const QVariantMap &map) = 0;

    /** Has the client's port opened anew. */
    virtual void reopenPort() = 0;

    /** Refreshes the device information that the host reads: a decimal key for each value, then
     *  `entries`. */
    virtual void publish(LatestValues &values, const DeviceEntries &entries) = 0;

    /** An event began or ended; for those who show since when. */
    virtual void eventBegan(int event, const EventOnset &onset) = 0;
    virtual void eventEnded(int event) = 0;

    /** The link was lost, or is up: a LinkState.
     *  @param time  of the query that showed it, as the event has it: who shows both shows one */
    virtual void linkChanged(int state, const QDateTime &time) = 0;

    /** A command was carried out, or was not. */
    virtual void commandAnswered(const CommandAnswer &answer) = 0;

    /** A history download has ended. */
    virtual void historyExported(const HistoryOutcome &outcome) = 0;

protected:
    ~CycleHost() = default;
};
