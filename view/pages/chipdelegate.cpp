#include "pages/chipdelegate.h"

#include <QApplication>
#include <QPainter>

namespace {

constexpr int sideAir = 6;
constexpr int edgeAir = 1; // above and below the text
constexpr int radius = 3;
constexpr int leastStretch = 50; // in percent; still readable

// The column's width is bound; a large font's value is to be read in whole.
QFont fitted(QFont font, const QString &text, int width)
{
    font.setBold(true);
    const int wanted = QFontMetrics(font).horizontalAdvance(text);
    if (wanted > width)
        font.setStretch(qMax(leastStretch, QFont::Unstretched * width / wanted));
    return font;
}

} // namespace

// No lighter one lets red be read at 4.5:1; the hue is that of the view's text.
const QColor ChipDelegate::ground(0x11, 0x14, 0x2B);

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
    cell.font = fitted(cell.font, text, cell.rect.width() - 2 * sideAir);
    const QFontMetrics metrics(cell.font);
    const QSize wanted(metrics.horizontalAdvance(text) + 2 * sideAir,
                       metrics.height() + 2 * edgeAir);
    QRect chip(QPoint(), wanted.boundedTo(cell.rect.size()));
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
