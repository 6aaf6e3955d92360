#pragma once

#include <QAbstractButton>

/**
 * Makes a block of the diagram one that the keyboard reaches and that has a name.
 *
 * The block itself is the diagram's drawing, and the mouse is the diagram's, too: this draws
 * nothing but the focus.
 *
 * Threads: GUI thread only.
 */
class EnergyBlock : public QAbstractButton
{
    Q_OBJECT

public:
    EnergyBlock(const QString &name, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
};
