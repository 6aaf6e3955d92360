#include "history/historyexport.h"

#include "history/historyrecord.h"
#include "history/historytarget.h"
#include "regularfile.h"
#include "stopsource.h"

#include <array>
#include <QDebug>
#include <QFile>

#include <charconv>
#include <fcntl.h>
#include <string>
#include <vector>

namespace {

constexpr int pieceSize = 64 * 1024;

// Makes a file for appending.
bool openRecords(QFile &file, QIODevice::OpenMode mode)
{
    const bool makes = mode.testFlag(QIODevice::Append);
    const int access = mode == QIODevice::ReadOnly ? O_RDONLY : makes ? O_WRONLY | O_CREAT : O_RDWR;
    const OpenedFile opened =
        openRegularFile(QFile::encodeName(file.fileName()).constData(), access);
    if (opened.isOther && mode == QIODevice::ReadWrite) // the first way to open it
        qWarning() << "exportHistoryInfo" << file.fileName() << "is no regular file";
    return opened.descriptor >= 0
        && file.open(opened.descriptor, mode, QFileDevice::AutoCloseHandle);
}

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
        ++m_count;
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

    /** Records so far. */
    int count() const { return m_count; }

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
    int m_count = 0;
};

enum class Reading { Done, Failed, Stopped };

// Leaves the last lines to the caller.
Reading convert(QFile &source, Csv &csv, HistoryTarget &target)
{
    HistoryLine line;
    QByteArray piece(pieceSize, Qt::Uninitialized);
    qint64 got;
    while ((got = source.read(piece.data(), piece.size())) > 0) {
        if (StopSource::currentRequested())
            return Reading::Stopped;
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
    return got == 0 ? Reading::Done : Reading::Failed;
}

HistoryOutcome failure(const QString &file, const QString &problem)
{
    return { file, 0, problem };
}

// One try to write all of the source to the target.
HistoryOutcome writeOnce(const HistoryWords &words, QFile &source, HistoryTarget &target,
                         HistoryTarget::Way way, const QString &path)
{
    if (!target.open(way))
        return failure(path, target.error());
    if (way == HistoryTarget::Way::InPlace && source.isOpen() && target.isSameAs(source.handle()))
        return failure(path, QStringLiteral("it is the history file itself"));
    Csv csv(words);
    if (source.isOpen() && !source.isSequential())
        source.seek(0);
    const Reading reading = source.isOpen() ? convert(source, csv, target) : Reading::Done;
    if (reading == Reading::Stopped)
        return failure(path, QStringLiteral("it was broken off"));
    if (reading == Reading::Failed)
        return failure(path, source.fileName() + QLatin1String(": ") + source.errorString());
    target.write(csv.lines());
    if (!target.commit())
        return failure(path, target.error());
    return { path, csv.count(), QString() };
}

HistoryOutcome writeTarget(const HistoryWords &words, QFile &source, const QString &path)
{
    if (path.isEmpty())
        return failure(path, QStringLiteral("no file was named"));
    HistoryTarget target(path);
    const HistoryTarget::Way way = target.bestWay();
    HistoryOutcome outcome = writeOnce(words, source, target, way, path);
    const bool hasNoRoomBeside =
        !outcome.problem.isEmpty() && way == HistoryTarget::Way::Replace && !target.wasOpened();
    // Such as a file that is mounted, or one in a folder that takes no other.
    if (target.isRenameRefused() || hasNoRoomBeside)
        outcome = writeOnce(words, source, target, HistoryTarget::Way::InPlace, path);
    return outcome;
}

void log(const HistoryOutcome &outcome)
{
    if (outcome.problem.isEmpty())
        qDebug() << "exportHistoryInfo" << outcome.records << "records in" << outcome.file;
    else if (!outcome.file.isEmpty())
        qWarning() << "exportHistoryInfo" << outcome.file
                   << "not written:" << qPrintable(outcome.problem);
}

} // namespace

HistoryOutcome exportHistory(const HistoryWords &words, const QString &source,
                             const QString &target)
{
    // The file that is read is the one that is emptied, whatever gets its name meanwhile: the
    // records of another device, or the target.
    QFile records(source);
    const bool isOpen =
        openRecords(records, QIODevice::ReadWrite) || openRecords(records, QIODevice::ReadOnly);
    HistoryOutcome outcome = failure(target, QStringLiteral("it was broken off"));
    if (!StopSource::currentRequested()) {
        outcome = writeTarget(words, records, target);
        log(outcome);
    }
    if (isOpen ? !records.resize(0) : !openRecords(records, QIODevice::Append))
        qWarning() << "exportHistoryInfo" << source << "cannot be emptied";
    return outcome;
}
