#include "servicepaths.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <unistd.h>

namespace {

// The user's own runtime folder; that of the login manager when the variable is not passed on.
QString userRuntimeFolder()
{
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!folder.isEmpty())
        return QDir::isAbsolutePath(folder) ? folder : QString();
    const QFileInfo login(QStringLiteral("/run/user/%1").arg(getuid()));
    return login.isDir() && login.ownerId() == getuid() ? login.filePath() : QString();
}

} // namespace

bool isServiceName(const QString &name)
{
    static const QRegularExpression plain(QStringLiteral("\\A[A-Za-z0-9][A-Za-z0-9_.-]{0,63}\\z"));
    return plain.match(name).hasMatch() && !name.endsWith(QLatin1String(".service"));
}

QString unitName(const QString &name)
{
    return name + QStringLiteral(".service");
}

QString unitDirectory(ServiceScope scope)
{
    if (scope == ServiceScope::System)
        return QStringLiteral("/etc/systemd/system");
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return config.isEmpty() ? QString() : config + QStringLiteral("/systemd/user");
}

QString runtimeDirectory(ServiceScope scope, const QString &name)
{
    const QString base =
        scope == ServiceScope::System ? QStringLiteral("/run") : userRuntimeFolder();
    return base.isEmpty() ? QString() : base + QLatin1Char('/') + name;
}

QString controlSocket(ServiceScope scope, const QString &name)
{
    const QString folder = runtimeDirectory(scope, name);
    return folder.isEmpty() ? QString() : folder + QStringLiteral("/control");
}
