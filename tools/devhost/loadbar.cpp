#include "loadbar.h"

#include "fleetmodel.h"

#include <QPainter>

namespace {

constexpr int margin = 6;
constexpr double fullLoad = 100;
constexpr QRgb barOnLight = 0xff9dacff;
constexpr QRgb barOnDark = 0xff33478f;
constexpr QRgb overOnLight = 0xffe6a8a3;
constexpr QRgb overOnDark = 0xff7d2f2a;

} // namespace

void LoadBar::paint(QPainter *painter, const QStyleOptionViewItem &option,
                    const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QVariant percent = index.data(FleetModel::PercentRole);
    const bool isSelected = option.state & QStyle::State_Selected;
    if (!percent.isValid() || isSelected) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    painter->save();
    if (cell.features & QStyleOptionViewItem::Alternate)
        painter->fillRect(cell.rect, cell.palette.alternateBase());
    const bool isOver = percent.toDouble() > fullLoad;
    const QRectF frame = QRectF(cell.rect).adjusted(margin, margin, -margin, -margin);
    QRectF bar = frame;
    bar.setWidth(frame.width() * qBound(0.0, percent.toDouble() / fullLoad, 1.0));
    painter->fillRect(bar,
                      isOver ? onGround(cell.palette, overOnLight, overOnDark)
                             : onGround(cell.palette, barOnLight, barOnDark));
    painter->setPen(cell.palette.color(QPalette::Mid));
    painter->drawRect(frame);
    painter->setFont(cell.font);
    painter->setPen(cell.palette.color(QPalette::Text));
    painter->drawText(frame.adjusted(0, 0, -margin, 0), int(cell.displayAlignment), cell.text);
    painter->restore();
}
