#pragma once

#include "eventrow.h"

#include <QColor>
#include <QPixmap>

class QPainter;
class QRectF;

/** The colour of a severity; never the only sign of it. */
QColor severityColor(EventSeverity severity);

/** Draws a severity's mark: a square, a triangle or a disc, told apart in grey, too. */
void drawSeverityMark(QPainter &painter, const QRectF &place, EventSeverity severity);

/** The mark as a picture.
 *  @param size  of its sides, in points */
QPixmap severityPixmap(EventSeverity severity, int size, qreal pixelRatio);

/** What a severity is called. */
QString severityText(EventSeverity severity);
