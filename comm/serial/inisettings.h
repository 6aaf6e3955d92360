#pragma once

#include <optional>
#include <QByteArray>
#include <QMap>
#include <QString>

/**
 * The settings of an INI file as QSettings reads them, all at once and without its globals.
 *
 * Of its own because polling threads read settings, also while the process exits, when Qt has
 * destroyed what QSettings works with; because QSettings would wait for a FIFO; and because it does
 * not find a key that somebody typed with the slash in front that the names of ports have.
 *
 * Threads: a value.
 * Errors:  lines that are no settings are skipped; firstBadLine() tells.
 */
class IniSettings
{
public:
    explicit IniSettings(const QByteArray &file);

    /** A list comes joined by commas.
     *  @param key  with its groups: "dev/ttyS0/param"; slashes in front do not count
     *  @return nothing when the file does not have it */
    std::optional<QString> value(const QString &key) const;

    /** Counted from 1; 0 for none. */
    int firstBadLine() const { return m_firstBadLine; }

private:
    struct Line;
    class Lines;

    void take(const Line &line, QString &group);

    QMap<QString, QString> m_values;
    int m_firstBadLine = 0;
};
