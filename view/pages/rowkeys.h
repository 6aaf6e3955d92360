#pragma once

#include <QObject>

class QKeyEvent;
class QTableWidget;
class QTabWidget;

/**
 * Chooses and edits a row of the current table with the keys of its tab bar: the tables take no focus.
 *
 * Threads:   GUI thread only.
 * Ownership: that of the tabs.
 */
class RowKeys : public QObject
{
    Q_OBJECT

public:
    /** @param tabs  filled with tables */
    explicit RowKeys(QTabWidget &tabs);

protected:
    /** Up, Down and the page keys move the row; Enter and F2 are a double click on it. */
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool press(const QKeyEvent &event);

    QTabWidget &m_tabs;
};
