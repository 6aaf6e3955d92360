#pragma once

#include <QMetaType>
#include <QString>
#include <QStringList>

#include <chrono>

/** Whose manager is asked: the machine's, or that of the user who runs this program. */
enum class ServiceScope { System, User };

/** Whether the manager may ask a human for a password. Windows say Interactive. */
enum class ServiceAuthorization { Silent, Interactive };

/** What can be asked of a service; Reload is for its manager: read the unit files again. */
enum class ServiceAction { Query, Start, Stop, Pause, Resume, Command, Reload };

enum class ServiceState { Unknown, Stopped, Starting, Running, Stopping, Failed };

enum class ServiceError {
    None,
    InvalidName,   // not a plain service name; nothing was asked
    NotSupported,  // no bus, or no service manager on it, or the manager cannot do this at all
    UnitMissing,   // the manager knows no unit of this name
    NotAuthorised, // the manager refused the caller
    TimedOut,      // no end within the time limit; the manager may still be busy with it
    Lost,          // bus or manager went away in the middle: the outcome is unknown
    NotReachable,  // pause, resume, command: the service does not listen
    Failed         // done and failed, or refused by the service; the text says why
};

/** How one request ended. */
struct ServiceResult
{
    ServiceError error = ServiceError::None;
    ServiceState state = ServiceState::Unknown; // after the request, as far as known
    bool changed = true;                        // false: what was asked for was already so
    bool installed = false;                     // the manager has a usable unit of this name
    QString text; // for people; never empty after a failure, "unchanged" when it was already so

    bool ok() const { return error == ServiceError::None; }
};

/** Whom requests are for, and how they are made. */
struct ServiceTarget
{
    QString name; // "TesselServer" stands for the unit TesselServer.service
    ServiceScope scope = ServiceScope::System;
    ServiceAuthorization authorization = ServiceAuthorization::Silent;
    std::chrono::milliseconds timeLimit { 30000 };  // counted without the password dialogue
    std::chrono::milliseconds settleTime { 500 };   // how long a start must hold to count
    std::chrono::milliseconds answerLimit { 5000 }; // of a service's reply over its socket
};

/** Exit code of a service made with Service whose stop hung, so that it ended itself. */
constexpr int stopHungCode = 6;

/** One request; `command` belongs to Command. */
struct ServiceRequest
{
    ServiceAction action = ServiceAction::Query;
    int command = 0;
    QStringList arguments {}; // for Start; systemd takes none, so a request with some is refused
};

Q_DECLARE_METATYPE(ServiceAction)
Q_DECLARE_METATYPE(ServiceResult)
