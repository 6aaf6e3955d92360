#pragma once

#include "collectthread.h"
#include "fakedriver.h"
#include "guardedtest.h"

#include <QPluginLoader>

/** The fake driver that the clients of this process load under its bare name. */
inline FakeDriver &fakeDriverIn(const char *library)
{
    QLibrary file(QString::fromLatin1(library));
    const auto entry = reinterpret_cast<FakeDriver *(*)()>(file.resolve("fakeDriver"));
    if (!entry)
        qFatal("%s", qPrintable(file.errorString()));
    return *entry();
}

/** Configures a client through the host's files.
 *  @param lines  of "dev.ini", without the section's name */
inline void configure(CollectThread &client, const QString &name, const QByteArray &lines)
{
    const QString directory = QCoreApplication::applicationDirPath() + "/KOVA/TesselView/db";
    QDir().mkpath(directory);
    if (!writeFile(directory + "/dev.ini", "[" + name.toUtf8() + "]\n" + lines))
        qFatal("dev.ini cannot be written");
    client.deviceName = name;
    client.loadConfig();
}

/** A client of a plug-in that is loaded as a host does; the caller owns it. */
inline CollectThread *clientOf(const QString &plugin)
{
    QPluginLoader loader(plugin);
    QObject *factory = loader.instance();
    if (!factory)
        qFatal("%s", qPrintable(loader.errorString()));
    // The base class has another meta-object in each library: no cast by name.
    return static_cast<CollectThread *>(factory)->create(nullptr);
}
