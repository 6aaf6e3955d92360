#include "serviceinstaller.h"

#include "service/servicecontroller.h"
#include "service/servicepaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
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

InstallResult refused(const char *text, const QString &what, const QString &why = {})
{
    QString result = translated(text).replace(QLatin1String("%2"), why);
    return { false, result.replace(QLatin1String("%1"), what) };
}

// Also true where there is no file.
bool isOurs(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return true;
    return file.open(QIODevice::ReadOnly) && isOwnUnitFile(QString::fromUtf8(file.readAll()));
}

InstallResult checked(const UnitDescription &unit)
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
    if (unit.account.isEmpty())
        return { true, {} };
    if (unit.scope == ServiceScope::User)
        return refused(
            QT_TRANSLATE_NOOP("Service", "A user's service cannot have the account \"%1\"."),
            unit.account);
    // Known to the system: no surprises in the unit file either.
    if (!getpwnam(unit.account.toLocal8Bit().constData()))
        return refused(QT_TRANSLATE_NOOP("Service", "There is no account \"%1\"."), unit.account);
    return { true, {} };
}

InstallResult reloaded(const QString &name, ServiceScope scope)
{
    ServiceController controller(name);
    controller.setScope(scope);
    const bool ok = controller.reloadManager();
    return { ok || controller.error() == ServiceError::NotSupported, controller.errorString() };
}

// After a stop that failed; a unit that is not there, or not valid, cannot be stopped and rests.
bool mayRun(const ServiceResult &result)
{
    return result.error != ServiceError::NotSupported && result.error != ServiceError::UnitMissing
        && result.state != ServiceState::Stopped && result.state != ServiceState::Failed;
}

} // namespace

InstallResult installService(const UnitDescription &unit)
{
    const InstallResult check = checked(unit);
    if (!check.ok)
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
    return reloaded(unit.name, unit.scope);
}

InstallResult uninstallService(const QString &name, ServiceScope scope)
{
    const QString path = unitFilePath(name, scope);
    if (!isServiceName(name) || !QFile::exists(path))
        return refused(QT_TRANSLATE_NOOP("Service", "The service \"%1\" is not installed."), name);
    if (!isOurs(path))
        return refused(QT_TRANSLATE_NOOP("Service", "The file \"%1\" is not ours to remove."),
                       path);
    ServiceController controller(name);
    controller.setScope(scope);
    if (!controller.stop() && mayRun(controller.lastResult()))
        return { false, controller.errorString() };
    QFile file(path);
    if (!file.remove())
        return refused(QT_TRANSLATE_NOOP("Service", "The file \"%1\" cannot be removed: %2"), path,
                       file.errorString());
    return reloaded(name, scope);
}
