#pragma once

#include <QStyledItemDelegate>

/**
 * Draws cells whose bound colour is too weak for the table's light rows on dark chips, which it can
 * be read on.
 *
 * Threads: GUI thread only.
 */
class ChipDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static const QColor ground;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};
