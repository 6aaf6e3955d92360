#include "devicestate.h"

#include "hostdevice.h"

#include <QPainter>

#include <iterator>

namespace {

constexpr int Size = 14;    // logical pixels
constexpr double Scale = 3; // sharp up to a scale factor of 3

struct LevelRow
{
    QRgb color;
    const char *text;
};

// clang-format off
constexpr LevelRow levelRows[] = {
    { 0xff5b6285, QT_TRANSLATE_NOOP("DeviceState", "connecting") },
    { 0xff1e7f3c, QT_TRANSLATE_NOOP("DeviceState", "communicating") },
    { 0xff9a6200, QT_TRANSLATE_NOOP("DeviceState", "communicating, events present") },
    { 0xffb3261e, QT_TRANSLATE_NOOP("DeviceState", "communication lost") },
};
// clang-format on
static_assert(std::size(levelRows) == DeviceState::Lost + 1);

} // namespace

DeviceState::Level DeviceState::of(const HostDevice &device)
{
    if (device.state() != 0)
        return device.state() == 1 ? Lost : Unknown;
    return device.activeAlarms() > 0 ? Attention : Normal;
}

QIcon DeviceState::icon(Level level)
{
    QPixmap pixmap(int(Size * Scale), int(Size * Scale));
    pixmap.setDevicePixelRatio(Scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = QColor::fromRgb(levelRows[level].color);
    const QRectF box(2, 2, Size - 4, Size - 4);
    // A light rim keeps the shape visible on a dark desktop.
    painter.setPen(QPen(level == Unknown ? color : QColor(255, 255, 255, 160), 1.5));
    painter.setBrush(level == Unknown ? QBrush(Qt::NoBrush) : QBrush(color));
    if (level == Attention)
        painter.drawPolygon(
            QPolygonF { { QPointF(Size / 2.0, 1.5), box.bottomRight(), box.bottomLeft() } });
    else if (level == Lost)
        painter.drawRect(box);
    else
        painter.drawEllipse(box);
    return pixmap;
}

QString DeviceState::text(Level level)
{
    return tr(levelRows[level].text);
}
