#pragma once

#include "servicetypes.h"

#include <QDBusMessage>
#include <QVariantMap>

/** The state of a unit as the manager tells it. */
struct UnitStatus
{
    QString load;   // "loaded", "not-found", "masked", ...
    QString active; // "active", "inactive", "failed", ...
    QString sub;    // "running", "dead", "auto-restart", ...
    QString result; // of the service's last run: "success", "exit-code", ...
    bool conditionMet = true;
    uint mainPid = 0;
    int mainStatus = 0; // exit code or signal of the last main process

    /** From the properties of the unit and of the service; what lacks keeps its default. */
    void take(const QVariantMap &properties);

    bool isLoaded() const { return load == QLatin1String("loaded"); }
    ServiceState state() const;
};

/** A manager's refusal of a call, in our terms. */
ServiceResult refusal(const QString &service, const QDBusMessage &error);

/** Why a unit that is not loaded cannot be used. */
ServiceResult unusable(const QString &service, const UnitStatus &status);

/** How a start ended, from the result of its job and the state of the unit afterwards. */
ServiceResult startOutcome(const QString &service, const QString &job, const UnitStatus &status);
ServiceResult stopOutcome(const QString &service, const QString &job, const UnitStatus &status);

/** The text of the context "Service" for an error that no message of the manager explains. */
ServiceResult failure(ServiceError error, const QString &service, const QString &detail = {});
