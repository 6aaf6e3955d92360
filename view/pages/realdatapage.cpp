#include "pages/realdatapage.h"

#include "lookup.h"
#include "pages/valuepanel.h"
#include "tavoviewdata.h"
#include "trends/trendpanel.h"

#include <QGridLayout>

namespace {

constexpr int gap = 16; // between cards
constexpr int columns = 3;

struct CardRow
{
    const char *title;
    tavoViewData::ParameterList (tavoViewData::*records)() const;
};

constexpr CardRow cards[] = {
    { QT_TRANSLATE_NOOP("tavoView", "DEVICE"), &tavoViewData::getDeviceData },
    { QT_TRANSLATE_NOOP("tavoView", "OUTPUT"), &tavoViewData::getOutputData },
    { QT_TRANSLATE_NOOP("tavoView", "INPUT"), &tavoViewData::getInputData },
    { QT_TRANSLATE_NOOP("tavoView", "BYPASS"), &tavoViewData::getBypassData },
    { QT_TRANSLATE_NOOP("tavoView", "BATTERY"), &tavoViewData::getBatteryData },
    { QT_TRANSLATE_NOOP("tavoView", "REC/INV"), &tavoViewData::getRecInvData },
};

} // namespace

RealDataPage::RealDataPage(const tavoViewData &viewData, const TrendStore &trends,
                           const CardMaker &createCard, QWidget *parent)
    : QWidget(parent)
{
    auto *grid = new QGridLayout(this);
    grid->setSpacing(gap);
    for (int column = 0; column < columns; ++column)
        grid->setColumnStretch(column, 1);
    // What cards of their greatest width leave is at the right of them.
    grid->addItem(new QSpacerItem(0, 0, QSizePolicy::Expanding), 0, columns);
    for (const CardRow &row : cards) {
        const auto records = (viewData.*row.records)();
        if (records.isEmpty())
            continue; // the family has no such part
        ValuePanel *panel = createCard(this, translated("tavoView", row.title), records);
        grid->addWidget(panel, m_panels.size() / columns, m_panels.size() % columns);
        m_panels.append(panel);
    }
    m_trends = new TrendPanel(trends, this);
    const int last = grid->rowCount();
    grid->addWidget(m_trends, last, 0, 1, -1);
    grid->setRowStretch(last, 1); // what is left below the cards
}

void RealDataPage::showReport(const DataReport &report)
{
    for (ValuePanel *panel : qAsConst(m_panels))
        panel->showReport(report);
    m_trends->refresh();
}

void RealDataPage::setStale(bool stale)
{
    for (ValuePanel *panel : qAsConst(m_panels))
        panel->setStale(stale);
}
