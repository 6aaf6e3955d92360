#pragma once

#include "commandanswer.h"
#include "datareport.h"
#include "family.h"
#include "parameterinformation.h"
#include "style/tone.h"

#include <QDateTime>
#include <QDeadlineTimer>

#include <optional>

/** Something that was asked of the device, and what has come of it. */
struct Request
{
    enum class State {
        Waiting,
        NotTaken,  ///< the client has not been given it; it may be yet
        Accepted,  ///< says the driver; nothing in the reports proves it, or not yet
        Confirmed, ///< the device's values show it
        Different, ///< they show a setting at another value than was asked for
        Refused,
        NoAnswer,
        NotSent,
    };

    int number = 0; ///< counted by who follows it
    int command = 0;
    QString value;
    QString what; ///< for the user, with the value of a setting
    QDateTime time;
    State state = State::Waiting;
    bool isTaken = false; ///< the client has it
    /// A setting is proved by its read-back; not owned.
    const ParameterInformation *setting = nullptr;
    QString expected;         ///< the read-back as it is displayed
    QString reported;         ///< the same as it was reported, when it differs
    int reports = 0;          ///< with another value, since the answer
    QDeadlineTimer proofTime; ///< later reports show what others did

    bool isBad() const { return state >= State::Different; }
};

/** The request that an event of the view stands for; nothing when the event is none.
 *  @param settings  where the record of a set parameter is found */
std::optional<Request> requestOf(const Family &family, const QVariantMap &event,
                                 const QList<ParameterInformation *> &settings,
                                 const QDateTime &now);

/** True when the answer may be to this request; of those that are alike the client has the newest,
 *  for a host may have dropped the others, and is answered the oldest that it has. */
bool isAnsweredBy(const Request &request, const CommandAnswer &answer);

/** Takes the answer over, the client's or the device's. */
void takeAnswer(Request &request, CommandAnswer::Kind kind);

/** Looks in a report for the proof. @return true when that changed the request */
bool takeReport(Request &request, const Family &family, const DataReport &report);

/** "23:04:12 · Transfer to bypass · waiting". */
QString statusText(const Request &request);
Tone statusTone(const Request &request);
