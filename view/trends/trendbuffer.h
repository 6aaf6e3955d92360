#pragma once

#include "trendrow.h"

#include <array>
#include <limits>
#include <vector>

/** The least and the greatest value of a stretch of time; NaN when none is known. */
struct TrendRange
{
    float least = std::numeric_limits<float>::quiet_NaN();
    float most = std::numeric_limits<float>::quiet_NaN();

    bool isKnown() const { return least <= most; }

    /** Widens this range so that it holds `other`, too. */
    void unite(const TrendRange &other);
};

/** What the load was fed from. */
enum class TrendGround : quint8 { Unknown, Mains, Battery };

/** What one report says. */
struct TrendSample
{
    std::array<TrendRange, maxTrends> ranges;
    TrendGround ground = TrendGround::Unknown;
};

/**
 * The course of some values over the last minutes or hours, in steps of equal length.
 *
 * Its size is fixed: a step keeps no more than the least and the greatest of its values. Times are
 * those of a clock that never jumps.
 */
class TrendBuffer
{
public:
    static constexpr int stepCount = 300;
    static constexpr int noEvent = -1;

    /** @param spanMs  what the steps cover together, in ms */
    TrendBuffer(int trends, qint64 spanMs);

    /** Takes what is known at `time`, in ms.
     *  @param held  what was known until then; null when nothing was */
    void take(qint64 time, const TrendSample &sample, const TrendSample *held);

    /** Nothing is known up to `time`. */
    void skipTo(qint64 time);

    /** Notes an event in the newest step. */
    void mark(int event) { m_events[slot(stepCount - 1)] = static_cast<qint16>(event); }

    qint64 stepMs() const { return m_stepMs; }

    // Of a step, 0 the oldest.
    const TrendRange &range(int trend, int step) const;
    TrendGround ground(int step) const { return m_grounds[slot(step)]; }
    int event(int step) const { return m_events[slot(step)]; }

private:
    std::size_t slot(int step) const;
    TrendRange &rangeIn(int trend, std::size_t slot);
    void advanceTo(qint64 step, const TrendSample *held);
    void unite(const TrendSample &sample);

    int m_trends;
    qint64 m_stepMs;
    qint64 m_newest = -stepCount; // number of the newest step; the first one of all is 0
    std::vector<TrendRange> m_ranges;
    std::array<TrendGround, stepCount> m_grounds {};
    std::array<qint16, stepCount> m_events {};
};
