#pragma once

#include <QTableWidget>

/** How the view's tables look: white and light blue rows, dark text whatever the desktop's
 *  colours, whole rows selected one at a time. The header must have its labels. */
void styleAsWhiteTable(QTableWidget &table);

/** Writes a cell, and only what differs. Makes the item when there is none. */
void writeCell(QTableWidget &table, int row, int column, const QString &text);

/** The same with a colour and centred text. */
void writeCentred(QTableWidget &table, int row, int column, const QString &text,
                  const QColor &color);
