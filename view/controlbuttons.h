#pragma once

#include "controltables.h"

#include <QGridLayout>
#include <QList>

class QPushButton;

/**
 * Fills `grid` with a page's groups of buttons, a row for each group, all of one width. What moves
 * or drops the load stands apart at the end of its row.
 *
 * @param clicked  the slot of `receiver`, as SLOT() writes it, that every button's click goes to
 * @return the number of grid rows used
 */
int addControlButtons(QGridLayout &grid, ControlPage page, QObject *receiver, const char *clicked);
