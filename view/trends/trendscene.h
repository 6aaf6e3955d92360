#pragma once

#include "trends/trendstore.h"

#include <QPolygonF>
#include <QRectF>
#include <QVector>

/** The lowest and the highest value of a plot. */
struct TrendAxis
{
    double least;
    double most;
    bool isKnown = true; ///< else there is nothing yet to measure by
};

/** A mark at the time of an event. */
struct TrendTick
{
    double x; ///< from the left of a plot
    EventSeverity severity;
};

/** A stretch of time on one ground, from and to so far right of a plot's left edge. */
struct TrendStretch
{
    double left;
    double right;
    TrendGround ground;
};

/** One value's course. */
struct TrendPlot
{
    QRectF heading; ///< title and value
    QRectF frame;
    TrendAxis axis;
    QVector<QPolygonF> runs; ///< the courses between gaps, each as a closed shape
    QVector<QRectF> outside; ///< where the settings give an alarm
};

/** The plots as shapes: what is to be painted, and where. */
struct TrendScene
{
    QVector<TrendPlot> plots; ///< all of one size, by the family's rows
    QVector<TrendStretch> stretches;
    QVector<TrendTick> ticks;
    QRectF timeLine(int plot) const; ///< room for the times below a plot
    int timeLineHeight = 0;
    bool isRow = false; ///< side by side, each with its times; else one above the other
};

/** The room that a trend's plot takes at least. */
constexpr int leastPlotWidth = 150;
constexpr int leastPlotHeight = 44;

/** The height that `count` plots want in a width: one row where they fit beside each other.
 *  @param textHeight  of a line of text */
int trendHeight(int count, int width, int textHeight);

/** Lays the plots out in `area`. */
TrendScene trendScene(const TrendStore &store, TrendSpan span, const QRectF &area, int textHeight);

/** The axis of a trend: all its values, its limits and what its row asks for, with some air. */
TrendAxis trendAxis(const TrendRow &row, const TrendBuffer &buffer, int trend,
                    const TrendRange &limits);

/** The step under a point; none outside of the plots. */
int stepAt(const TrendScene &scene, const QPointF &point);

/** Where a step stands, from the left of a plot. */
double stepLeft(const TrendScene &scene, int step);
