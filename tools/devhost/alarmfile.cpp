#include "alarmfile.h"

#include "systemerror.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

QString timeText(const QDateTime &time)
{
    return time.isValid() ? time.toUTC().toString(Qt::ISODate) : QString();
}

QDateTime timeAt(const QJsonObject &object, const char *key)
{
    return QDateTime::fromString(object.value(QLatin1String(key)).toString(), Qt::ISODate)
        .toLocalTime();
}

QByteArray lineOf(const AlarmRecord &record)
{
    const QJsonObject object {
        { QStringLiteral("id"), record.id },
        { QStringLiteral("device"), record.device },
        { QStringLiteral("kind"), int(record.kind) },
        { QStringLiteral("flag"), record.flag },
        { QStringLiteral("text"), record.text },
        { QStringLiteral("began"), timeText(record.began) },
        { QStringLiteral("ended"), timeText(record.ended) },
        { QStringLiteral("end"), int(record.end) },
        { QStringLiteral("acknowledged"), record.isAcknowledged },
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<AlarmRecord> recordOf(const QByteArray &line)
{
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    const int kind = object.value(QLatin1String("kind")).toInt(-1);
    AlarmRecord record;
    record.id = qint64(object.value(QLatin1String("id")).toDouble());
    record.device = object.value(QLatin1String("device")).toString();
    record.flag = object.value(QLatin1String("flag")).toInt(-1);
    record.text = object.value(QLatin1String("text")).toString();
    record.began = timeAt(object, "began");
    record.ended = timeAt(object, "ended");
    const int end = object.value(QLatin1String("end")).toInt();
    record.end = AlarmRecord::End(qBound(0, end, int(AlarmRecord::End::Unwatched)));
    record.isAcknowledged = object.value(QLatin1String("acknowledged")).toBool();
    if (record.id <= 0 || kind < 0 || kind > int(AlarmRecord::Kind::Note)
        || !record.began.isValid())
        return {};
    record.kind = AlarmRecord::Kind(kind);
    return record;
}

} // namespace

QString AlarmFile::standardName()
{
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(state))
        state = QDir::homePath() + QLatin1String("/.local/state");
    return state + QLatin1String("/kx300-devhost/events.jsonl");
}

AlarmFile::AlarmFile(const QString &name)
    : m_name(name)
{
}

Outcome AlarmFile::open()
{
    const QString directory = QFileInfo(m_name).path();
    if (!QDir().mkpath(directory))
        return { tr("The event log cannot be kept: no folder %1").arg(directory) };
    m_lock = std::make_unique<QLockFile>(m_name + QLatin1String(".lock"));
    m_lock->setStaleLockTime(0); // held as long as its process lives
    if (!m_lock->tryLock(0))
        return { tr("The event log is kept by another window; this one forgets its own") };
    return openFile();
}

Outcome AlarmFile::openFile()
{
    // Without waiting, in case somebody has put a FIFO there.
    const int descriptor = ::open(QFile::encodeName(m_name).constData(),
                                  O_RDWR | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0600);
    const int failure = errno;
    const QString message = tr("The event log cannot be kept in %1: %2").arg(m_name);
    if (descriptor < 0)
        return { message.arg(systemError(failure)) };
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return { message.arg(tr("it is no file")) };
    }
    m_file = std::make_unique<QFile>();
    if (!m_file->open(descriptor, QIODevice::ReadWrite | QIODevice::Unbuffered,
                      QFileDevice::AutoCloseHandle))
        return { message.arg(m_file->errorString()) };
    return {};
}

QList<AlarmRecord> AlarmFile::load()
{
    QHash<qint64, AlarmRecord> latest;
    // Much more than the bound was written by somebody else.
    if (isOpen() && m_file->size() <= 4 * mostBytes && m_file->seek(0)) {
        for (const QByteArray &line : m_file->readAll().split('\n')) {
            const std::optional<AlarmRecord> record = recordOf(line);
            if (record)
                latest.insert(record->id, *record);
        }
    }
    QList<AlarmRecord> records = latest.values();
    std::sort(records.begin(), records.end(),
              [](const AlarmRecord &a, const AlarmRecord &b) { return a.id < b.id; });
    return records;
}

Outcome AlarmFile::append(const AlarmRecord &record, const QList<AlarmRecord> &all)
{
    if (!isOpen())
        return {};
    if (m_file->size() > mostBytes)
        return rewrite(all);
    // A line that was cut off, by a full disk or a crash, must not take this one along.
    const qint64 before = m_file->size();
    char last = '\n';
    if (before > 0 && m_file->seek(before - 1))
        m_file->getChar(&last);
    const QByteArray line = (last == '\n' ? QByteArray() : QByteArray("\n")) + lineOf(record);
    if (m_file->write(line) == line.size()) {
        m_isFailing = false;
        return {};
    }
    const QString error = m_file->errorString();
    m_file->resize(before);
    return failOnce(error);
}

Outcome AlarmFile::rewrite(const QList<AlarmRecord> &all)
{
    QSaveFile file(m_name);
    bool isGood = file.open(QIODevice::WriteOnly);
    for (const AlarmRecord &record : all)
        isGood = isGood && file.write(lineOf(record)) > 0;
    if (!isGood || !file.commit())
        return failOnce(file.errorString());
    m_file.reset();
    return openFile();
}

Outcome AlarmFile::failOnce(const QString &error)
{
    if (std::exchange(m_isFailing, true))
        return {};
    return { tr("The event log cannot be kept in %1: %2").arg(m_name, error) };
}
