#pragma once

#include <QString>
#include <QStringList>

/** One language that the host offers. */
struct HostLanguage
{
    const char *code;
    const char *name; ///< in the language itself, UTF-8
    int number;       ///< for the plug-in: "Language" of param.ini and setLanguage()
};

// clang-format off
constexpr HostLanguage hostLanguages[] = {
    { "en",    "English", 0 },
    { "zh_CN", "中文",    1 },
};
// clang-format on

/** The row of a code; English for any other. */
const HostLanguage &languageOf(const QString &code);

/** Installs the catalogues of a language: Qt's, the host's own and the plug-in's, which lies beside
 *  its file. Needs the application object; called before the plug-in makes its first text.
 *  @return what was not found */
QStringList installCatalogues(const QString &code, const QString &pluginFile);
