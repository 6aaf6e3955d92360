#pragma once

#include "outcome.h"

#include <QStringList>

/**
 * The private directory from which one run of the program works.
 *
 * A plug-in looks for its configuration files below the directory of the running executable, which
 * is read-only once the program is installed and would be shared by two runs. So the program makes
 * a copy of itself in a new temporary directory and becomes that copy:
 *
 *     <temporary>/devhost-XXXXXX/bin/devhost         the copy; applicationDirPath() is its folder
 *     <temporary>/devhost-XXXXXX/bin/KOVA/...        the configuration files of this run
 *     <temporary>/devhost-XXXXXX/bin/upgrade         link to the folder beside the original, if any
 *     <temporary>/devhost-XXXXXX/lib                 link to the original's ../lib, or to the
 *                                                    driver's directory: the run path still works
 *     <temporary>/devhost-XXXXXX/process             the id of the process that made it
 *
 * The working directory, the arguments and the process id stay. A run that ends removes what is
 * listed here, and nothing else.
 *
 * Threads: main thread, before others exist.
 */
class RunDirectory
{
public:
    /** Whether this process is such a copy, in a directory that it made itself. */
    static bool isActive();

    /** Makes the directory and becomes the copy.
     *  @param driverDirectory  where the driver is; empty: the original's ../lib
     *  @return why it failed; does not return otherwise */
    static Outcome enter(char **argv, const QString &driverDirectory);

    /** The file that this process runs: the copy's, once it is active. */
    static QString executable();

    /** The directory of the original executable. */
    static QString originalBinDirectory();

    /** Removes the directory of this run; called at the end of the copy. */
    static void remove();

    /** Starts the copy again in the same directory.
     *  @return why it failed; does not return otherwise */
    static Outcome restart(const QStringList &arguments);
};
