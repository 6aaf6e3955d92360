#pragma once

class QFont;
class QScrollArea;
class QStackedWidget;
class QTabWidget;
class QWidget;

/** Makes a page that scrolls when `contents` do not fit. */
QScrollArea *createScrollPage(const char *objectName, QWidget *contents, QWidget *parent);

/** Gives a scrolling page its contents, and the look of the others. */
void showInScrollArea(QScrollArea &page, QWidget *contents);

/** Makes a stack of pages that the host's style sheets find by its name. */
QStackedWidget *createStack(const char *objectName, QWidget *parent);

/** Gives the font of `top` to its widgets that have none of their own: those with a style sheet
 *  do not inherit it. */
void spreadFont(QWidget &top);

/** Has all widgets in `top` look at the palette again: they are told of a new one in any order, and below
 *  a style sheet once, so who was told before its parent keeps the old one. */
void spreadPalette(QWidget &top);

/** Keeps the titles of disabled tabs, greyed, where the style sheet around lets them vanish.
 *  @param font  the font the titles will have */
void keepDisabledTabs(QTabWidget &tabs, const QFont &font);
