#pragma once

#include <QString>

class CollectThread;

/** The plug-in's own object, or why the file was refused. */
struct LoadedPlugin
{
    CollectThread *factory = nullptr; ///< owned by the plug-in, lives until the process ends
    QString error;                    ///< names the file and the cause; empty when loaded
};

/** Loads a plug-in file after its metadata have said that it is one of ours: a foreign plug-in is
 *  refused before any of its code runs. Main thread. */
LoadedPlugin loadPlugin(const QString &file);

/** Where the plug-in is looked for when none is named: the first that exists, else the first.
 *  @param bin  directory of the program */
QString defaultPlugin(const QString &bin);
