#include "pages/recordtable.h"

#include "family.h"
#include "style/severitymark.h"
#include "style/viewcolors.h"
#include "style/whitetable.h"

#include <QBoxLayout>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

constexpr int timeColumnWidth = 280; // at least
constexpr int markSize = 14;
constexpr int markRoom = 36; // of the mark and the cell's margins
constexpr int sinceBeforeRole = Qt::UserRole;

QString sinceBefore(const QString &time)
{
    return RecordTable::tr("since before %1").arg(time);
}

/** Shows times that nobody saw as such; the cells hold mere times, which hosts may read. */
class OnsetDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.data(sinceBeforeRole).toBool())
            option->text = sinceBefore(option->text);
    }
};

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
    setItemDelegateForColumn(TimeColumn, new OnsetDelegate(this));
    setIconSize({ markSize, markSize });
    fitToFont();

    m_emptyNote->setStyleSheet(
        QStringLiteral("color: %1").arg(QColor(ViewColors::secondaryText).name()));
    m_emptyNote->setAlignment(Qt::AlignCenter);
    auto *middle = new QVBoxLayout(viewport());
    middle->addWidget(m_emptyNote);
}

// The widest time is to be read in whole, in any font.
void RecordTable::fitToFont()
{
    const QString widest = sinceBefore(QStringLiteral("0000-00-00 00:00:00"));
    const int wanted = fontMetrics().horizontalAdvance(widest) + markRoom;
    setColumnWidth(TimeColumn, std::max(timeColumnWidth, wanted));
}

void RecordTable::changeEvent(QEvent *event)
{
    QTableWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitToFont();
}

void RecordTable::showEvents(const QVector<RecordedEvent> &events, const QStringList &texts)
{
    if (rowCount() != events.size())
        setRowCount(events.size());
    m_marks.resize(std::min(m_marks.size(), events.size()));
    const QColor color = m_isStale ? ViewColors::secondaryText : ViewColors::text;
    for (int row = 0; row < events.size(); ++row) {
        const RecordedEvent &event = events.at(row);
        const QString time = event.onset.since.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        writeCentred(*this, row, TimeColumn, time, color);
        QTableWidgetItem *cell = item(row, TimeColumn);
        cell->setData(sinceBeforeRole, !event.onset.isExact);
        cell->setData(Qt::AccessibleTextRole, event.onset.isExact ? time : sinceBefore(time));
        writeCentred(*this, row, DescriptionColumn, texts.value(event.index), color);
        writeMark(row, deviceFamily().events[event.index].severity);
    }
    m_emptyNote->setVisible(events.isEmpty());
}

void RecordTable::writeMark(int row, EventSeverity severity)
{
    if (row < m_marks.size() && m_marks.at(row) == severity)
        return;
    m_marks.resize(std::max(m_marks.size(), row + 1));
    m_marks[row] = severity;
    QTableWidgetItem *cell = item(row, TimeColumn);
    cell->setData(Qt::DecorationRole, severityPixmap(severity, markSize, devicePixelRatioF()));
    cell->setToolTip(severityText(severity));
    cell->setData(Qt::AccessibleDescriptionRole, severityText(severity));
}

void RecordTable::setEmptyNote(const QString &text)
{
    if (m_emptyNote->text() != text)
        m_emptyNote->setText(text);
}

void RecordTable::setStale(bool stale)
{
    if (stale == m_isStale)
        return;
    m_isStale = stale;
    QFont slanted = font();
    slanted.setItalic(stale);
    setFont(slanted);
    const QColor color = stale ? ViewColors::secondaryText : ViewColors::text;
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < ColumnCount; ++column)
            item(row, column)->setForeground(color);
    }
}
