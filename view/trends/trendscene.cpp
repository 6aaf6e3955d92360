#include "trends/trendscene.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int gap = 16;         // between plots that stand beside each other
constexpr int lineGap = 4;      // between plots that stand above each other
constexpr double air = 0.05;    // of the axis, above and below what it must hold
constexpr double inset = 4;     // of the axis in its frame: a value at its end is seen
constexpr double topInset = 12; // ... and not covered by the events' marks
constexpr int steps = TrendBuffer::stepCount;

bool fitsInRow(int count, double width)
{
    return count * leastPlotWidth + (count - 1) * gap <= width;
}

QVector<TrendPlot> places(int count, const QRectF &area, int textHeight, bool isRow)
{
    QVector<TrendPlot> plots;
    const double width = isRow ? (area.width() - (count - 1) * gap) / count : area.width();
    const double height = isRow ? area.height() - textHeight
                                : (area.height() - textHeight - (count - 1) * lineGap) / count;
    for (int i = 0; i < count; ++i) {
        const QPointF corner(area.left() + (isRow ? i * (width + gap) : 0),
                             area.top() + (isRow ? 0 : i * (height + lineGap)));
        TrendPlot plot;
        plot.heading = QRectF(corner, QSizeF(width, textHeight));
        plot.frame = QRectF(corner, QSizeF(width, height)).adjusted(0, textHeight, 0, 0);
        plots.append(plot);
    }
    return plots;
}

double yOf(const TrendPlot &plot, double value)
{
    const double share = (value - plot.axis.least) / (plot.axis.most - plot.axis.least);
    return plot.frame.bottom() - inset
        - (plot.frame.height() - topInset - inset) * std::clamp(share, 0.0, 1.0);
}

// From the first to before the last step: along the greatest values, and back along the least.
QPolygonF runShape(const TrendPlot &plot, const TrendBuffer &buffer, int trend, int first, int last)
{
    const double stepWidth = plot.frame.width() / steps;
    QPolygonF shape;
    for (int step = first; step < last; ++step)
        shape << QPointF(plot.frame.left() + (step + 0.5) * stepWidth,
                         yOf(plot, double(buffer.range(trend, step).most)));
    for (int step = last - 1; step >= first; --step)
        shape << QPointF(plot.frame.left() + (step + 0.5) * stepWidth,
                         yOf(plot, double(buffer.range(trend, step).least)));
    return shape;
}

QVector<QPolygonF> runShapes(const TrendPlot &plot, const TrendBuffer &buffer, int trend)
{
    QVector<QPolygonF> runs;
    for (int step = 0; step < steps; ++step) {
        const int first = step;
        while (step < steps && buffer.range(trend, step).isKnown())
            ++step;
        if (step > first)
            runs.append(runShape(plot, buffer, trend, first, step));
    }
    return runs;
}

QVector<QRectF> outsideOf(const TrendPlot &plot, const TrendRange &limits)
{
    QVector<QRectF> outside;
    if (std::isfinite(limits.most))
        outside.append(QRectF(plot.frame.topLeft(),
                              QPointF(plot.frame.right(), yOf(plot, double(limits.most)))));
    if (std::isfinite(limits.least))
        outside.append(QRectF(QPointF(plot.frame.left(), yOf(plot, double(limits.least))),
                              plot.frame.bottomRight()));
    return outside;
}

QVector<TrendStretch> stretchesOf(const TrendBuffer &buffer, double width)
{
    QVector<TrendStretch> stretches;
    for (int step = 0; step < steps; ++step) {
        const TrendGround ground = buffer.ground(step);
        const double right = width * (step + 1) / steps;
        if (!stretches.isEmpty() && stretches.last().ground == ground)
            stretches.last().right = right;
        else
            stretches.append({ width * step / steps, right, ground });
    }
    return stretches;
}

QVector<TrendTick> ticksOf(const TrendStore &store, const TrendBuffer &buffer, double width)
{
    QVector<TrendTick> ticks;
    for (int step = 0; step < steps; ++step) {
        const int event = buffer.event(step);
        if (event != TrendBuffer::noEvent)
            ticks.append({ width * (step + 0.5) / steps, store.family().events[event].severity });
    }
    return ticks;
}

} // namespace

QRectF TrendScene::timeLine(int plot) const
{
    const QRectF &frame = plots.at(plot).frame;
    return { frame.left(), frame.bottom(), frame.width(), double(timeLineHeight) };
}

int trendHeight(int count, int width, int textHeight)
{
    if (fitsInRow(count, width))
        return 2 * textHeight + 2 * leastPlotHeight;
    return count * (textHeight + leastPlotHeight + lineGap) - lineGap + textHeight;
}

TrendAxis trendAxis(const TrendRow &row, const TrendBuffer &buffer, int trend,
                    const TrendRange &limits)
{
    TrendRange whole;
    for (int step = 0; step < steps; ++step)
        whole.unite(buffer.range(trend, step));
    const bool isFitted = row.least >= row.most;
    if (!isFitted)
        whole.unite({ float(row.least), float(row.most) });
    for (const float limit : { limits.least, limits.most }) {
        if (std::isfinite(limit))
            whole.unite({ limit, limit });
    }
    if (!whole.isKnown())
        return { 0, 1, false };
    // A value that hardly moves is no mountain range.
    const double least = double(whole.least);
    const double most = double(whole.most);
    const double span = std::max({ most - least, 0.05 * std::abs(most), 1.0 });
    const double middle = (least + most) / 2;
    const double half = span / 2 * (1 + (isFitted ? 2 * air : 0));
    return { least >= 0 ? std::max(0.0, middle - half) : middle - half, middle + half };
}

TrendScene trendScene(const TrendStore &store, TrendSpan span, const QRectF &area, int textHeight)
{
    const Rows<TrendRow> rows = store.family().trends;
    const TrendBuffer &buffer = store.buffer(span);
    TrendScene scene;
    scene.isRow = fitsInRow(rows.size(), area.width());
    scene.timeLineHeight = textHeight;
    scene.plots = places(rows.size(), area, textHeight, scene.isRow);
    int i = 0;
    for (TrendPlot &plot : scene.plots) { // as many as the rows
        plot.axis = trendAxis(rows[i], buffer, i, store.limits(i));
        plot.runs = runShapes(plot, buffer, i);
        plot.outside = outsideOf(plot, store.limits(i));
        ++i;
    }
    if (scene.plots.isEmpty())
        return scene;
    scene.stretches = stretchesOf(buffer, scene.plots.first().frame.width());
    scene.ticks = ticksOf(store, buffer, scene.plots.first().frame.width());
    return scene;
}

int stepAt(const TrendScene &scene, const QPointF &point)
{
    for (const TrendPlot &plot : scene.plots) {
        const QRectF reach = plot.frame.united(plot.heading);
        if (!reach.contains(point))
            continue;
        const double share = (point.x() - plot.frame.left()) / plot.frame.width();
        return std::clamp(static_cast<int>(share * steps), 0, steps - 1);
    }
    return -1;
}

double stepLeft(const TrendScene &scene, int step)
{
    return scene.plots.first().frame.width() * (step + 0.5) / steps;
}
