#include "upgradeplan.h"

#include "hostfile.h"

#include <QCoreApplication>

namespace {

constexpr int firstLanguage = 1;

} // namespace

UpgradePlan planUpgrade(const Family &family, const QString &device)
{
    HostFile parameters(hostDirectory() + QLatin1String("/db/param.ini"));
    const bool isFirst = hostLanguage(parameters) == firstLanguage;
    UpgradePlan plan;
    if (qEnvironmentVariable("KX300_SERVICE_SCOPE") == QLatin1String("user"))
        plan.scope = ServiceScope::User;
    plan.program = QCoreApplication::applicationDirPath() + QLatin1String(family.upgradeProgram);
    plan.arguments = QStringList { device, isFirst ? QStringLiteral("0") : QStringLiteral("1") };
    return plan;
}
