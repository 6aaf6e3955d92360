#include "inilines.h"

#include <QStringList>

#include <algorithm>

namespace {

bool isPlain(QChar letter)
{
    return (letter >= QLatin1Char('a') && letter <= QLatin1Char('z'))
        || (letter >= QLatin1Char('A') && letter <= QLatin1Char('Z'))
        || (letter >= QLatin1Char('0') && letter <= QLatin1Char('9'))
        || QLatin1String("_-.").contains(letter);
}

/** A part of a key as QSettings writes it. */
QByteArray escaped(const QString &part)
{
    QByteArray bytes;
    for (const QChar letter : part) {
        const int code = letter.unicode();
        if (isPlain(letter))
            bytes += letter.toLatin1();
        else if (letter == QLatin1Char('/'))
            bytes += '\\';
        else if (code <= 0xff)
            bytes += '%' + QByteArray::number(code, 16).toUpper().rightJustified(2, '0');
        else
            bytes += "%U" + QByteArray::number(code, 16).toUpper().rightJustified(4, '0');
    }
    return bytes;
}

QString unescaped(const QByteArray &bytes)
{
    const QString raw = QString::fromUtf8(bytes);
    QString text;
    for (int i = 0; i < raw.size(); ++i) {
        const bool wide = raw.mid(i, 2) == QLatin1String("%U");
        const int digits = wide ? 4 : 2;
        const int start = i + (wide ? 2 : 1);
        bool ok = false;
        const ushort code = raw.at(i) == QLatin1Char('%') && start + digits <= raw.size()
            ? raw.midRef(start, digits).toUShort(&ok, 16)
            : 0;
        if (ok) {
            text += QChar(code);
            i = start + digits - 1;
        } else {
            text += raw.at(i) == QLatin1Char('\\') ? QLatin1Char('/') : raw.at(i);
        }
    }
    return text;
}

QString normal(const QString &path)
{
    return path.split(QLatin1Char('/'), Qt::SkipEmptyParts).join(QLatin1Char('/'));
}

/** The section that a line opens; nothing for any other line. */
std::optional<QByteArray> sectionOf(const QByteArray &line)
{
    const QByteArray text = line.trimmed();
    if (!text.startsWith('[') || !text.endsWith(']'))
        return {};
    return text.mid(1, text.size() - 2).trimmed();
}

bool isSetting(const QByteArray &line)
{
    const QByteArray text = line.trimmed();
    return text.indexOf('=') > 0 && !text.startsWith(';') && !text.startsWith('#');
}

QByteArray quoted(const QString &value)
{
    const bool plain = std::all_of(value.begin(), value.end(), isPlain);
    return plain ? value.toUtf8() : '"' + value.toUtf8() + '"';
}

} // namespace

IniLines::IniLines(const QByteArray &bytes)
    : m_lines(bytes.split('\n'))
{
}

QList<QString> IniLines::paths() const
{
    QList<QString> paths;
    QString section;
    for (const QByteArray &line : m_lines) {
        const std::optional<QByteArray> opened = sectionOf(line);
        if (opened)
            section = opened->toLower() == "general" ? QString() : unescaped(*opened);
        const QByteArray key = line.left(line.indexOf('=')).trimmed();
        paths << (isSetting(line) ? normal(section + QLatin1Char('/') + unescaped(key))
                                  : QString());
    }
    return paths;
}

std::optional<QString> IniLines::value(const QString &key) const
{
    const int row = paths().lastIndexOf(normal(key));
    if (row < 0)
        return {};
    const QByteArray &line = m_lines.at(row);
    return QString::fromUtf8(line.mid(line.indexOf('=') + 1)).remove(QLatin1Char('"')).trimmed();
}

void IniLines::setValue(const QString &key, const QString &value)
{
    const QString path = normal(key);
    const QList<QString> known = paths();
    for (int i = 0; i < known.size(); ++i) {
        QByteArray &line = m_lines[i];
        const QByteArray end = line.endsWith('\r') ? "\r" : "";
        if (known.at(i) == path)
            line = line.left(line.indexOf('=') + 1) + quoted(value) + end;
    }
    if (known.contains(path))
        return;
    const QByteArray section = escaped(path.section(QLatin1Char('/'), 0, 0));
    const QByteArray line = escaped(path.section(QLatin1Char('/'), 1)) + '=' + quoted(value);
    for (int i = 0; i < m_lines.size(); ++i)
        if (sectionOf(m_lines.at(i)) == section)
            return m_lines.insert(i + 1, line);
    if (m_lines.last().trimmed().isEmpty())
        m_lines.removeLast();
    m_lines << '[' + section + ']' << line << QByteArray();
}
