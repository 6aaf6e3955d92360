#include "serviceinstaller.h"

#include "servicecontroller.h"
#include "servicepaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

#include <pwd.h>

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("Service", text);
}

QString unitFilePath(const QString &name, ServiceScope scope)
{
    const QString folder = unitDirectory(scope);
    return folder.isEmpty() ? QString() : folder + QLatin1Char('/') + unitName(name);
}

ServiceResult refused(const char *text, const QString &what, const QString &why = {})
{
    ServiceResult result;
    result.error = ServiceError::Failed;
    result.text = translated(text).replace(QLatin1String("%2"), why);
    result.text.replace(QLatin1String("%1"), what);
    return result;
}

ServiceResult notInstalled(const QString &name)
{
    ServiceResult result =
        refused(QT_TRANSLATE_NOOP("Service", "The service \"%1\" is not installed."), name);
    result.error = ServiceError::UnitMissing;
    return result;
}

// Also true where there is no file.
bool isOurs(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return true;
    // A FIFO would be waited for.
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly)
        && isOwnUnitFile(QString::fromUtf8(file.readAll()));
}

ServiceResult checkedAccount(const UnitDescription &unit)
{
    if (unit.account.isEmpty())
        return {};
    if (unit.scope == ServiceScope::User)
        return refused(
            QT_TRANSLATE_NOOP("Service", "A user's service cannot have the account \"%1\"."),
            unit.account);
    // Known to the system: no surprises in the unit file either.
    if (!getpwnam(unit.account.toUtf8().constData()))
        return refused(QT_TRANSLATE_NOOP("Service", "There is no account \"%1\"."), unit.account);
    return {};
}

ServiceResult checked(const UnitDescription &unit)
{
    if (!isServiceName(unit.name))
        return refused(QT_TRANSLATE_NOOP("Service", "\"%1\" is not the name of a service."),
                       unit.name);
    // The manager takes no unit with such a program, however it is quoted.
    static const QRegularExpression unsafe(QStringLiteral("[\"'\\\\\\x00-\\x1f\\x7f]"));
    if (unit.program.contains(unsafe))
        return refused(QT_TRANSLATE_NOOP(
                           "Service", "The program \"%1\" has a quote or backslash in its path."),
                       unit.program);
    for (const QString &argument : unit.arguments) {
        if (!fitsUnitFile(argument))
            return refused(
                QT_TRANSLATE_NOOP("Service",
                                  "The argument \"%1\" has a character that no unit file takes."),
                argument);
    }
    return checkedAccount(unit);
}

// After what was done to the unit file.
ServiceResult reloaded(const QString &name, ServiceScope scope, const QString &done)
{
    ServiceController controller(name);
    controller.setScope(scope);
    controller.reloadManager();
    ServiceResult result = controller.lastResult();
    QString remark = result.text;
    if (result.error == ServiceError::NotSupported) {
        result.error = ServiceError::None;
        remark = translated(QT_TRANSLATE_NOOP(
            "Service", "Remark: no service manager answers here, so none was told."));
    }
    result.text = remark.isEmpty() ? done : done + QLatin1Char('\n') + remark;
    return result;
}

// The links that make the manager start the unit: named as it, in the folders of the units that
// want it. One that outlived the file would enable the next that is installed.
ServiceResult disabled(const QString &name, ServiceScope scope)
{
    const QDir units(unitDirectory(scope));
    const QStringList kinds { QStringLiteral("*.wants"), QStringLiteral("*.requires"),
                              QStringLiteral("*.upholds") };
    for (const QString &folder : units.entryList(kinds, QDir::Dirs)) {
        QFile link(units.filePath(folder + QLatin1Char('/') + unitName(name)));
        if (QFileInfo(link).isSymLink() && !link.remove())
            return refused(QT_TRANSLATE_NOOP("Service", "The file \"%1\" cannot be removed: %2"),
                           link.fileName(), link.errorString());
    }
    return {};
}

// After a stop that failed; a unit that is not there, or not valid, cannot be stopped and rests.
bool mayRun(const ServiceResult &result)
{
    return result.error != ServiceError::NotSupported && result.error != ServiceError::UnitMissing
        && result.state != ServiceState::Stopped && result.state != ServiceState::Failed;
}

} // namespace

ServiceResult installService(const UnitDescription &unit)
{
    const ServiceResult check = checked(unit);
    if (!check.ok())
        return check;
    const QString path = unitFilePath(unit.name, unit.scope);
    if (path.isEmpty() || !isOurs(path))
        return refused(QT_TRANSLATE_NOOP("Service", "The file \"%1\" is not ours to replace."),
                       path);
    QDir().mkpath(unitDirectory(unit.scope));
    QSaveFile file(path);
    // commit() alone does not notice that what was still buffered found no room.
    const bool written = file.open(QIODevice::WriteOnly)
        && file.write(unitFileText(unit).toUtf8()) >= 0 && file.flush();
    if (!written || !file.commit())
        return refused(QT_TRANSLATE_NOOP("Service", "The file \"%1\" cannot be written: %2"), path,
                       file.errorString());
    const QString done =
        translated(QT_TRANSLATE_NOOP("Service", "The service \"%1\" is installed: %2"));
    return reloaded(unit.name, unit.scope, done.arg(unit.name, path));
}

ServiceResult uninstallService(const QString &name, ServiceScope scope)
{
    const QString path = unitFilePath(name, scope);
    if (!isServiceName(name) || !QFile::exists(path))
        return notInstalled(name);
    if (!isOurs(path))
        return refused(QT_TRANSLATE_NOOP("Service", "The file \"%1\" is not ours to remove."),
                       path);
    ServiceController controller(name);
    controller.setScope(scope);
    if (!controller.stop() && mayRun(controller.lastResult()))
        return controller.lastResult();
    if (const ServiceResult result = disabled(name, scope); !result.ok())
        return result;
    QFile file(path);
    if (!file.remove())
        return refused(QT_TRANSLATE_NOOP("Service", "The file \"%1\" cannot be removed: %2"), path,
                       file.errorString());
    return reloaded(
        name, scope,
        translated(QT_TRANSLATE_NOOP("Service", "The service \"%1\" is removed.")).arg(name));
}

bool isInstalledForSystem(const QString &name)
{
    if (!isServiceName(name))
        return false;
    ServiceController controller(name);
    return QFile::exists(unitFilePath(name, ServiceScope::System)) || controller.isInstalled();
}
