#pragma once

#include <QObject>

class QTabWidget;
class QWheelEvent;

/**
 * Lets the user of disabled tables look at all of them: the wheel scrolls, the tabs change.
 *
 * Threads:   GUI thread only.
 * Ownership: that of the tabs.
 */
class LookOnly : public QObject
{
    Q_OBJECT

public:
    /** @param tabs  filled with tables */
    explicit LookOnly(QTabWidget &tabs);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void scroll(const QWheelEvent &event);

    QTabWidget &m_tabs;
    int m_turned = 0; // what the wheel was turned and is less than a row
};
