#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/**
 * The lines of an INI file, of which single values can be changed while every other byte stays:
 * comments, the order, and what other programs wrote.
 *
 * A key is a path such as "/dev/ttyS0/param"; slashes at its ends and doubled ones do not count. It
 * is found as a program writes it ("[dev]", "ttyS0\param=") and as a person does
 * ("/dev/ttyS0/param=" before any section).
 */
class IniLines
{
public:
    explicit IniLines(const QByteArray &bytes);

    /** The value of the last line with this key, without quotes. */
    std::optional<QString> value(const QString &key) const;

    /** Replaces the value in all lines with this key, or adds a line to its section. */
    void setValue(const QString &key, const QString &value);

    QByteArray bytes() const { return m_lines.join('\n'); }

private:
    /** The path of each line that is a setting. */
    QList<QString> paths() const;

    QList<QByteArray> m_lines; // without the line feed
};
