#include "fleetpage.h"

#include "fleetmodel.h"
#include "loadbar.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>

namespace {

constexpr int rowHeight = 28;

// Widths in digits; the oldest alarm takes the rest.
constexpr int columnDigits[FleetModel::ColumnCount] = { 19, 15, 12, 0, 11, 8, 10, 9 };

} // namespace

FleetPage::FleetPage(FleetModel &model, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_sorted(new QSortFilterProxyModel(this))
    , m_note(new QLabel)
    , m_empty(new QLabel(tr("No devices yet. \"Add device…\" asks where the first one is.")))
{
    m_sorted->setSourceModel(&model);
    m_sorted->setSortRole(FleetModel::SortRole);
    m_sorted->setSortCaseSensitivity(Qt::CaseInsensitive);
    m_table = createTable();
    m_note->setWordWrap(true);
    m_note->setObjectName(QStringLiteral("fleetNote"));
    m_note->hide();
    m_empty->setAlignment(Qt::AlignCenter);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_note);
    column->addWidget(m_empty, 1);
    column->addWidget(m_table, 1);
    column->addWidget(createButtons());
    connect(m_sorted, &QAbstractItemModel::rowsInserted, this, &FleetPage::showButtons);
    connect(m_sorted, &QAbstractItemModel::rowsRemoved, this, &FleetPage::showButtons);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &FleetPage::showButtons);
    setFocusProxy(m_table);
    showButtons();
}

void FleetPage::setNote(const QString &note)
{
    m_note->setText(QStringLiteral("■ ") + note);
    m_note->setVisible(!note.isEmpty());
}

void FleetPage::setMayChange(bool may)
{
    m_mayChange = may;
    showButtons();
}

void FleetPage::choose(const HostDevice *device)
{
    const int row = m_model.rowOf(device);
    if (row >= 0)
        m_table->setCurrentIndex(m_sorted->mapFromSource(m_model.index(row, 0)));
    else if (!m_table->selectionModel()->hasSelection())
        m_table->setCurrentIndex(m_sorted->index(0, 0));
}

QTableView *FleetPage::createTable()
{
    auto *table = new QTableView;
    table->setObjectName(QStringLiteral("fleetTable"));
    table->setAccessibleName(tr("Devices"));
    table->setModel(m_sorted);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setShowGrid(false);
    table->setAlternatingRowColors(true);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->setSortingEnabled(true);
    table->sortByColumn(FleetModel::State, Qt::DescendingOrder);
    table->setItemDelegateForColumn(FleetModel::Load, new LoadBar(table));
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->horizontalHeader()->setHighlightSections(false);
    const int digit = table->fontMetrics().horizontalAdvance(QLatin1Char('0'));
    for (int column = 0; column < FleetModel::ColumnCount; ++column)
        if (columnDigits[column] > 0)
            table->setColumnWidth(column, columnDigits[column] * digit);
    table->horizontalHeader()->setSectionResizeMode(FleetModel::OldestAlarm, QHeaderView::Stretch);
    table->installEventFilter(this);
    connect(table, &QTableView::doubleClicked, this, [this] { emit opened(chosen()); });
    return table;
}

QWidget *FleetPage::createButtons()
{
    m_open = new QPushButton(tr("&Open"));
    m_add = new QPushButton(tr("Add &device…"));
    m_edit = new QPushButton(tr("Ed&it…"));
    m_remove = new QPushButton(tr("&Remove…"));
    m_open->setObjectName(QStringLiteral("openDevice"));
    m_add->setObjectName(QStringLiteral("addDevice"));
    m_edit->setObjectName(QStringLiteral("editDevice"));
    m_remove->setObjectName(QStringLiteral("removeDevice"));
    connect(m_open, &QPushButton::clicked, this, [this] { emit opened(chosen()); });
    connect(m_add, &QPushButton::clicked, this, &FleetPage::addAsked);
    connect(m_edit, &QPushButton::clicked, this, [this] { emit editAsked(chosen()); });
    connect(m_remove, &QPushButton::clicked, this, [this] { emit removeAsked(chosen()); });
    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(m_open);
    row->addStretch();
    for (QPushButton *button : { m_add, m_edit, m_remove })
        row->addWidget(button);
    return bar;
}

HostDevice *FleetPage::chosen() const
{
    const QModelIndex index = m_sorted->mapToSource(m_table->currentIndex());
    return index.isValid() ? m_model.device(index.row()) : nullptr;
}

void FleetPage::showButtons()
{
    const bool isEmpty = m_sorted->rowCount() == 0;
    m_empty->setVisible(isEmpty);
    m_table->setVisible(!isEmpty);
    m_open->setEnabled(chosen() != nullptr);
    m_add->setEnabled(m_mayChange);
    m_edit->setEnabled(m_mayChange && chosen() != nullptr);
    m_remove->setEnabled(m_mayChange && chosen() != nullptr);
}

bool FleetPage::eventFilter(QObject *watched, QEvent *event)
{
    // The table's own "activated" leaves Enter to the platform.
    if (watched == m_table && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && chosen()) {
            emit opened(chosen());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
