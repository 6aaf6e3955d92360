#pragma once

#include "client/tavoclient.h"
#include "fakedriver.h"
#include "guardedtest.h"

/** The driver that the clients of this process load. */
inline FakeDriver &theDriver()
{
    static QLibrary library(QStringLiteral("libkx300_g4_6-20k"));
    static const auto entry = reinterpret_cast<FakeDriver *(*)()>(library.resolve("fakeDriver"));
    if (!entry)
        qFatal("%s", qPrintable(library.errorString()));
    return *entry();
}

/** Configures a client through the host's files.
 *  @param lines  of "dev.ini", without the section's name */
inline void configure(tavoClient &client, const QString &name, const QByteArray &lines)
{
    const QString directory = QCoreApplication::applicationDirPath() + "/KOVA/TesselView/db";
    QDir().mkpath(directory);
    if (!writeFile(directory + "/dev.ini", "[" + name.toUtf8() + "]\n" + lines))
        qFatal("dev.ini cannot be written");
    client.deviceName = name;
    client.loadConfig();
}
