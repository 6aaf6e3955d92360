#include "eventtable.h"

#include <QHeaderView>

#include <iterator>

namespace {

constexpr int MostLines = 1000;
constexpr int LinesShown = 3;

struct KindRow
{
    const char *text;
    QRgb mark; ///< ground of a new line, 0: not marked
};

// clang-format off
constexpr KindRow kindRows[] = { // by LogEntry::Kind; the signs tell the lines apart without colour
    { QT_TRANSLATE_NOOP("EventTable", "▲ appeared"),    0xffffe2ad },
    { QT_TRANSLATE_NOOP("EventTable", "● disappeared"), 0 },
    { QT_TRANSLATE_NOOP("EventTable", "■ lost"),        0xfff6c4bf },
    { QT_TRANSLATE_NOOP("EventTable", "● restored"),    0 },
    { QT_TRANSLATE_NOOP("EventTable", "● result"),      0 },
};
// clang-format on
static_assert(std::size(kindRows) == size_t(LogEntry::Kind::Result) + 1);

} // namespace

EventTable::EventTable(QWidget *parent)
    : QTableWidget(0, ColumnCount, parent)
{
    setObjectName(QStringLiteral("hostEventLog"));
    setAccessibleName(tr("Event log"));
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->hide();
    horizontalHeader()->setStretchLastSection(true);
    const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    setColumnWidth(Time, 22 * digit);
    setColumnWidth(Device, 16 * digit);
    setColumnWidth(State, 18 * digit);
    connect(this, &QTableWidget::itemSelectionChanged, this, [this] {
        if (!selectedItems().isEmpty())
            acknowledge(selectedItems().first()->row());
    });
}

void EventTable::prepend(const LogEntry &entry)
{
    const bool atTop = rowCount() == 0 || rowAt(0) == 0;
    const QString texts[] = { entry.time, entry.device, stateText(entry.kind), entry.text };
    const QRgb mark = kindRows[size_t(entry.kind)].mark;
    insertRow(0);
    for (int column = 0; column < ColumnCount; ++column) {
        auto *item = new QTableWidgetItem(texts[column]);
        item->setToolTip(texts[column]);
        if (mark != 0) {
            item->setBackground(QColor::fromRgb(mark));
            item->setForeground(QColor(0x1b, 0x21, 0x40));
            QFont bold = font();
            bold.setBold(true);
            item->setFont(bold);
        }
        setItem(0, column, item);
    }
    if (rowCount() > MostLines)
        removeRow(MostLines);
    // Who has scrolled down reads older lines: leave them in place.
    if (atTop)
        scrollToTop();
}

QSize EventTable::sizeHint() const
{
    const int height = LinesShown * verticalHeader()->defaultSectionSize() + 2 * frameWidth();
    return QSize(QTableWidget::sizeHint().width(), height);
}

QSize EventTable::minimumSizeHint() const
{
    return QSize(0, verticalHeader()->defaultSectionSize() + 2 * frameWidth());
}

QString EventTable::stateText(LogEntry::Kind kind)
{
    return tr(kindRows[size_t(kind)].text);
}

void EventTable::acknowledge(int row)
{
    for (int column = 0; column < ColumnCount; ++column) {
        QTableWidgetItem *cell = item(row, column);
        cell->setData(Qt::BackgroundRole, {});
        cell->setData(Qt::ForegroundRole, {});
        cell->setData(Qt::FontRole, {});
    }
}
