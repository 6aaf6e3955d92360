#include "style/whitetable.h"

#include "style/viewcolors.h"

#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr int rowHeight = 28; // at least
constexpr int rowMargin = 6;

// The table's style sheet reaches its scroll bars too and would leave them bare.
const char *const scrollBarStyle =
    "QScrollBar { background: #F5F6FB; width: 12px; height: 12px; margin: 0; }"
    "QScrollBar::handle { background: #B4B9DA; border-radius: 4px; margin: 2px; }"
    "QScrollBar::handle:hover { background: #8F96C4; }"
    "QScrollBar::handle:vertical { min-height: 32px; }"
    "QScrollBar::handle:horizontal { min-width: 32px; }"
    "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
    "QScrollBar::add-page, QScrollBar::sub-page { background: none; }";

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
    table.verticalScrollBar()->setStyleSheet(QString::fromLatin1(scrollBarStyle));
    table.horizontalScrollBar()->setStyleSheet(QString::fromLatin1(scrollBarStyle));
    table.setPalette(whitePalette(table.palette()));
    for (int column = 0; column < table.columnCount(); ++column)
        table.horizontalHeaderItem(column)->setForeground(ViewColors::text);
    table.setAlternatingRowColors(true);
    table.setShowGrid(false);
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setFocusPolicy(Qt::NoFocus);
    table.horizontalHeader()->setHighlightSections(false);
    table.verticalHeader()->setVisible(false);
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setDefaultSectionSize(
        std::max(rowHeight, table.fontMetrics().height() + rowMargin));
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
    if (item->text() == text)
        return; // and has its look, unless it is empty
    if (item->foreground().color() != color)
        item->setForeground(color);
    if (item->textAlignment() != Qt::AlignCenter)
        item->setTextAlignment(Qt::AlignCenter);
    item->setText(text);
}
