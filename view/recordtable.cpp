#include "recordtable.h"

#include "viewcolors.h"
#include "whitetable.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>

namespace {

constexpr int TimeColumnWidth = 220;

} // namespace

RecordTable::RecordTable(const QStringList &headers, QWidget *parent)
    : QTableWidget(0, ColumnCount, parent)
    , m_emptyNote(new QLabel(tr("No events"), viewport()))
{
    setObjectName(QStringLiteral("RecordTable"));
    setHorizontalHeaderLabels(headers);
    styleAsWhiteTable(*this);
    horizontalHeader()->setSectionResizeMode(TimeColumn, QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(DescriptionColumn, QHeaderView::Stretch);
    setColumnWidth(TimeColumn, TimeColumnWidth);

    m_emptyNote->setStyleSheet(
        QStringLiteral("color: %1").arg(QColor(ViewColors::SecondaryText).name()));
    m_emptyNote->setAlignment(Qt::AlignCenter);
    auto *middle = new QVBoxLayout(viewport());
    middle->addWidget(m_emptyNote);
}

void RecordTable::showEvents(const QVector<RecordedEvent> &events, const QStringList &texts)
{
    if (rowCount() != events.size())
        setRowCount(events.size());
    for (int row = 0; row < events.size(); ++row) {
        const RecordedEvent &event = events.at(row);
        writeCentred(*this, row, TimeColumn, event.time, ViewColors::Text);
        writeCentred(*this, row, DescriptionColumn, texts.value(event.index), ViewColors::Text);
    }
    m_emptyNote->setVisible(events.isEmpty());
}
