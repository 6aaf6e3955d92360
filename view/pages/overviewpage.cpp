#include "pages/overviewpage.h"

#include "diagram/energyline.h"
#include "trends/trendpanel.h"

#include <algorithm>

namespace {

constexpr int gap = 16;
constexpr int leastTrends = 300; // in width, or there are none
constexpr int mostTrends = 700;  // the rest is the diagram's

} // namespace

OverviewPage::OverviewPage(const TrendStore &trends, QWidget *parent)
    : QWidget(parent)
    , m_diagram(new Energyline(this))
    , m_trends(new TrendPanel(trends, this))
{
    m_trends->hide();
    setMinimumSize(leastEnergySize);
}

void OverviewPage::clearFlows()
{
    m_diagram->set_all_off_Flow();
}

void OverviewPage::showReport(const DataReport &report)
{
    m_diagram->flushData(report);
    m_trends->refresh();
}

void OverviewPage::setLost(const QString &note)
{
    m_diagram->setStale(!note.isEmpty(), note);
}

// No layout: one would give the diagram its size back whenever anything else changes.
void OverviewPage::resizeEvent(QResizeEvent *)
{
    // The diagram first takes what its larger texts need.
    const int least = leastEnergySize.width();
    const int wanted = height() >= largeEnergySize.height() ? largeEnergySize.width() : least;
    const int besides = width() - gap - leastTrends;
    const int trendsWidth = std::clamp(width() - gap - wanted, leastTrends, mostTrends);
    const bool hasRoom =
        besides >= least && height() >= m_trends->heightForWidth(std::min(trendsWidth, besides));
    const int diagramWidth = hasRoom ? width() - gap - trendsWidth : width();
    m_diagram->setGeometry(0, 0, diagramWidth, height());
    m_trends->setGeometry(diagramWidth + gap, 0, trendsWidth, height());
    m_trends->setVisible(hasRoom);
}
