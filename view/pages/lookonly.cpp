#include "pages/lookonly.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>

LookOnly::LookOnly(QTabWidget &tabs)
    : QObject(&tabs)
    , m_tabs(tabs)
{
    tabs.tabBar()->installEventFilter(this);
    for (int i = 0; i < tabs.count(); ++i)
        qobject_cast<QAbstractItemView *>(tabs.widget(i))->viewport()->installEventFilter(this);
}

bool LookOnly::eventFilter(QObject *watched, QEvent *event)
{
    const bool isPress = event->type() == QEvent::MouseButtonPress;
    const bool isWheel = event->type() == QEvent::Wheel;
    if (m_tabs.isEnabled() || (!isPress && !isWheel))
        return QObject::eventFilter(watched, event);
    if (isWheel && watched != m_tabs.tabBar())
        scroll(*static_cast<QWheelEvent *>(event));
    else if (isPress && watched == m_tabs.tabBar())
        m_tabs.setCurrentIndex(m_tabs.tabBar()->tabAt(static_cast<QMouseEvent *>(event)->pos()));
    return true;
}

void LookOnly::scroll(const QWheelEvent &event)
{
    const int row =
        QWheelEvent::DefaultDeltasPerStep / qBound(1, QApplication::wheelScrollLines(), 8);
    auto *table = qobject_cast<QAbstractItemView *>(m_tabs.currentWidget());
    m_turned += event.angleDelta().y();
    table->verticalScrollBar()->setValue(table->verticalScrollBar()->value() - m_turned / row);
    m_turned %= row;
}
