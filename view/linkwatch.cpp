#include "linkwatch.h"

using namespace HostContract;

bool LinkWatch::take(int state, const QDateTime &now)
{
    const bool isLost = state == LinkLost;
    if (isLost && !m_isLost)
        m_lostSince = m_isKnown ? now : QDateTime();
    const bool hasChanged = isLost != m_isLost;
    m_isLost = isLost;
    m_isKnown = true;
    return hasChanged;
}

bool LinkWatch::take(const LinkNews &news)
{
    if (news.state == LinkUnknown)
        return false;
    const QDateTime before = m_lostSince;
    const bool hasChanged = take(news.state, news.since);
    if (m_isLost)
        m_lostSince = news.since;
    return hasChanged || m_lostSince != before;
}

QString LinkWatch::sinceText(const QDate &today) const
{
    const bool isToday = m_lostSince.date() == today;
    return m_lostSince.toString(isToday ? QStringLiteral("HH:mm:ss")
                                        : QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString LinkWatch::text(const QDate &today) const
{
    if (!m_isLost)
        return {};
    return m_lostSince.isValid() ? tr("No communication since %1").arg(sinceText(today))
                                 : tr("No communication");
}
