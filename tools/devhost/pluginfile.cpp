#include "pluginfile.h"

#include "collectthread.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QPluginLoader>

namespace {

constexpr char pluginName[] = "libkx300_g4_6-20k_Client.so";
constexpr const char *pluginDirectories[] = { "../lib", DEVHOST_PLUGIN_DIRECTORY };

struct RequiredText
{
    const char *key;
    const char *value;
    const char *complaint;
};

// clang-format off
constexpr RequiredText requiredTexts[] = {
    { "IID",       "com.orva.Qt.ProInterface", "it serves the interface \"%1\", not \"%2\"" },
    { "className", "tavoClient",               "its class is \"%1\", not \"%2\"" },
};
// clang-format on

LoadedPlugin refuse(const QString &file, const QString &cause)
{
    return { nullptr, QStringLiteral("plug-in %1 refused: %2").arg(file, cause) };
}

/** The base class exists once in the host and once in the plug-in, so that qobject_cast, which
 *  compares addresses of meta-objects, would say no. The names are the contract. */
bool isCollectThread(const QObject *object)
{
    for (const QMetaObject *meta = object->metaObject(); meta; meta = meta->superClass())
        if (qstrcmp(meta->className(), "CollectThread") == 0)
            return true;
    return false;
}

} // namespace

LoadedPlugin loadPlugin(const QString &file)
{
    // Relative names would be looked for in the library directories too.
    const QFileInfo info(file);
    if (!info.isFile())
        return refuse(file, QStringLiteral("there is no such file"));
    QPluginLoader loader(info.absoluteFilePath());
    const QJsonObject metaData = loader.metaData();
    if (metaData.isEmpty())
        return refuse(file, QStringLiteral("it is not a plug-in (%1)").arg(loader.errorString()));
    for (const RequiredText &required : requiredTexts) {
        const QString value = metaData.value(QLatin1String(required.key)).toString();
        const QString expected = QString::fromLatin1(required.value);
        if (value != expected)
            return refuse(file, QString::fromLatin1(required.complaint).arg(value, expected));
    }
    QObject *object = loader.instance();
    if (!object)
        return refuse(file, QStringLiteral("it cannot be loaded (%1)").arg(loader.errorString()));
    if (!isCollectThread(object))
        return refuse(file, QStringLiteral("its object is no acquisition client"));
    return { static_cast<CollectThread *>(object), {} };
}

QString defaultPlugin(const QString &bin)
{
    QString first;
    for (const char *directory : pluginDirectories) {
        const QString file = QDir::cleanPath(
            QStringLiteral("%1/%2/%3")
                .arg(bin, QString::fromLatin1(directory), QLatin1String(pluginName)));
        if (QFileInfo::exists(file))
            return file;
        if (first.isEmpty())
            first = file;
    }
    return first;
}
