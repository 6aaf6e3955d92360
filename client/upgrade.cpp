#include "upgrade.h"

#include "deviceconfig.h"

#include <QCoreApplication>

namespace {

constexpr int firstLanguage = 1;

QString deviceText(const CycleSettings &settings)
{
    if (settings.communicationType == tcpCommunication)
        return peerText(settings);
    return settings.portName;
}

} // namespace

UpgradePlan planUpgrade(const CycleSettings &settings)
{
    const int language = readLanguage(configurationDirectory() + QLatin1String("/db"));
    UpgradePlan plan;
    if (qEnvironmentVariable("KX300_SERVICE_SCOPE") == QLatin1String("user"))
        plan.scope = ServiceScope::User;
    plan.program = QCoreApplication::applicationDirPath()
        + QLatin1String("/upgrade/KX300P6_20KG4Software.exe");
    plan.arguments =
        QStringList { deviceText(settings), QString::number(language == firstLanguage ? 0 : 1) };
    return plan;
}
