#include "style/severitymark.h"

#include "style/viewcolors.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPolygonF>

QColor severityColor(EventSeverity severity)
{
    switch (severity) {
    case EventSeverity::Critical:
        return ViewColors::alarm;
    case EventSeverity::Warning:
        return ViewColors::attention;
    case EventSeverity::Information:
        break;
    }
    return ViewColors::secondaryText;
}

void drawSeverityMark(QPainter &painter, const QRectF &place, EventSeverity severity)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(severityColor(severity));
    switch (severity) {
    case EventSeverity::Critical:
        painter.drawRect(place);
        break;
    case EventSeverity::Warning:
        painter.drawPolygon(QPolygonF(
            { { place.center().x(), place.top() }, place.bottomRight(), place.bottomLeft() }));
        break;
    case EventSeverity::Information:
        painter.drawEllipse(place);
        break;
    }
    painter.restore();
}

QPixmap severityPixmap(EventSeverity severity, int size, qreal pixelRatio)
{
    QPixmap pixmap(QSize(size, size) * pixelRatio);
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    drawSeverityMark(painter, QRectF(1, 1, size - 2, size - 2), severity);
    return pixmap;
}

QString severityText(EventSeverity severity)
{
    switch (severity) {
    case EventSeverity::Critical:
        return QCoreApplication::translate("EventSeverity", "Critical");
    case EventSeverity::Warning:
        return QCoreApplication::translate("EventSeverity", "Warning");
    case EventSeverity::Information:
        break;
    }
    return QCoreApplication::translate("EventSeverity", "Information");
}
