#include "drivercheck.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <dlfcn.h>
#include <link.h>
#include <vector>

namespace {

constexpr char standardDriver[] = "libkx300_g4_6-20k.so";

/** Empty when the plug-in's name does not tell. */
QByteArray driverOf(const QString &plugin)
{
    if (plugin.isEmpty())
        return standardDriver;
    const QLatin1String ending("_Client.so");
    const QString file = QFileInfo(plugin).fileName();
    return file.endsWith(ending) ? QFile::encodeName(file.chopped(ending.size())) + ".so"
                                 : QByteArray();
}

/** The directories that the loader searches for this program, in its order. */
QStringList searchedDirectories()
{
    QStringList directories;
    void *program = ::dlopen(nullptr, RTLD_LAZY);
    Dl_serinfo size {};
    if (program && ::dlinfo(program, RTLD_DI_SERINFOSIZE, &size) == 0) {
        std::vector<char> memory(size.dls_size);
        auto *info = reinterpret_cast<Dl_serinfo *>(memory.data());
        info->dls_size = size.dls_size;
        info->dls_cnt = size.dls_cnt;
        if (::dlinfo(program, RTLD_DI_SERINFO, info) == 0)
            for (unsigned i = 0; i < info->dls_cnt; ++i)
                directories << QDir::cleanPath(QFile::decodeName(info->dls_serpath[i].dls_name));
    }
    if (program)
        ::dlclose(program);
    return directories;
}

/** An installed program takes the sample driver where the device's is missing: no real device
 *  understands it. */
void tellOfSample(void *driver)
{
    link_map *map = nullptr;
    if (::dlinfo(driver, RTLD_DI_LINKMAP, &map) != 0)
        return;
    const QFileInfo file(QDir::cleanPath(QFile::decodeName(map->l_name)));
    if (file.dir().dirName() == QLatin1String(DEVHOST_SAMPLE_FOLDER))
        qWarning("the sample driver is used, for simulated UPSs only; --driver-dir names the "
                 "directory of a device's driver");
}

} // namespace

Outcome checkDriver(const QString &plugin)
{
    const QByteArray driverName = driverOf(plugin);
    if (driverName.isEmpty())
        return {};
    if (void *loaded = ::dlopen(driverName.constData(), RTLD_LAZY | RTLD_NOLOAD)) {
        tellOfSample(loaded);
        ::dlclose(loaded);
        return {};
    }
    // Once more, for the loader's reason.
    QString cause =
        QStringLiteral("the plug-in did not load %1").arg(QFile::decodeName(driverName));
    if (void *loaded = ::dlopen(driverName.constData(), RTLD_LAZY))
        ::dlclose(loaded);
    else
        cause = QString::fromLocal8Bit(::dlerror());
    return { QCoreApplication::translate(
                 "DriverCheck",
                 "no driver, so that no device can be reached: %1; looked for in %2; "
                 "--driver-dir names another directory")
                 .arg(cause, searchedDirectories().join(QLatin1String(", "))) };
}
