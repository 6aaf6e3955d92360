#include "windowmover.h"

#include <QMouseEvent>
#include <QWidget>

bool WindowMover::eventFilter(QObject *watched, QEvent *event)
{
    auto *window = qobject_cast<QWidget *>(watched);
    if (!window || !window->isWindow() || !window->property("canMove").toBool())
        return QObject::eventFilter(watched, event);
    const auto *mouse = static_cast<QMouseEvent *>(event);
    if (event->type() == QEvent::MouseButtonPress && mouse->button() == Qt::LeftButton) {
        m_window = window;
        m_grip = mouse->globalPos() - window->pos();
    } else if (event->type() == QEvent::MouseMove && m_window == window) {
        window->move(mouse->globalPos() - m_grip);
    } else if (event->type() == QEvent::MouseButtonRelease) {
        m_window.clear();
    }
    // The window may have handlers of its own.
    return QObject::eventFilter(watched, event);
}
