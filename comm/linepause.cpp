#include "linepause.h"

#include <QHash>

#include <mutex>

namespace {

struct LineRecord
{
    int pauses = 0;
    int users = 0;
};

struct Lines
{
    std::mutex mutex;
    QHash<QString, LineRecord> records; // guarded by mutex; only those in use or paused
};

// Never destroyed: polling threads may outlive the end of main().
Lines &lines()
{
    static auto *const all = new Lines;
    return *all;
}

void forgetIfIdle(Lines &all, const QString &line)
{
    const LineRecord record = all.records.value(line);
    if (record.pauses == 0 && record.users == 0)
        all.records.remove(line);
}

} // namespace

LinePause::LinePause(const QString &line)
    : m_line(line)
{
    const std::lock_guard<std::mutex> lock(lines().mutex);
    ++lines().records[m_line].pauses;
}

LinePause::~LinePause()
{
    const std::lock_guard<std::mutex> lock(lines().mutex);
    --lines().records[m_line].pauses;
    forgetIfIdle(lines(), m_line);
}

bool LinePause::isQuiet() const
{
    const std::lock_guard<std::mutex> lock(lines().mutex);
    return lines().records.value(m_line).users == 0;
}

bool LinePause::isOn(const QString &line)
{
    const std::lock_guard<std::mutex> lock(lines().mutex);
    return lines().records.value(line).pauses > 0;
}

LineUse::LineUse(const QString &line)
    : m_line(line)
{
    const std::lock_guard<std::mutex> lock(lines().mutex);
    LineRecord &record = lines().records[m_line];
    m_isAllowed = record.pauses == 0;
    if (m_isAllowed)
        ++record.users;
}

LineUse::~LineUse()
{
    if (!m_isAllowed)
        return;
    const std::lock_guard<std::mutex> lock(lines().mutex);
    --lines().records[m_line].users;
    forgetIfIdle(lines(), m_line);
}
