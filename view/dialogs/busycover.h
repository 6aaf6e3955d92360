#pragma once

#include <QWidget>

class Upgrade;

/**
 * A busy indicator over the whole of a widget, whatever its size becomes.
 *
 * It lies beside that widget: a stack of pages would raise its new page above it.
 *
 * Threads:   GUI thread only.
 * Ownership: the parent's of the covered widget.
 */
class BusyCover : public QWidget
{
    Q_OBJECT

public:
    explicit BusyCover(QWidget *covered);

    /** Covers and disables `page` until `upgrade` has ended, then shows over it what went wrong. Both
     *  may be deleted meanwhile. */
    static void during(Upgrade &upgrade, QWidget &page);

protected:
    bool eventFilter(QObject *covered, QEvent *event) override;
};
