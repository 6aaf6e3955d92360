#include "pages/settingstable.h"

#include "displaytext.h"
#include "pages/chipdelegate.h"
#include "style/viewcolors.h"
#include "style/whitetable.h"

#include <QCoreApplication>
#include <QHeaderView>

namespace {

constexpr int rangeColumnWidth = 150;

} // namespace

SettingsTable::SettingsTable(const QString &objectName,
                             const QList<ParameterInformation *> &records, QWidget *parent)
    : QTableWidget(records.size(), ColumnCount, parent)
    , m_records(records)
    , m_shownBounds(records.size())
{
    setObjectName(objectName);
    // In the order of Column.
    setHorizontalHeaderLabels({ QCoreApplication::translate("tavoView", "Parameter"),
                                QCoreApplication::translate("tavoView", "Current settings"),
                                QCoreApplication::translate("tavoView", "Range") });
    styleAsWhiteTable(*this);
    QHeaderView *header = horizontalHeader();
    header->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(ValueColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(RangeColumn, QHeaderView::Fixed);
    setColumnWidth(RangeColumn, rangeColumnWidth);
    setItemDelegateForColumn(RangeColumn, new ChipDelegate(this));
    horizontalHeaderItem(NameColumn)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    for (int row = 0; row < records.size(); ++row) {
        const ParameterInformation &record = *records.at(row);
        writeCell(*this, row, NameColumn, record.name);
        if (record.value.isEmpty())
            writeCell(*this, row, ValueColumn, record.value);
        else
            writeValue(row, record.value);
        writeRange(row);
    }
}

void SettingsTable::writeValue(int row, const QString &text)
{
    writeCentred(*this, row, ValueColumn, text, Qt::blue);
}

void SettingsTable::writeRange(int row)
{
    const ParameterInformation &record = *m_records.at(row);
    const QPair<int, int> bounds(record.min, record.max);
    if (item(row, RangeColumn) && m_shownBounds.at(row) == bounds)
        return;
    writeCentred(*this, row, RangeColumn, rangeText(record), Qt::red);
    m_shownBounds[row] = bounds;
}

void SettingsTable::showReport(const DataReport &report)
{
    for (int row = 0; row < m_records.size(); ++row) {
        writeValue(row, displayText(*m_records.at(row), report));
        writeRange(row);
    }
}

void SettingsTable::showEntered(const ParameterInformation *record)
{
    for (int row = 0; row < m_records.size(); ++row) {
        if (m_records.at(row) == record)
            writeValue(row, record->value);
    }
}
