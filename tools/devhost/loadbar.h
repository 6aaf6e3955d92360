#pragma once

#include <QStyledItemDelegate>

/** Paints a cell's PercentRole as a bar behind its text; over 100 % the bar is full. */
class LoadBar : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};
