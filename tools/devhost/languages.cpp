#include "languages.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QTranslator>

namespace {

/** The plug-in's catalogues are named like its file without "lib". */
QString pluginCatalogue(const QString &pluginFile, const QString &code)
{
    QString base = QFileInfo(pluginFile).completeBaseName();
    if (base.startsWith(QLatin1String("lib")))
        base.remove(0, 3);
    return QStringLiteral("%1/%2_%3.qm").arg(QFileInfo(pluginFile).absolutePath(), base, code);
}

} // namespace

const HostLanguage &languageOf(const QString &code)
{
    for (const HostLanguage &language : hostLanguages)
        if (code == QLatin1String(language.code))
            return language;
    return hostLanguages[0];
}

QStringList installCatalogues(const QString &code, const QString &pluginFile)
{
    Q_INIT_RESOURCE(devhost_translations);
    QStringList missing;
    if (code.isEmpty() || code == QLatin1String(hostLanguages[0].code))
        return missing;
    const QString files[] = {
        QStringLiteral("%1/qtbase_%2.qm")
            .arg(QLibraryInfo::location(QLibraryInfo::TranslationsPath), code),
        QStringLiteral(":/devhost/devhost_%1.qm").arg(code),
        pluginCatalogue(pluginFile, code),
    };
    for (const QString &file : files) {
        auto *translator = new QTranslator(QCoreApplication::instance());
        if (translator->load(file))
            QCoreApplication::installTranslator(translator);
        else
            missing << QStringLiteral("no translation %1").arg(file);
    }
    return missing;
}
