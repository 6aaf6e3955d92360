#include "pages/rowkeys.h"

#include <QKeyEvent>
#include <QTabBar>
#include <QTableWidget>
#include <QTabWidget>

namespace {

// Of the rows; 0 for a key that moves none.
int stepOf(int key, const QTableWidget &table)
{
    const int page = qMax(1, table.viewport()->height() / qMax(1, table.rowHeight(0)) - 1);
    switch (key) {
    case Qt::Key_Up:
        return -1;
    case Qt::Key_Down:
        return 1;
    case Qt::Key_PageUp:
        return -page;
    case Qt::Key_PageDown:
        return page;
    default:
        return 0;
    }
}

} // namespace

RowKeys::RowKeys(QTabWidget &tabs)
    : QObject(&tabs)
    , m_tabs(tabs)
{
    tabs.tabBar()->installEventFilter(this);
}

bool RowKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && m_tabs.isEnabled()
        && press(*static_cast<QKeyEvent *>(event)))
        return true;
    return QObject::eventFilter(watched, event);
}

bool RowKeys::press(const QKeyEvent &event)
{
    auto *table = qobject_cast<QTableWidget *>(m_tabs.currentWidget());
    if (!table || table->rowCount() == 0)
        return false;
    const int row = table->currentRow();
    const int key = event.key();
    if (const int step = stepOf(key, *table)) {
        table->setCurrentCell(qBound(0, row + step, table->rowCount() - 1), 1);
        return true;
    }
    const bool isEdit = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F2;
    if (isEdit && row >= 0)
        emit table->cellDoubleClicked(row, 1);
    return isEdit;
}
