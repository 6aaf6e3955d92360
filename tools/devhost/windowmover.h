#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>

class QMouseEvent;
class QWidget;

/** Lets the user drag windows without a frame that carry the property "canMove". An event filter
 *  for the application; GUI thread only. */
class WindowMover : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void take(QWidget &window, const QMouseEvent &press);

    QPointer<QWidget> m_window; // dragged now
    QPoint m_grip;              // where it was taken, from its corner
};
