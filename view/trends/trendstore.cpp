#include "trends/trendstore.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr qint64 minuteMs = 60 * 1000;
constexpr qint64 spans[trendSpanCount] = { 10 * minuteMs, 60 * minuteMs, 24 * 60 * minuteMs };
constexpr qint64 holdMs = minuteMs; // a machine that slept, or a host that paused, knows nothing

constexpr std::size_t memory =
    sizeof(TrendStore) + sizeof(TrendRange) * maxTrends * TrendBuffer::stepCount * trendSpanCount;
static_assert(memory < 64 * 1024);

TrendRange rangeOf(const TrendRow &row, const DataReport &report)
{
    TrendRange range;
    const int count = hasThreePhases(report, row.phaseId) ? 3 : 1;
    for (int id = row.dataId; id < row.dataId + count; ++id) {
        const auto point = report.constFind(id);
        const float value = point != report.constEnd() ? point->toFloat() : NAN;
        if (std::isfinite(value))
            range.unite({ value, value });
    }
    return range;
}

// A battery that is tested carries the load, too.
TrendGround groundOf(const StateTables &states, const DataReport &report)
{
    if (!report.contains(states.modeId))
        return TrendGround::Unknown;
    const int mode = integerAt(report, states.modeId);
    const bool isOnBattery =
        std::any_of(states.modes.begin(), states.modes.end(), [mode](const StateRow &row) {
            return row.value == mode
                && (row.state == DeviceState::OnBattery || row.state == DeviceState::Testing);
        });
    return isOnBattery ? TrendGround::Battery : TrendGround::Mains;
}

} // namespace

qint64 trendSpanMs(TrendSpan span)
{
    return spans[static_cast<int>(span)];
}

TrendStore::TrendStore(const Family &family)
    : m_family(family)
    , m_buffers { { { family.trends.size(), spans[0] },
                    { family.trends.size(), spans[1] },
                    { family.trends.size(), spans[2] } } }
{
}

const TrendBuffer &TrendStore::buffer(TrendSpan span) const
{
    return m_buffers[static_cast<std::size_t>(span)];
}

TrendSample TrendStore::sampleOf(const DataReport &report) const
{
    TrendSample sample;
    for (int i = 0; i < m_family.trends.size(); ++i)
        sample.ranges[static_cast<std::size_t>(i)] = rangeOf(m_family.trends[i], report);
    sample.ground = groundOf(m_family.states, report);
    return sample;
}

// A limit of 0 is one that the device has not delivered.
void TrendStore::readLimits(const DataReport &report)
{
    for (int i = 0; i < m_family.trends.size(); ++i) {
        const TrendRow &row = m_family.trends[i];
        const float low = row.lowLimitId != 0 ? numberAt(report, row.lowLimitId) : 0;
        const float high = row.highLimitId != 0 ? numberAt(report, row.highLimitId) : 0;
        TrendRange &limits = m_limits[static_cast<std::size_t>(i)];
        limits.least = low > 0 ? low : -std::numeric_limits<float>::infinity();
        limits.most = high > 0 ? high : std::numeric_limits<float>::infinity();
    }
}

void TrendStore::take(const DataReport &report, qint64 now)
{
    const TrendSample sample = sampleOf(report);
    const bool isHeld = m_isInSight && now - m_latestTime <= holdMs;
    for (TrendBuffer &buffer : m_buffers)
        buffer.take(now, sample, isHeld ? &m_latest : nullptr);
    readLimits(report);
    m_latest = sample;
    m_latestTime = now;
    m_isInSight = true;
}

void TrendStore::loseSight(qint64 now)
{
    m_isInSight = false;
    for (TrendBuffer &buffer : m_buffers)
        buffer.skipTo(now);
}

void TrendStore::mark(int event)
{
    for (TrendBuffer &buffer : m_buffers) {
        const int marked = buffer.event(TrendBuffer::stepCount - 1);
        const bool isWorse = marked == TrendBuffer::noEvent
            || m_family.events[event].severity > m_family.events[marked].severity;
        if (isWorse)
            buffer.mark(event);
    }
}
