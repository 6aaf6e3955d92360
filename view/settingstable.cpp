#include "settingstable.h"

#include "displaytext.h"
#include "viewcolors.h"
#include "whitetable.h"

#include <QHeaderView>

namespace {

constexpr int RangeColumnWidth = 150;

void writeValue(QTableWidget &table, int row, const QString &text)
{
    writeCentred(table, row, ValueColumn, text, Qt::blue);
}

void writeRange(QTableWidget &table, int row, const ParameterInformation &record)
{
    writeCentred(table, row, RangeColumn, rangeText(record), Qt::red);
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

void refreshSettingsTable(SettingsTable &settings, const DataReport &report)
{
    settings.shownBounds.resize(settings.records.size());
    for (int row = 0; row < settings.records.size(); ++row) {
        const ParameterInformation &record = *settings.records.at(row);
        writeValue(*settings.table, row, displayText(record, report));
        const QPair<int, int> bounds(record.min, record.max);
        if (settings.shownBounds.at(row) != bounds)
            writeRange(*settings.table, row, record);
        settings.shownBounds[row] = bounds;
    }
}

void showEnteredValue(const SettingsTable &settings, const ParameterInformation *record)
{
    for (int row = 0; row < settings.records.size(); ++row) {
        if (settings.records.at(row) == record)
            writeValue(*settings.table, row, record->value);
    }
}
