#include "diagram/energyblock.h"

#include <QKeyEvent>
#include <QPainter>

EnergyBlock::EnergyBlock(const QString &name, QWidget *parent)
    : QAbstractButton(parent)
{
    setAccessibleName(name);
    setAccessibleDescription(tr("Shows or hides the values"));
    setToolTip(tr("%1: click to show or hide the values").arg(name));
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
}

void EnergyBlock::paintEvent(QPaintEvent *)
{
    if (!hasFocus())
        return;
    // Both a light and a dark line: seen on either filling of the block.
    QPainter painter(this);
    painter.setPen(QPen(Qt::white, 2));
    painter.drawRect(rect().adjusted(3, 3, -3, -3));
    painter.setPen(QPen(Qt::black, 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void EnergyBlock::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && !event->isAutoRepeat())
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void EnergyBlock::mousePressEvent(QMouseEvent *event)
{
    event->ignore();
}

void EnergyBlock::mouseReleaseEvent(QMouseEvent *event)
{
    event->ignore();
}
