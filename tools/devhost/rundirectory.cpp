#include "rundirectory.h"

#include "configfiles.h"
#include "systemerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cerrno>
#include <unistd.h>
#include <vector>

namespace {

constexpr char runVariable[] = "DEVHOST_RUN_DIRECTORY";
constexpr char originVariable[] = "DEVHOST_ORIGIN";
constexpr char markerName[] = "/process";
constexpr char upgradeName[] = "/upgrade";

/** What the file beside the copy says: the process that made it, which is the one that runs it. */
QByteArray marker()
{
    return QByteArray::number(qint64(::getpid())) + '\n';
}

QString runDirectory()
{
    return QFile::decodeName(qgetenv(runVariable));
}

Outcome writeMarker(const QString &directory)
{
    QFile file(directory + QLatin1String(markerName));
    if (file.open(QIODevice::WriteOnly) && file.write(marker()) > 0 && file.flush())
        return {};
    return { QStringLiteral("cannot write %1: %2").arg(file.fileName(), file.errorString()) };
}

Outcome makeLink(const QString &target, const QString &name)
{
    if (::symlink(QFile::encodeName(target).constData(), QFile::encodeName(name).constData()) == 0)
        return {};
    return { QStringLiteral("cannot link to %1: %2").arg(target, systemError(errno)) };
}

Outcome populate(const QString &directory, const QFileInfo &original, const QString &libraries)
{
    const QString bin = directory + QLatin1String("/bin");
    if (!QDir().mkdir(bin))
        return { QStringLiteral("cannot make %1").arg(bin) };
    QFile source(original.filePath());
    if (!source.copy(bin + QLatin1Char('/') + original.fileName()))
        return { QStringLiteral("cannot copy %1 to %2: %3")
                     .arg(original.filePath(), bin, source.errorString()) };
    const Outcome linked = makeLink(libraries, directory + QLatin1String("/lib"));
    if (!linked.isGood())
        return linked;
    const QString upgrade = original.path() + QLatin1String(upgradeName);
    if (QFileInfo(upgrade).isDir()) {
        const Outcome made = makeLink(upgrade, bin + QLatin1String(upgradeName));
        if (!made.isGood())
            return made;
    }
    return writeMarker(directory);
}

/** Removes what populate() and the run made, and no other file. */
void removeOwn(const QString &directory, const QString &program)
{
    const QString bin = directory + QLatin1String("/bin");
    removeConfiguration(bin);
    for (const QString &file :
         { bin + QLatin1Char('/') + program, bin + QLatin1String(upgradeName),
           directory + QLatin1String("/lib"), directory + QLatin1String(markerName) })
        QFile::remove(file);
    QDir().rmdir(bin);
    if (!QDir().rmdir(directory))
        qWarning("%s stays: others have put files there", qUtf8Printable(directory));
}

/** The run path serves a driver beside an uninstalled program; this serves the other layouts. */
void addToLibraryPath(const QString &directory)
{
    QByteArray path = QFile::encodeName(directory);
    const QByteArray before = qgetenv("LD_LIBRARY_PATH");
    if (!before.isEmpty())
        path += ':' + before;
    qputenv("LD_LIBRARY_PATH", path);
}

} // namespace

QString RunDirectory::executable()
{
    return QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
}

bool RunDirectory::isActive()
{
    // Anybody can set the variable, to an installation too: only what this process made is its own.
    const QString directory = runDirectory();
    if (directory.isEmpty()
        || QFileInfo(RunDirectory::executable()).path() != directory + QLatin1String("/bin"))
        return false;
    QFile file(directory + QLatin1String(markerName));
    return QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly) && file.readAll() == marker();
}

Outcome RunDirectory::enter(char **argv, const QString &driverDirectory)
{
    const QFileInfo original(RunDirectory::executable());
    QString libraries = QDir::cleanPath(original.path() + QLatin1String("/../lib"));
    if (!driverDirectory.isEmpty()) {
        const QFileInfo directory(driverDirectory);
        libraries = directory.canonicalFilePath();
        if (!directory.isDir())
            return {
                QStringLiteral("--driver-dir: there is no directory %1").arg(driverDirectory)
            };
        // Which one the plug-in asks for is the plug-in's business.
        if (QDir(libraries).entryList({ QStringLiteral("lib*.so") }, QDir::Files).isEmpty())
            return { QStringLiteral("--driver-dir: there is no driver in %1, such as "
                                    "libkx300_g4_6-20k.so")
                         .arg(libraries) };
        addToLibraryPath(libraries);
    }
    QTemporaryDir temporary(QDir(QDir::tempPath()).canonicalPath()
                            + QLatin1String("/devhost-XXXXXX"));
    if (!temporary.isValid())
        return { QStringLiteral("cannot make a directory in %1: %2")
                     .arg(QDir::tempPath(), temporary.errorString()) };
    const Outcome made = populate(temporary.path(), original, libraries);
    if (!made.isGood())
        return made;

    qputenv(runVariable, QFile::encodeName(temporary.path()));
    qputenv(originVariable, QFile::encodeName(original.path()));
    const QString copy = temporary.path() + QLatin1String("/bin/") + original.fileName();
    ::execv(QFile::encodeName(copy).constData(), argv);
    const int failure = errno;
    return { QStringLiteral("cannot start %1: %2; set TMPDIR to a directory that allows programs")
                 .arg(copy, systemError(failure)) };
}

QString RunDirectory::originalBinDirectory()
{
    return isActive() ? QFile::decodeName(qgetenv(originVariable))
                      : QFileInfo(RunDirectory::executable()).path();
}

void RunDirectory::remove()
{
    if (isActive())
        removeOwn(runDirectory(), QFileInfo(RunDirectory::executable()).fileName());
}

Outcome RunDirectory::restart(const QStringList &arguments)
{
    std::vector<QByteArray> texts;
    for (const QString &argument : arguments)
        texts.push_back(argument.toLocal8Bit());
    std::vector<char *> pointers;
    for (QByteArray &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    ::execv(QFile::encodeName(RunDirectory::executable()).constData(), pointers.data());
    return { systemError(errno) };
}
