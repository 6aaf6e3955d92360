#include "pages/realdatapage.h"

#include "pages/valuepanel.h"
#include "trends/trendpanel.h"

#include <QGridLayout>

namespace {

constexpr int gap = 16; // between cards
constexpr int columns = 3;

} // namespace

RealDataPage::RealDataPage(QWidget *parent)
    : QWidget(parent)
{
    auto *grid = new QGridLayout(this);
    grid->setSpacing(gap);
    for (int column = 0; column < columns; ++column)
        grid->setColumnStretch(column, 1);
    // What cards of their greatest width leave is at the right of them.
    grid->addItem(new QSpacerItem(0, 0, QSizePolicy::Expanding), 0, columns);
}

void RealDataPage::addPanel(ValuePanel *panel)
{
    auto *grid = static_cast<QGridLayout *>(layout());
    const int row = m_panels.size() / columns;
    grid->addWidget(panel, row, m_panels.size() % columns);
    m_panels.append(panel);
}

void RealDataPage::addTrends(TrendPanel *trends)
{
    auto *grid = static_cast<QGridLayout *>(layout());
    const int row = grid->rowCount();
    grid->addWidget(trends, row, 0, 1, -1);
    grid->setRowStretch(row, 1); // what is left below the cards
}

void RealDataPage::showReport(const DataReport &report)
{
    for (ValuePanel *panel : qAsConst(m_panels))
        panel->showReport(report);
}

void RealDataPage::setStale(bool stale)
{
    for (ValuePanel *panel : qAsConst(m_panels))
        panel->setStale(stale);
}
