#include "windowmover.h"

#include <QMouseEvent>
#include <QWidget>

bool WindowMover::eventFilter(QObject *watched, QEvent *event)
{
    auto *window = qobject_cast<QWidget *>(watched);
    if (!window || !window->isWindow() || !window->property("canMove").toBool())
        return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        take(*window, *static_cast<QMouseEvent *>(event));
        break;
    case QEvent::MouseMove:
        if (m_window == window)
            window->move(static_cast<QMouseEvent *>(event)->globalPos() - m_grip);
        break;
    case QEvent::MouseButtonRelease:
        m_window.clear();
        break;
    default:
        break;
    }
    // The window may have handlers of its own.
    return QObject::eventFilter(watched, event);
}

void WindowMover::take(QWidget &window, const QMouseEvent &press)
{
    if (press.button() != Qt::LeftButton)
        return;
    m_window = &window;
    m_grip = press.globalPos() - window.pos();
}
