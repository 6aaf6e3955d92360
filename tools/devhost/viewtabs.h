#pragma once

class QTabWidget;
class QWidget;

/** The outermost tab widget below a widget; null when there is none. */
QTabWidget *outermostTabs(QWidget &widget);
