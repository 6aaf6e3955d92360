#include "settingstable.h"

#include "displaytext.h"
#include "viewcolors.h"
#include "whitetable.h"

#include <QHeaderView>

namespace {

constexpr int RangeColumnWidth = 150;
constexpr int BoundsRole = Qt::UserRole; // of a range cell: the raw bounds, as a point

void writeValue(QTableWidget &table, int row, const QString &text)
{
    writeCentred(table, row, ValueColumn, text, Qt::blue);
}

// The bounds hardly ever change: their text is made only when they differ from those shown.
void writeRange(QTableWidget &table, int row, const ParameterInformation &record)
{
    const QPoint bounds(record.min, record.max);
    const QTableWidgetItem *shown = table.item(row, RangeColumn);
    if (shown && shown->data(BoundsRole).toPoint() == bounds)
        return;
    writeCentred(table, row, RangeColumn, rangeText(record), Qt::red);
    table.item(row, RangeColumn)->setData(BoundsRole, bounds);
}

} // namespace

QTableWidget *createSettingsTable(const QString &objectName, const QStringList &headers,
                                  const QList<ParameterInformation *> &records, QWidget *parent)
{
    auto *table = new QTableWidget(records.size(), SettingsColumnCount, parent);
    table->setObjectName(objectName);
    table->setHorizontalHeaderLabels(headers);
    styleAsWhiteTable(*table);
    QHeaderView *header = table->horizontalHeader();
    header->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(ValueColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(RangeColumn, QHeaderView::Fixed);
    table->setColumnWidth(RangeColumn, RangeColumnWidth);
    table->horizontalHeaderItem(NameColumn)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    for (int row = 0; row < records.size(); ++row) {
        const ParameterInformation &record = *records.at(row);
        writeCell(*table, row, NameColumn, record.name);
        if (record.value.isEmpty())
            writeCell(*table, row, ValueColumn, record.value);
        else
            writeValue(*table, row, record.value);
        writeRange(*table, row, record);
    }
    return table;
}

void refreshSettingsTable(const SettingsTable &settings, const DataReport &report)
{
    for (int row = 0; row < settings.records.size(); ++row) {
        const ParameterInformation &record = *settings.records.at(row);
        writeValue(*settings.table, row, displayText(record, report));
        writeRange(*settings.table, row, record);
    }
}

void showEnteredValue(const SettingsTable &settings, const ParameterInformation *record)
{
    for (int row = 0; row < settings.records.size(); ++row) {
        if (settings.records.at(row) == record)
            writeValue(*settings.table, row, record->value);
    }
}
