#include "devicerecord.h"

#include "trends/trendclock.h"

namespace {

constexpr int newEventS = 60; // an event that began before is no news

} // namespace

DeviceRecord::DeviceRecord(const Family &family)
    : m_family(family)
    , m_trends(family)
{
}

bool DeviceRecord::follow(const ClientNews &news)
{
    m_news = &news;
    return m_link.take(news.link());
}

bool DeviceRecord::takeLink(int state)
{
    return m_link.take(state, QDateTime::currentDateTime());
}

QString DeviceRecord::lostSince() const
{
    return m_link.sinceText(QDate::currentDate());
}

QString DeviceRecord::lostText() const
{
    return m_link.text(QDate::currentDate());
}

void DeviceRecord::takeReport(const DataReport &report)
{
    m_hasReport = m_hasReport || !report.isEmpty();
    const QDateTime now = QDateTime::currentDateTime();
    const auto onsets = m_news ? m_news->onsets() : QMap<int, EventOnset>();
    keepTrends(report, m_events.update(report, m_family.events.size(), onsets, now), now);
}

void DeviceRecord::keepTrends(const DataReport &report, const QVector<RecordedEvent> &appeared,
                              const QDateTime &now)
{
    if (m_link.isLost())
        return m_trends.loseSight(trendClock());
    if (!m_hasReport)
        return;
    m_trends.take(report, trendClock());
    for (const RecordedEvent &event : appeared) {
        const bool isNew = event.onset.isExact && event.onset.since.secsTo(now) < newEventS;
        if (isNew)
            m_trends.mark(event.index);
    }
}
