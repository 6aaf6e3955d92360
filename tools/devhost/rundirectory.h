#pragma once

#include <QString>

/**
 * The private directory from which one run of the program works.
 *
 * A plug-in looks for its configuration files below the directory of the running executable, which
 * is read-only once the program is installed and would be shared by two runs. So the program makes
 * a copy of itself in a new temporary directory and becomes that copy:
 *
 *     <temporary>/devhost-XXXXXX/bin/devhost         the copy; applicationDirPath() is its folder
 *     <temporary>/devhost-XXXXXX/bin/KOVA/...        the configuration files of this run
 *     <temporary>/devhost-XXXXXX/lib                 link to the original's ../lib, or to the
 *                                                    driver's directory: the run path still works
 *
 * The working directory, the arguments and the process id stay. A run that ends removes it.
 *
 * Threads: main thread, before others exist.
 */
class RunDirectory
{
public:
    /** Whether this process is such a copy. */
    static bool isActive();

    /** Makes the directory and becomes the copy.
     *  @param driverDirectory  where the driver is; empty: the original's ../lib
     *  @return the reason why it failed; does not return otherwise */
    static QString enter(char **argv, const QString &driverDirectory);

    /** The directory of the original executable. */
    static QString originalBinDirectory();

    /** Removes the directory of this run; called at the end of the copy. */
    static void remove();

    /** Starts the copy again in the same directory.
     *  @return the reason why it failed; does not return otherwise */
    static QString restart(const QStringList &arguments);
};
