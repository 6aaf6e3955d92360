#include "historyexport.h"

#include "comm/stopsource.h"
#include "historyrecord.h"

#include <array>
#include <QDebug>
#include <QFile>
#include <QSaveFile>

#include <charconv>
#include <memory>
#include <string>
#include <vector>

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
    void write(const std::string &lines)
    {
        const auto size = qint64(lines.size());
        if (!m_failed && m_file->write(lines.data(), size) == size)
            m_written += size;
        else
            m_failed = true;
    }

    bool commit()
    {
        if (m_replacing)
            // commit() alone does not notice that what was still buffered found no room.
            return !m_failed && m_replacing->flush() && m_replacing->commit();
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

// The field for each code, its comma included.
class WordFields
{
public:
    explicit WordFields(const QMap<int, QString> &words)
        : m_fields(size_t(words.isEmpty() ? 0 : words.lastKey() + 1), ",")
    {
        for (auto word = words.begin(); word != words.end(); ++word)
            m_fields[size_t(word.key())] = word.value().toLocal8Bit().toStdString() + ',';
    }

    const std::string &field(qint64 code) const
    {
        return code >= 0 && size_t(code) < m_fields.size() ? m_fields[size_t(code)] : m_empty;
    }

private:
    std::vector<std::string> m_fields;
    std::string m_empty = ",";
};

// Writes records as lines of comma-separated text.
class Csv
{
public:
    explicit Csv(const HistoryWords &words)
        : m_statuses(words.statuses)
        , m_modes(words.modes)
        , m_contents(words.contents)
    {
        m_lines.reserve(2 * pieceSize);
        for (const QString &title : words.titles)
            m_lines.append(title.toLocal8Bit().toStdString()) += ',';
        m_lines += '\n';
    }

    void append(const HistoryRecord &record)
    {
        const int second = record.timeOfDay();
        appendNumber(quint64(record.number), 16);
        m_lines += ',';
        m_lines += m_contents.field(record.content);
        m_lines += m_statuses.field(record.status);
        appendNumber(record.day, 10);
        appendTwoDigits(second / 3600);
        appendTwoDigits(second / 60 % 60);
        appendTwoDigits(second % 60);
        m_lines += ',';
        m_lines += m_modes.field(record.mode);
        m_lines += '\n';
    }

    // The lines since the last clear().
    const std::string &lines() const { return m_lines; }
    void clear() { m_lines.clear(); }

private:
    template <typename Number> void appendNumber(Number number, int base)
    {
        std::array<char, 24> digits;
        const auto [end, error] =
            std::to_chars(digits.data(), digits.data() + digits.size(), number, base);
        Q_ASSERT(error == std::errc());
        m_lines.append(digits.data(), end);
    }

    void appendTwoDigits(int number)
    {
        m_lines += ':';
        m_lines += char('0' + number / 10);
        m_lines += char('0' + number % 10);
    }

    WordFields m_statuses;
    WordFields m_modes;
    WordFields m_contents;
    std::string m_lines;
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
        const char *const end = piece.constData() + got;
        for (const char *at = line.feed(piece.constData(), end); at != end;
             at = line.feed(at + 1, end)) {
            if (const auto record = line.finish())
                csv.append(*record);
        }
        if (csv.lines().size() < size_t(pieceSize))
            continue;
        target.write(csv.lines());
        csv.clear();
    }
    if (const auto record = line.finish())
        csv.append(*record);
    return got == 0;
}

void writeTarget(const HistoryWords &words, QFile &source, const QString &path)
{
    Target target;
    if (path.isEmpty() || !target.open(path))
        return;
    Csv csv(words);
    if (source.isOpen() && !convert(source, csv, target)) {
        if (!StopSource::currentRequested())
            qWarning() << "exportHistoryInfo" << source.fileName() << source.errorString();
        return;
    }
    target.write(csv.lines());
    if (!target.commit())
        qWarning() << "exportHistoryInfo" << path << target.errorString();
}

} // namespace

void exportHistory(const HistoryWords &words, const QString &source, const QString &target)
{
    // The file that is read is the one that is emptied, whatever gets its name meanwhile: the
    // records of another device, or the target.
    QFile records(source);
    if (!records.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        records.open(QIODevice::ReadOnly);
    if (!StopSource::currentRequested())
        writeTarget(words, records, target);
    const bool isEmpty = records.isOpen() ? records.resize(0) : records.open(QIODevice::Append);
    if (!isEmpty)
        qWarning() << "exportHistoryInfo" << source << records.errorString();
}
