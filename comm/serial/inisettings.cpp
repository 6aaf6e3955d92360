#include "serial/inisettings.h"

#include <algorithm>
#include <cctype>
#include <QStringList>

namespace {

constexpr char byteOrderMark[] = "\xef\xbb\xbf";

struct EscapeRow
{
    char letter;
    char character;
};

constexpr EscapeRow escapes[] = {
    { 'a', '\a' }, { 'b', '\b' }, { 'f', '\f' }, { 'n', '\n' },  { 'r', '\r' },  { 't', '\t' },
    { 'v', '\v' }, { '"', '"' },  { '?', '?' },  { '\'', '\'' }, { '\\', '\\' },
};

bool isEndOfLine(char c)
{
    return c == '\n' || c == '\r';
}

// Without slashes in front, at the end, or twice.
QString normalized(const QString &key)
{
    return key.section(QLatin1Char('/'), 0, -1, QString::SectionSkipEmpty);
}

// Digits of `base` from `start` on, at most `most`; `end` is set behind them.
uint number(const QString &text, int start, int most, int base, int *end)
{
    bool isNumber = false;
    int length = 0;
    while (length < most && start + length < text.size()) {
        text.midRef(start + length, 1).toUInt(&isNumber, base);
        if (!isNumber)
            break;
        ++length;
    }
    *end = start + length;
    return text.midRef(start, length).toUInt(nullptr, base);
}

// "%20" and "%U00e9" stand for characters, a backslash for the slash between groups.
QString plainKey(const QString &key)
{
    QString result;
    for (int i = 0; i < key.size(); ++i) {
        const bool isWide = key.midRef(i, 2) == QLatin1String("%U");
        const int digits = isWide ? 4 : 2;
        const int start = i + (isWide ? 2 : 1);
        int end = 0;
        const uint code = key.at(i) == QLatin1Char('%') ? number(key, start, digits, 16, &end) : 0;
        if (end == start + digits) {
            result += QChar(code);
            i = end - 1;
        } else {
            result += key.at(i) == QLatin1Char('\\') ? QLatin1Char('/') : key.at(i);
        }
    }
    return result;
}

// Appends what the escape stands for whose letter is at `i`, and returns where it ends.
int unescape(const QString &text, int i, QString &result)
{
    const QChar letter = text.at(i);
    int end = i + 1;
    for (const EscapeRow &row : escapes) {
        if (letter == QLatin1Char(row.letter)) {
            result += QLatin1Char(row.character);
            return end;
        }
    }
    if (letter == QLatin1Char('x')) {
        const uint code = number(text, i + 1, 8, 16, &end);
        if (end > i + 1)
            result += QChar(ushort(code));
    } else if (letter >= QLatin1Char('0') && letter <= QLatin1Char('7')) {
        result += QChar(ushort(number(text, i, 8, 8, &end)));
    } else if (text.midRef(i, 2) == QLatin1String("\r\n")) {
        ++end;
    }
    return end; // others, the end of a continued line among them, stand for nothing
}

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

// Those within the first `kept` characters stay.
QString withoutBlanksAtTheEnd(QString text, int kept)
{
    while (text.size() > kept && isBlank(text.back()))
        text.chop(1);
    return text;
}

// Without the quotes, and without blanks around unquoted parts and behind quotes.
QStringList parts(const QString &text)
{
    QStringList result;
    QString part;
    bool isQuoted = false;
    bool hadQuotes = false;
    bool skipsBlanks = true;
    int kept = 0; // up to the last escape
    const auto end = [&] { result += hadQuotes ? part : withoutBlanksAtTheEnd(part, kept); };
    for (int i = 0; i < text.size();) {
        const QChar c = text.at(i++);
        if (c == QLatin1Char('"')) {
            isQuoted = !isQuoted;
            hadQuotes = true;
        } else if (c == QLatin1Char(',') && !isQuoted) {
            end();
            part.clear();
            hadQuotes = false;
            kept = 0;
        } else if (c == QLatin1Char('\\')) {
            i = i < text.size() ? unescape(text, i, part) : i;
            kept = part.size();
        } else if (!skipsBlanks || !isBlank(c)) {
            part += c;
        } else {
            continue;
        }
        skipsBlanks = !isQuoted && (c == QLatin1Char('"') || c == QLatin1Char(','));
    }
    end();
    return result;
}

// Values that are no plain text begin with "@", which such a text has twice.
QString plainValue(const QString &text)
{
    if (text.startsWith(QLatin1String("@@")))
        return text.mid(1);
    for (const char *type : { "@String(", "@ByteArray(" }) {
        if (text.startsWith(QLatin1String(type)) && text.endsWith(QLatin1Char(')')))
            return text.mid(int(qstrlen(type))).chopped(1);
    }
    return text;
}

} // namespace

struct IniSettings::Line
{
    QString text;
    int equals = -1; // where the first "=" is
    int number = 1;
};

/** Walks through the lines of a file: comments go, what continues on the next line is one. */
class IniSettings::Lines
{
public:
    explicit Lines(const QByteArray &bytes, bool isUtf8)
        : m_bytes(bytes)
        , m_isUtf8(isUtf8)
    {
    }

    /** Nothing at the end of the file. */
    std::optional<Line> next()
    {
        skipEmptyLines();
        if (m_at >= m_bytes.size())
            return std::nullopt;
        Line line;
        line.number = lineNumber();
        const int start = m_at;
        bool isQuoted = false;
        int equals = -1;
        for (; m_at < m_bytes.size(); ++m_at) {
            const char c = m_bytes.at(m_at);
            if (!isQuoted && (isEndOfLine(c) || c == ';'))
                break;
            isQuoted ^= c == '"';
            if (c == '=' && equals < 0)
                equals = m_at - start;
            if (c == '\\')
                m_at += m_bytes.mid(m_at + 1, 2) == "\r\n" ? 2 : 1;
        }
        m_at = qMin(m_at, m_bytes.size());
        line.equals = equals < 0 ? -1 : decoded(m_bytes.mid(start, equals)).size();
        line.text = decoded(m_bytes.mid(start, m_at - start));
        return line;
    }

private:
    int lineNumber()
    {
        const auto start = m_bytes.begin();
        m_number += int(std::count(start + m_counted, start + m_at, '\n'));
        m_counted = m_at;
        return m_number;
    }

    void skipEmptyLines()
    {
        while (m_at < m_bytes.size()) {
            if (m_bytes.at(m_at) == ';') {
                while (m_at < m_bytes.size() && !isEndOfLine(m_bytes.at(m_at)))
                    ++m_at;
            } else if (!std::isspace(static_cast<unsigned char>(m_bytes.at(m_at)))) {
                return;
            } else {
                ++m_at;
            }
        }
    }

    QString decoded(const QByteArray &bytes) const
    {
        return m_isUtf8 ? QString::fromUtf8(bytes) : QString::fromLatin1(bytes);
    }

    const QByteArray &m_bytes;
    bool m_isUtf8;
    int m_at = 0;
    int m_counted = 0; // up to here, for m_number
    int m_number = 1;
};

IniSettings::IniSettings(const QByteArray &file)
{
    const bool isUtf8 = file.startsWith(byteOrderMark);
    const QByteArray bytes = isUtf8 ? file.mid(int(sizeof byteOrderMark) - 1) : file;
    Lines lines(bytes, isUtf8);
    QString group;
    while (const auto line = lines.next())
        take(*line, group);
}

void IniSettings::take(const Line &line, QString &group)
{
    const bool isGroup = line.text.startsWith(QLatin1Char('['));
    const int end = isGroup ? line.text.indexOf(QLatin1Char(']')) : line.equals;
    if (end < 0 && m_firstBadLine == 0)
        m_firstBadLine = line.number;
    if (isGroup) {
        const QString name = line.text.mid(1, end < 0 ? -1 : end - 1).trimmed();
        const bool isGeneral = name.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0;
        const bool isEscaped = name.compare(QLatin1String("%general"), Qt::CaseInsensitive) == 0;
        group =
            isGeneral ? QString() : (isEscaped ? name.mid(1) : plainKey(name)) + QLatin1Char('/');
    } else if (end >= 0) {
        const QString key = normalized(group + plainKey(line.text.left(end).trimmed()));
        QStringList values = parts(line.text.mid(end + 1));
        std::transform(values.begin(), values.end(), values.begin(), plainValue);
        m_values.insert(key, values.join(QLatin1Char(',')));
    }
}

std::optional<QString> IniSettings::value(const QString &key) const
{
    const auto found = m_values.constFind(normalized(key));
    return found == m_values.constEnd() ? std::nullopt : std::make_optional(*found);
}
