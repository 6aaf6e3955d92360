#pragma once

#include <QSettings>
#include <QStringList>

#include <memory>

/** The host's own folder, without a slash at its end; its "param.ini" and "dev.ini" lie in "db" there. */
QString hostDirectory();

/**
 * One of the INI files that the host writes, with what is wrong in it.
 *
 * Threads: any, one at a time.
 * Errors:  nothing is waited for: what is no regular file cannot be read. A missing file or key reads as the given default; everything else that is wrong is a
 *          line of problems(), which names the file.
 */
class HostFile
{
public:
    /** @param path  of the file */
    explicit HostFile(const QString &path);

    /** Whether any key begins with `group` and a slash. */
    bool hasGroup(const QString &group) const;

    /** The value of `key` as text. */
    QString text(const QString &key, const QString &standard) const;

    /** The value of `key` as a number; 0 when it is none. */
    int number(const QString &key, int standard);

    /** Adds a line to the problems. */
    void report(const QString &problem);

    const QStringList &problems() const { return m_problems; }

private:
    const QString m_path;
    std::unique_ptr<QSettings> m_settings; // null when there is nothing to read
    QStringList m_problems;
};

/** The host's language number, as "param.ini" gives it. */
int hostLanguage(HostFile &parameters);
