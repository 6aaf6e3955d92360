#include "whitetable.h"

#include "viewcolors.h"

#include <QHeaderView>

namespace {

constexpr int RowHeight = 28;

QTableWidgetItem *itemAt(QTableWidget &table, int row, int column)
{
    QTableWidgetItem *item = table.item(row, column);
    if (!item) {
        item = new QTableWidgetItem;
        table.setItem(row, column, item);
    }
    return item;
}

} // namespace

void styleAsWhiteTable(QTableWidget &table)
{
    table.setStyleSheet(
        QStringLiteral("alternate-background-color: #DDDFF5; background: #FFFFFF;"));
    table.setPalette(whitePalette(table.palette()));
    table.horizontalHeader()->setPalette(table.palette());
    table.setAlternatingRowColors(true);
    table.setShowGrid(false);
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setFocusPolicy(Qt::NoFocus);
    table.horizontalHeader()->setHighlightSections(false);
    table.verticalHeader()->setVisible(false);
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setDefaultSectionSize(RowHeight);
}

void writeCell(QTableWidget &table, int row, int column, const QString &text)
{
    QTableWidgetItem *item = itemAt(table, row, column);
    if (item->text() != text)
        item->setText(text);
}

void writeCentred(QTableWidget &table, int row, int column, const QString &text,
                  const QColor &color)
{
    QTableWidgetItem *item = itemAt(table, row, column);
    if (item->foreground().color() != color)
        item->setForeground(color);
    if (item->textAlignment() != Qt::AlignCenter)
        item->setTextAlignment(Qt::AlignCenter);
    writeCell(table, row, column, text);
}
