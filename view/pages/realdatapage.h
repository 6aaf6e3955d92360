#pragma once

#include "datareport.h"

#include <QList>
#include <QWidget>

class TrendPanel;
class ValuePanel;

/**
 * The cards of the real-time values, three in a row, and the trends below.
 *
 * Threads: GUI thread only.
 */
class RealDataPage : public QWidget
{
    Q_OBJECT

public:
    explicit RealDataPage(QWidget *parent = nullptr);

    /** Adds a card behind the others, which becomes a child of this page. */
    void addPanel(ValuePanel *panel);

    /** Adds the trends below all cards; they become a child of this page. */
    void addTrends(TrendPanel *trends);

    void showReport(const DataReport &report);
    void setStale(bool stale);

private:
    QList<ValuePanel *> m_panels;
};
