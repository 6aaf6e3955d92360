#include "rundirectory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <vector>

namespace {

constexpr char RunVariable[] = "DEVHOST_RUN_DIRECTORY";
constexpr char OriginVariable[] = "DEVHOST_ORIGIN";

QString executable()
{
    return QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
}

QString systemError(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

/** @return the reason of a failure, empty when all is there */
QString populate(const QString &directory, const QFileInfo &original, const QString &libraries)
{
    const QString bin = directory + QLatin1String("/bin");
    if (!QDir().mkdir(bin))
        return QStringLiteral("cannot make %1").arg(bin);
    QFile source(original.filePath());
    if (!source.copy(bin + QLatin1Char('/') + original.fileName()))
        return QStringLiteral("cannot copy %1 to %2: %3")
            .arg(original.filePath(), bin, source.errorString());
    const QByteArray link = QFile::encodeName(directory + QLatin1String("/lib"));
    if (::symlink(QFile::encodeName(libraries).constData(), link.constData()) != 0)
        return QStringLiteral("cannot link to %1: %2").arg(libraries, systemError(errno));
    return {};
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

bool RunDirectory::isActive()
{
    // The variable may have come from a run that started this process: then it names another place.
    const QByteArray directory = qgetenv(RunVariable);
    return !directory.isEmpty()
        && QFileInfo(executable()).path() == QFile::decodeName(directory) + QLatin1String("/bin");
}

QString RunDirectory::enter(char **argv, const QString &driverDirectory)
{
    const QFileInfo original(executable());
    QString libraries = QDir::cleanPath(original.path() + QLatin1String("/../lib"));
    if (!driverDirectory.isEmpty()) {
        libraries = QFileInfo(driverDirectory).canonicalFilePath();
        if (libraries.isEmpty())
            return QStringLiteral("no driver directory %1").arg(driverDirectory);
        addToLibraryPath(libraries);
    }
    QTemporaryDir temporary(QDir(QDir::tempPath()).canonicalPath()
                            + QLatin1String("/devhost-XXXXXX"));
    if (!temporary.isValid())
        return QStringLiteral("cannot make a directory in %1: %2")
            .arg(QDir::tempPath(), temporary.errorString());
    const QString error = populate(temporary.path(), original, libraries);
    if (!error.isEmpty())
        return error;

    qputenv(RunVariable, QFile::encodeName(temporary.path()));
    qputenv(OriginVariable, QFile::encodeName(original.path()));
    const QString copy = temporary.path() + QLatin1String("/bin/") + original.fileName();
    ::execv(QFile::encodeName(copy).constData(), argv);
    const int failure = errno;
    return QStringLiteral("cannot start %1: %2; set TMPDIR to a directory that allows programs")
        .arg(copy, systemError(failure));
}

QString RunDirectory::originalBinDirectory()
{
    return isActive() ? QFile::decodeName(qgetenv(OriginVariable)) : QFileInfo(executable()).path();
}

void RunDirectory::remove()
{
    if (isActive())
        QDir(QFile::decodeName(qgetenv(RunVariable))).removeRecursively();
}

QString RunDirectory::restart(const QStringList &arguments)
{
    std::vector<QByteArray> texts;
    for (const QString &argument : arguments)
        texts.push_back(argument.toLocal8Bit());
    std::vector<char *> pointers;
    for (QByteArray &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    ::execv(QFile::encodeName(executable()).constData(), pointers.data());
    return systemError(errno);
}
