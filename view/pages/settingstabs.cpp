#include "pages/settingstabs.h"

#include "pages/lookonly.h"
#include "pages/rowkeys.h"
#include "pages/settingstable.h"
#include "style/viewstyle.h"

namespace {

constexpr int leastHeight = 200; // some rows, before the page around scrolls

} // namespace

SettingsTabs::SettingsTabs(QWidget *parent)
    : QTabWidget(parent)
{
}

void SettingsTabs::addTable(QTableWidget *table, const QString &title)
{
    m_tables.append(qobject_cast<SettingsTable *>(table));
    addTab(table, title);
}

void SettingsTabs::finish(const QFont &font)
{
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
