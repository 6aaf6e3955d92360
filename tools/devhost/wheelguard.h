#pragma once

#include <QObject>

/** Keeps the wheel from changing a closed choice or a number that the pointer passes while a page
 *  is scrolled. An event filter for the application; GUI thread only. */
class WheelGuard : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override;
};
