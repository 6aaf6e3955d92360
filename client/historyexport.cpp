#include "historyexport.h"

#include "comm/stopsource.h"
#include "historyrecord.h"

#include <array>
#include <QDebug>
#include <QFile>
#include <QSaveFile>

#include <cstdio>
#include <limits>
#include <memory>

namespace {

constexpr int pieceSize = 64 * 1024;

// The file at the target's path, replaced as a whole where that is possible.
class Target
{
public:
    bool open(const QString &path)
    {
        auto replacing = std::make_unique<QSaveFile>(path);
        if (replacing->open(QIODevice::WriteOnly)) {
            m_replacing = replacing.get();
            m_file = std::move(replacing);
            return true;
        }
        m_file = std::make_unique<QFile>(path);
        return m_file->open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

    // Takes whole lines, so that what was written before a failure ends with one.
    void write(const QByteArray &lines)
    {
        if (!m_failed && m_file->write(lines) == lines.size())
            m_written += lines.size();
        else
            m_failed = true;
    }

    bool commit()
    {
        if (m_replacing)
            return !m_failed && m_replacing->commit();
        if (m_failed)
            m_file->resize(m_written);
        m_file->close();
        return !m_failed;
    }

    QString errorString() const { return m_file->errorString(); }

private:
    std::unique_ptr<QFileDevice> m_file;
    QSaveFile *m_replacing = nullptr; // m_file, when it replaces
    qint64 m_written = 0;
    bool m_failed = false;
};

using EncodedWords = QMap<int, QByteArray>;

EncodedWords encoded(const QMap<int, QString> &words)
{
    EncodedWords result;
    for (auto it = words.begin(); it != words.end(); ++it)
        result.insert(it.key(), it.value().toLocal8Bit());
    return result;
}

// Writes records as lines of comma-separated text.
class Csv
{
public:
    explicit Csv(const HistoryWords &words)
        : m_statuses(encoded(words.statuses))
        , m_modes(encoded(words.modes))
        , m_contents(encoded(words.contents))
    {
        m_lines.reserve(2 * pieceSize);
        for (const QString &title : words.titles)
            appendField(title.toLocal8Bit());
        m_lines += '\n';
    }

    void append(const HistoryRecord &record)
    {
        const int second = record.timeOfDay();
        std::array<char, 48> time;
        std::snprintf(time.data(), time.size(), "%lld:%02d:%02d:%02d", record.day, second / 3600,
                      second / 60 % 60, second % 60);
        appendField(QByteArray::number(quint64(record.number), 16));
        appendField(word(m_contents, record.content));
        appendField(word(m_statuses, record.status));
        appendField(time.data());
        appendField(word(m_modes, record.mode));
        m_lines += '\n';
    }

    // The lines since the last clear().
    const QByteArray &lines() const { return m_lines; }
    void clear() { m_lines.resize(0); } // and keep the memory

private:
    void appendField(const QByteArray &text) { m_lines.append(text).append(','); }
    void appendField(const char *text) { m_lines.append(text).append(','); }

    static QByteArray word(const EncodedWords &words, qint64 code)
    {
        const bool isCode = code >= 0 && code <= std::numeric_limits<int>::max();
        return isCode ? words.value(int(code)) : QByteArray();
    }

    EncodedWords m_statuses;
    EncodedWords m_modes;
    EncodedWords m_contents;
    QByteArray m_lines;
};

// Leaves the last lines to the caller; false when the source could not be read to its end.
bool convert(QFile &source, Csv &csv, Target &target)
{
    HistoryLine line;
    QByteArray piece(pieceSize, Qt::Uninitialized);
    qint64 got;
    while ((got = source.read(piece.data(), piece.size())) > 0) {
        if (StopSource::currentRequested())
            return false;
        for (qint64 i = 0; i < got; ++i) {
            if (const auto record = line.feed(piece.at(int(i))))
                csv.append(*record);
        }
        if (csv.lines().size() < pieceSize)
            continue;
        target.write(csv.lines());
        csv.clear();
    }
    if (const auto record = line.finish())
        csv.append(*record);
    return got == 0;
}

void writeTarget(const HistoryWords &words, const QString &sourcePath, const QString &path)
{
    Target target;
    if (path.isEmpty() || !target.open(path))
        return;
    QFile source(sourcePath);
    const bool hasSource = source.open(QIODevice::ReadOnly);
    Csv csv(words);
    if (hasSource && !convert(source, csv, target)) {
        if (!StopSource::currentRequested())
            qWarning() << "exportHistoryInfo" << sourcePath << source.errorString();
        return;
    }
    target.write(csv.lines());
    if (!target.commit())
        qWarning() << "exportHistoryInfo" << path << target.errorString();
}

} // namespace

void exportHistory(const HistoryWords &words, const QString &source, const QString &target)
{
    writeTarget(words, source, target);
    if (StopSource::currentRequested())
        return;
    QFile emptied(source);
    if (!emptied.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qWarning() << "exportHistoryInfo" << source << emptied.errorString();
}
