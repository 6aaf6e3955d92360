#pragma once

#include "trends/trendstore.h"

#include <QDateTime>
#include <QString>

/** What a panel of trends says in words: of the step under its cursor, or of the latest values. */
class TrendReading
{
public:
    static constexpr int noStep = -1;

    /** @param step    under the cursor, or noStep
     *  @param newest  the time of the newest step
     *  The store must outlive this. */
    TrendReading(const TrendStore &store, TrendSpan span, int step, const QDateTime &newest);

    int step() const { return m_step; }
    const Family &family() const { return m_store.family(); }

    /** The time of any step. */
    QString timeText(int step, const char *format) const;

    /** What began in the step; empty when nothing did. */
    QString eventText() const;

    /** One value with its unit, or the range that it went through. */
    QString valueText(int trend) const;

    /** The step's time, what began then, and each value. */
    QString text() const;

private:
    const TrendStore &m_store;
    TrendSpan m_span;
    int m_step;
    QDateTime m_newest;
};
