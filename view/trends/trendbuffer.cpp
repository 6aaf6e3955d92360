#include "trends/trendbuffer.h"

#include <algorithm>

void TrendRange::unite(const TrendRange &other)
{
    if (!other.isKnown())
        return;
    *this =
        isKnown() ? TrendRange { std::min(least, other.least), std::max(most, other.most) } : other;
}

TrendBuffer::TrendBuffer(int trends, qint64 spanMs)
    : m_trends(trends)
    , m_stepMs(spanMs / stepCount)
    , m_ranges(static_cast<std::size_t>(trends * stepCount))
{
    m_events.fill(noEvent);
}

// Steps lie in a ring, each in the slot of its number.
std::size_t TrendBuffer::slot(int step) const
{
    const qint64 number = m_newest - (stepCount - 1) + step;
    return static_cast<std::size_t>((number % stepCount + stepCount) % stepCount);
}

const TrendRange &TrendBuffer::range(int trend, int step) const
{
    return m_ranges[static_cast<std::size_t>(trend) * stepCount + slot(step)];
}

TrendRange &TrendBuffer::rangeIn(int trend, std::size_t slot)
{
    return m_ranges[static_cast<std::size_t>(trend) * stepCount + slot];
}

void TrendBuffer::advanceTo(qint64 step, const TrendSample *held)
{
    // After a long pause all is forgotten, in as many turns as there are steps.
    m_newest = std::max(m_newest, step - stepCount);
    while (m_newest < step) {
        ++m_newest;
        const std::size_t newest = slot(stepCount - 1);
        for (int trend = 0; trend < m_trends; ++trend)
            rangeIn(trend, newest) = {};
        m_grounds[newest] = TrendGround::Unknown;
        m_events[newest] = noEvent;
        if (held)
            unite(*held);
    }
}

void TrendBuffer::unite(const TrendSample &sample)
{
    const std::size_t newest = slot(stepCount - 1);
    for (int trend = 0; trend < m_trends; ++trend)
        rangeIn(trend, newest).unite(sample.ranges[static_cast<std::size_t>(trend)]);
    m_grounds[newest] = std::max(m_grounds[newest], sample.ground);
}

void TrendBuffer::take(qint64 time, const TrendSample &sample, const TrendSample *held)
{
    advanceTo(time / m_stepMs, held);
    unite(sample);
}

void TrendBuffer::skipTo(qint64 time)
{
    advanceTo(time / m_stepMs, nullptr);
}
