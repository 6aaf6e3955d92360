#pragma once

#include "trends/trendscene.h"

#include <QFont>
#include <QFontMetrics>

class QPainter;
class TrendReading;

/**
 * Draws the scene of a panel of trends and what is said beside it.
 *
 * For one painting: all that it is given must outlive it.
 */
class TrendPainter
{
public:
    /** @param font  of the panel */
    TrendPainter(QPainter &painter, const TrendScene &scene, const TrendReading &reading,
                 const QFont &font);

    void drawCard(const QRectF &area, bool hasFocus);

    /** The title, and below it what is under the cursor, or else what the colours mean. */
    void drawHead(const QRect &title, const QRectF &note);

    void drawPlots();

private:
    void drawLegend(const QRectF &note);
    void drawGround(const QRectF &frame);
    void drawPlot(const TrendPlot &plot);
    void drawHeading(int trend);
    void drawTexts(int trend);

    QPainter &m_painter;
    const TrendScene &m_scene;
    const TrendReading &m_reading;
    const QFont m_font;
    const QFontMetrics m_metrics;
};
