#include "managertexts.h"

#include <QCoreApplication>

namespace {

struct ErrorNameRow
{
    const char *name; // of a D-Bus error; a final '.' stands for all that begin so
    ServiceError error;
};

struct FailureRow
{
    ServiceError error;
    const char *text; // %1 the service, %2 a detail
};

struct ReasonRow
{
    const char *word; // of the manager: a job's result, a service's result or a load state
    const char *text;
};

struct StateRow
{
    const char *active;
    ServiceState state;
};

// clang-format off
constexpr ErrorNameRow errorNameRows[] = {
    { "org.freedesktop.systemd1.NoSuchUnit",                            ServiceError::UnitMissing   },
    { "org.freedesktop.DBus.Error.AccessDenied",                        ServiceError::NotAuthorised },
    { "org.freedesktop.DBus.Error.AuthFailed",                          ServiceError::NotAuthorised },
    { "org.freedesktop.DBus.Error.InteractiveAuthorizationRequired",    ServiceError::NotAuthorised },
    { "org.freedesktop.DBus.Error.NoReply",                             ServiceError::TimedOut      },
    { "org.freedesktop.DBus.Error.TimedOut",                            ServiceError::TimedOut      },
    { "org.freedesktop.DBus.Error.Timeout",                             ServiceError::TimedOut      },
    { "org.freedesktop.DBus.Error.Disconnected",                        ServiceError::Lost          },
    { "org.freedesktop.DBus.Error.NameHasNoOwner",                      ServiceError::Lost          },
    { "org.freedesktop.DBus.Error.ServiceUnknown",                      ServiceError::Lost          },
    { "org.freedesktop.DBus.Error.UnknownMethod",                       ServiceError::NotSupported  },
    { "org.freedesktop.DBus.Error.UnknownObject",                       ServiceError::NotSupported  },
    { "org.freedesktop.DBus.Error.Spawn.",                              ServiceError::NotSupported  },
};

constexpr FailureRow failureRows[] = {
    { ServiceError::InvalidName,   QT_TRANSLATE_NOOP("Service", "\"%1\" is not the name of a service.") },
    { ServiceError::NotSupported,  QT_TRANSLATE_NOOP("Service", "The control of \"%1\" is not supported here: %2") },
    { ServiceError::UnitMissing,   QT_TRANSLATE_NOOP("Service", "The service \"%1\" is not installed.") },
    { ServiceError::NotAuthorised, QT_TRANSLATE_NOOP("Service", "You are not allowed to control the service \"%1\".") },
    { ServiceError::TimedOut,      QT_TRANSLATE_NOOP("Service", "The request to the service \"%1\" did not end in time.") },
    { ServiceError::Lost,          QT_TRANSLATE_NOOP("Service", "The service manager went away; what became of \"%1\" is unknown.") },
    { ServiceError::NotReachable,  QT_TRANSLATE_NOOP("Service", "The service \"%1\" does not listen to requests.") },
    { ServiceError::Failed,        QT_TRANSLATE_NOOP("Service", "The request to the service \"%1\" failed: %2") },
};

constexpr ReasonRow reasonRows[] = {
    { "bad-setting",      QT_TRANSLATE_NOOP("Service", "its unit file is not valid")            },
    { "error",            QT_TRANSLATE_NOOP("Service", "its unit file cannot be read")          },
    { "masked",           QT_TRANSLATE_NOOP("Service", "it is blocked by the administrator")    },
    { "canceled",         QT_TRANSLATE_NOOP("Service", "another request replaced it")           },
    { "timeout",          QT_TRANSLATE_NOOP("Service", "it took too long")                      },
    { "dependency",       QT_TRANSLATE_NOOP("Service", "a service that it needs did not start") },
    { "failed",           QT_TRANSLATE_NOOP("Service", "it ended with an error")                },
    { "skipped",          QT_TRANSLATE_NOOP("Service", "the manager skipped it")                },
    { "exit-code",        QT_TRANSLATE_NOOP("Service", "it ended with an error")                },
    { "signal",           QT_TRANSLATE_NOOP("Service", "it was killed")                         },
    { "core-dump",        QT_TRANSLATE_NOOP("Service", "it crashed")                            },
    { "watchdog",         QT_TRANSLATE_NOOP("Service", "it hung")                               },
    { "protocol",         QT_TRANSLATE_NOOP("Service", "it ended before it was ready")          },
    { "resources",        QT_TRANSLATE_NOOP("Service", "the system lacks resources for it")     },
    { "start-limit-hit",  QT_TRANSLATE_NOOP("Service", "it was started too often")              },
    { "condition",        QT_TRANSLATE_NOOP("Service", "a condition of its unit is not met")    },
    { "ended",            QT_TRANSLATE_NOOP("Service", "it ended right after the start")        },
    { "still-running",    QT_TRANSLATE_NOOP("Service", "it is still running")                   },
};

constexpr StateRow stateRows[] = {
    { "active",       ServiceState::Running  },
    { "reloading",    ServiceState::Running  },
    { "inactive",     ServiceState::Stopped  },
    { "failed",       ServiceState::Failed   },
    { "activating",   ServiceState::Starting },
    { "deactivating", ServiceState::Stopping },
};
// clang-format on

QString translated(const char *text)
{
    return QCoreApplication::translate("Service", text);
}

// The manager's own word where it is none that we know.
QString reasonText(const QString &word)
{
    for (const ReasonRow &row : reasonRows) {
        if (word == QLatin1String(row.word))
            return translated(row.text);
    }
    return word;
}

ServiceResult failed(const QString &service, const QString &reason, ServiceState state)
{
    ServiceResult result = failure(ServiceError::Failed, service, reasonText(reason));
    result.state = state;
    return result;
}

} // namespace

void UnitStatus::take(const QVariantMap &properties)
{
    load = properties.value(QStringLiteral("LoadState"), load).toString();
    active = properties.value(QStringLiteral("ActiveState"), active).toString();
    sub = properties.value(QStringLiteral("SubState"), sub).toString();
    result = properties.value(QStringLiteral("Result"), result).toString();
    conditionMet = properties.value(QStringLiteral("ConditionResult"), conditionMet).toBool();
    mainPid = properties.value(QStringLiteral("MainPID"), mainPid).toUInt();
    mainStatus = properties.value(QStringLiteral("ExecMainStatus"), mainStatus).toInt();
}

ServiceState UnitStatus::state() const
{
    for (const StateRow &row : stateRows) {
        if (active == QLatin1String(row.active))
            return row.state;
    }
    return ServiceState::Unknown;
}

ServiceResult failure(ServiceError error, const QString &service, const QString &detail)
{
    ServiceResult result;
    result.error = error;
    for (const FailureRow &row : failureRows) {
        if (row.error != error)
            continue;
        result.text = translated(row.text).replace(QLatin1String("%2"), detail);
        result.text.replace(QLatin1String("%1"), service);
    }
    return result;
}

ServiceResult refusal(const QString &service, const QDBusMessage &error)
{
    const QString name = error.errorName();
    for (const ErrorNameRow &row : errorNameRows) {
        const QLatin1String known(row.name);
        if (name == known || (known.endsWith(QLatin1Char('.')) && name.startsWith(known)))
            return failure(row.error, service, error.errorMessage());
    }
    return failure(ServiceError::Failed, service, error.errorMessage());
}

ServiceResult unusable(const QString &service, const UnitStatus &status)
{
    return status.load == QLatin1String("not-found") ? failure(ServiceError::UnitMissing, service)
                                                     : failed(service, status.load, status.state());
}

ServiceResult startOutcome(const QString &service, const QString &job, const UnitStatus &status)
{
    const ServiceState state = status.state();
    if (state == ServiceState::Running) {
        ServiceResult result;
        result.state = state;
        return result;
    }
    // The job of a crashed or skipped start also reads "done": then the unit knows better.
    if (!status.conditionMet)
        return failed(service, QStringLiteral("condition"), state);
    if (!status.result.isEmpty() && status.result != QLatin1String("success"))
        return failed(service, status.result, state);
    return failed(service, job == QLatin1String("done") ? QStringLiteral("ended") : job, state);
}

ServiceResult stopOutcome(const QString &service, const QString &job, const UnitStatus &status)
{
    const ServiceState state = status.state();
    if (state == ServiceState::Stopped || state == ServiceState::Failed) {
        ServiceResult result;
        result.state = state;
        const bool endedItself =
            status.result == QLatin1String("exit-code") && status.mainStatus == stopHungCode;
        if (endedItself || status.result == QLatin1String("timeout"))
            result.text = translated(
                QT_TRANSLATE_NOOP("Service", "The service had to be killed: it did not end."));
        return result;
    }
    return failed(service, job == QLatin1String("done") ? QStringLiteral("still-running") : job,
                  state);
}
