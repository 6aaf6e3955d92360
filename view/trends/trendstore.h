#pragma once

#include "datareport.h"
#include "family.h"
#include "trends/trendbuffer.h"

/** The stretches of time that trends are shown for. */
enum class TrendSpan { TenMinutes, Hour, Day };

constexpr int trendSpanCount = 3;

/** How long a stretch is, in ms. */
qint64 trendSpanMs(TrendSpan span);

/**
 * The courses of a device's most telling values, kept from one report to the next.
 *
 * It takes a fixed share of memory, less than 64 KiB, and works on reports only: no timer runs.
 * Times are in ms of a clock that never jumps.
 */
class TrendStore
{
public:
    explicit TrendStore(const Family &family);

    /** Takes a report. What it says holds until the next one, if that comes soon. */
    void take(const DataReport &report, qint64 now);

    /** Nothing is known of the device from now on, until take(). */
    void loseSight(qint64 now);

    /** Notes that an event began. Of several in one step the worst stays. */
    void mark(int event);

    const Family &family() const { return m_family; }
    const TrendBuffer &buffer(TrendSpan span) const;

    /** What the latest report says; null while the device is out of sight. */
    const TrendSample *latest() const { return m_isInSight ? &m_latest : nullptr; }

    /** The values between which a trend gives no alarm, by the settings; open where they are not
     *  known. */
    TrendRange limits(int trend) const { return m_limits[static_cast<std::size_t>(trend)]; }

private:
    TrendSample sampleOf(const DataReport &report) const;
    void readLimits(const DataReport &report);

    const Family &m_family;
    std::array<TrendBuffer, trendSpanCount> m_buffers;
    std::array<TrendRange, maxTrends> m_limits;
    TrendSample m_latest;
    qint64 m_latestTime = 0;
    bool m_isInSight = false;
};
