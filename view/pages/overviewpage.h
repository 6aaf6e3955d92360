#pragma once

#include <QWidget>

class Energyline;
class TrendPanel;

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
    /** Both become children of this page. */
    OverviewPage(Energyline *diagram, TrendPanel *trends, QWidget *parent = nullptr);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    Energyline *m_diagram;
    TrendPanel *m_trends;
};
