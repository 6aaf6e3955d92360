#include "pages/chipdelegate.h"

#include <QApplication>
#include <QPainter>

namespace {

constexpr int sideAir = 10;
constexpr int edgeAir = 3;
constexpr int radius = 4;

} // namespace

const QColor ChipDelegate::ground(0x0B, 0x0D, 0x1A);

void ChipDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QString text = cell.text;
    if (text.size() < 2) // no range, or "-" for none
        return QStyledItemDelegate::paint(painter, option, index);
    cell.text.clear();
    const QWidget *widget = option.widget;
    const QStyle *style = widget ? widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, widget);
    cell.font.setBold(true);
    const int width = QFontMetrics(cell.font).horizontalAdvance(text) + 2 * sideAir;
    QRect chip = cell.rect.adjusted(0, edgeAir, 0, -edgeAir);
    chip.setWidth(qMin(width, chip.width()));
    chip.moveCenter(cell.rect.center());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(ground);
    painter->drawRoundedRect(chip, radius, radius);
    painter->setPen(index.data(Qt::ForegroundRole).value<QBrush>().color());
    painter->setFont(cell.font);
    painter->drawText(cell.rect, Qt::AlignCenter, text);
    painter->restore();
}
