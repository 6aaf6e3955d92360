#include "pages/settingstabs.h"

#include "lookup.h"
#include "pages/lookonly.h"
#include "pages/rowkeys.h"
#include "pages/settingstable.h"
#include "style/viewstyle.h"
#include "tavoviewdata.h"

namespace {

constexpr int leastHeight = 200; // some rows, before the page around scrolls

struct TableRow
{
    const char *objectName;
    const char *title;
    tavoViewData::ParameterList (tavoViewData::*records)() const;
};

// clang-format off
constexpr TableRow tables[] = {
    { "basicTable",    QT_TRANSLATE_NOOP("tavoView", "Basic parameters"),     &tavoViewData::getBasicConfig },
    { "batteryTable",  QT_TRANSLATE_NOOP("tavoView", "Battery parameters"),   &tavoViewData::getBatteryConfig },
    { "adjustTable",   QT_TRANSLATE_NOOP("tavoView", "Adjusting parameters"), &tavoViewData::getAdjustConfig },
    { "devinforTable", QT_TRANSLATE_NOOP("tavoView", "UPS information"),      &tavoViewData::getDevInfoConfig },
};
// clang-format on

} // namespace

SettingsTabs::SettingsTabs(const tavoViewData &viewData, const TableMaker &createTable,
                           const QFont &font, QWidget *parent)
    : QTabWidget(parent)
{
    for (const TableRow &row : tables) {
        const auto records = (viewData.*row.records)();
        if (records.isEmpty())
            continue; // the family has no such settings
        QTableWidget *table = createTable(QString::fromLatin1(row.objectName), records);
        m_tables.append(qobject_cast<SettingsTable *>(table));
        addTab(table, translated("tavoView", row.title));
    }
    // The tabs of a user who may only look stay usable.
    keepDisabledTabs(*this, font);
    new LookOnly(*this);
    new RowKeys(*this);
    setMinimumHeight(leastHeight);
}

void SettingsTabs::showReport(const DataReport &report)
{
    for (SettingsTable *table : qAsConst(m_tables))
        table->showReport(report);
}

void SettingsTabs::showEntered(const ParameterInformation *record)
{
    for (SettingsTable *table : qAsConst(m_tables))
        table->showEntered(record);
}

void SettingsTabs::setStale(bool stale)
{
    for (SettingsTable *table : qAsConst(m_tables)) {
        QFont look = table->font();
        look.setItalic(stale);
        table->setFont(look);
    }
}
