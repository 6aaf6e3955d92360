#pragma once

#include "linkwatch.h"
#include "pages/eventrecord.h"
#include "trends/trendstore.h"

/**
 * What a view knows of its device beside the latest report: the link, the events that are present
 * and the courses of the values.
 *
 * It follows every report, whatever is seen of the view: an event's time is when it was first seen,
 * and what the courses miss is lost.
 */
class DeviceRecord
{
public:
    explicit DeviceRecord(const Family &family);

    /** Takes over what the client knows, from now on with each report; `news` must outlive this.
     *  @return whether the link has changed */
    bool follow(const ClientNews &news);

    /** Takes over the communication state of the host contract.
     *  @return whether that is a change */
    bool takeLink(int state);

    /** Takes a report that has just come. A device that has never answered is reported without any
     *  value: that is no report to show. */
    void takeReport(const DataReport &report);

    bool hasReport() const { return m_hasReport; }
    const EventRecord &events() const { return m_events; }
    const TrendStore &trends() const { return m_trends; }

    bool isLost() const { return m_link.isLost(); }
    /** Since when the device does not answer; empty when that is not known. */
    QString lostSince() const;
    /** Says that the device does not answer; empty when it does. */
    QString lostText() const;

private:
    void keepTrends(const DataReport &report, const QVector<RecordedEvent> &appeared,
                    const QDateTime &now);

    const Family &m_family;
    const ClientNews *m_news = nullptr;
    LinkWatch m_link;
    EventRecord m_events;
    TrendStore m_trends;
    bool m_hasReport = false; // one with values
};
