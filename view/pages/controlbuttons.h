#pragma once

#include "controlrow.h"
#include "rows.h"

#include <QGridLayout>

/**
 * Fills `grid` with a page's groups of buttons, a row for each group, all of one width. What moves
 * or drops the load stands apart at the end of its row.
 *
 * @param commands  in the order of the buttons, those of a group side by side
 * @param clicked  the slot of `receiver`, as SLOT() writes it, that every button's click goes to
 * @return the number of grid rows used
 */
int addControlButtons(QGridLayout &grid, Rows<CommandRow> commands, ButtonPage page,
                      QObject *receiver, const char *clicked);

/** Enables the buttons of `page`, or disables those that need the link to the device. */
void setLinked(QWidget &page, Rows<CommandRow> commands, bool isLinked);
