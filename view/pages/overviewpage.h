#pragma once

#include "datareport.h"

#include <QWidget>

class Energyline;
class TrendPanel;
class TrendStore;

/**
 * The energy-flow diagram, and the trends beside it where there is room for both.
 *
 * The least size of the diagram is this page's business: who resizes the diagram by hand gets that
 * size.
 *
 * Threads: GUI thread only.
 */
class OverviewPage : public QWidget
{
    Q_OBJECT

public:
    explicit OverviewPage(const TrendStore &trends, QWidget *parent = nullptr);

    /** Shows no flow until the next report. */
    void clearFlows();

    void showReport(const DataReport &report);

    /** Shows the values as those of a device that does not answer.
     *  @param note  why; empty when it answers */
    void setLost(const QString &note);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    Energyline *m_diagram;
    TrendPanel *m_trends;
};
