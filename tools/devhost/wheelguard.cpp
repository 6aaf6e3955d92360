#include "wheelguard.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>

bool WheelGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel)
        return false;
    // The list of an open box is a window of its own and scrolls.
    if (!qobject_cast<QComboBox *>(watched) && !qobject_cast<QAbstractSpinBox *>(watched))
        return false;
    event->ignore(); // for the page behind
    return true;
}
