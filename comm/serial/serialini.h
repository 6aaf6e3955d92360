#pragma once

#include <QString>

/** What "serial.ini" in the working directory says about a serial port. */
struct StoredPortSettings
{
    QString param = QStringLiteral("9600,n,8,1"); ///< see parseLineSettings()
    int timeout = 1000;                           ///< ms
};

/** Reads the settings of the port `name`, slashes included, from its keys name + "/param" and
 *  name + "/timeout".
 *
 *  Threads: any.
 *  Errors:  a missing file or key means the default; a file that cannot be read and a value that
 *           is none mean it too, and a warning when that is new for the port. Lines that are no
 *           settings are skipped with a warning. */
StoredPortSettings readSerialIni(const QString &name);
