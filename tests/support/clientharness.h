#pragma once

#include "client/tavoclient.h"
#include "fakedriver.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QVector>

#include <mutex>

/** One event that a client posted. */
struct Post
{
    int type;
    QVariantMap map;
};

/** Records what a client posts, in the thread that posts. Threads: any. */
class EventRecorder
{
public:
    explicit EventRecorder(CollectThread &client)
    {
        QObject::connect(
            &client, &CollectThread::postDEvent, &client,
            [this](int type, const QVariantMap &map) {
                const std::lock_guard<std::mutex> lock(m_mutex);
                m_posts.append({ type, map });
            },
            Qt::DirectConnection);
    }

    /** The posts since the last call. */
    QVector<Post> take()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return std::exchange(m_posts, {});
    }

    /** Types of the posts since the last call; without the data reports, which end every cycle. */
    QVector<int> takeTypes()
    {
        QVector<int> types;
        for (const Post &post : take()) {
            if (post.type != 2007)
                types.append(post.type);
        }
        return types;
    }

private:
    std::mutex m_mutex;
    QVector<Post> m_posts; // guarded by m_mutex
};

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
    QFile file(directory + "/dev.ini");
    if (!file.open(QIODevice::WriteOnly))
        qFatal("%s", qPrintable(file.errorString()));
    file.write("[" + name.toUtf8() + "]\n" + lines);
    file.close();
    client.deviceName = name;
    client.loadConfig();
}
