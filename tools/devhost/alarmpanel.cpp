#include "alarmpanel.h"

#include "alarmlog.h"

#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSaveFile>
#include <QShortcut>
#include <QTableView>

namespace {

constexpr int linesShown = 3;
constexpr int rowPadding = 6;
constexpr int leastContents = 8; // letters of a filter

// Widths in digits; the text of the event takes the rest.
constexpr int columnDigits[AlarmLog::ColumnCount] = { 20, 12, 13, 0, 27, 11 };

} // namespace

AlarmPanel::AlarmPanel(AlarmLog &log, QWidget *parent)
    : QWidget(parent)
    , m_log(log)
    , m_note(new QLabel)
{
    m_filter.setSourceModel(&log);
    m_table = createTable();
    m_note->hide();
    m_note->setWordWrap(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(createFilters());
    column->addWidget(m_note);
    column->addWidget(m_table, 1);
    createActions();
    m_counting.setSingleShot(true);
    connect(&m_counting, &QTimer::timeout, this, &AlarmPanel::showCounts);
    const auto countSoon = [this] { m_counting.start(0); };
    connect(&m_filter, &AlarmFilter::rowsInserted, this, countSoon);
    connect(&m_filter, &AlarmFilter::rowsRemoved, this, countSoon);
    connect(&m_filter, &AlarmFilter::dataChanged, this, countSoon);
    connect(&m_filter, &AlarmFilter::modelReset, this, countSoon);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, countSoon);
    showCounts();
}

void AlarmPanel::setDevices(const QStringList &names)
{
    const QString chosen = m_devices->currentData().toString();
    m_devices->clear();
    m_devices->addItem(tr("All devices"), QString());
    for (const QString &name : names)
        m_devices->addItem(name, name);
    m_devices->setCurrentIndex(qMax(0, m_devices->findData(chosen)));
}

void AlarmPanel::setMayAcknowledge(bool may)
{
    m_mayAcknowledge = may;
    showCounts();
}

void AlarmPanel::setNote(const QString &note)
{
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
}

QSize AlarmPanel::minimumSizeHint() const
{
    // The filters and one row below the header.
    const int row = m_table->verticalHeader()->defaultSectionSize();
    return { 0, layout()->itemAt(0)->sizeHint().height() + 3 * row };
}

QSize AlarmPanel::sizeHint() const
{
    const int row = m_table->verticalHeader()->defaultSectionSize();
    return { 0, minimumSizeHint().height() + (linesShown - 1) * row };
}

QWidget *AlarmPanel::createFilters()
{
    m_devices = new QComboBox;
    m_devices->setObjectName(QStringLiteral("logDevice"));
    auto *severities = new QComboBox;
    severities->setObjectName(QStringLiteral("logSeverity"));
    severities->addItems({ tr("Every severity"), tr("Warnings and worse"), tr("Critical only") });
    auto *states = new QComboBox;
    states->setObjectName(QStringLiteral("logState"));
    states->addItems({ tr("Everything"), tr("Open alarms") });
    states->setToolTip(tr("Open alarms are active or not acknowledged"));
    auto *text = new QLineEdit;
    text->setObjectName(QStringLiteral("logText"));
    text->setPlaceholderText(tr("Search"));
    text->setClearButtonEnabled(true);
    for (QComboBox *box : { m_devices, severities, states }) {
        // They give way before the buttons do.
        box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        box->setMinimumContentsLength(leastContents);
        box->setMinimumWidth(leastContents * fontMetrics().averageCharWidth());
    }
    m_devices->setAccessibleName(tr("Device of the log"));
    severities->setAccessibleName(tr("Severity of the log"));
    states->setAccessibleName(tr("State of the log"));
    const auto chosen = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(m_devices, chosen, this,
            [this] { m_filter.setDevice(m_devices->currentData().toString()); });
    connect(severities, chosen, this, [this](int least) { m_filter.setLeast(Severity(least)); });
    connect(states, chosen, this, [this](int index) { m_filter.setOpenOnly(index == 1); });
    connect(text, &QLineEdit::textChanged, &m_filter, &AlarmFilter::setText);

    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    for (QComboBox *box : { m_devices, severities, states })
        row->addWidget(box);
    row->addWidget(text, 1);
    setDevices({});
    return bar;
}

QTableView *AlarmPanel::createTable()
{
    auto *table = new QTableView;
    table->setObjectName(QStringLiteral("hostEventLog"));
    table->setAccessibleName(tr("Event log"));
    table->setModel(&m_filter);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->setSortingEnabled(true);
    table->sortByColumn(AlarmLog::State, Qt::DescendingOrder);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + rowPadding);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    const int digit = table->fontMetrics().horizontalAdvance(QLatin1Char('0'));
    for (int column = 0; column < AlarmLog::ColumnCount; ++column)
        if (columnDigits[column] > 0)
            table->setColumnWidth(column, columnDigits[column] * digit);
    table->horizontalHeader()->setSectionResizeMode(AlarmLog::Event, QHeaderView::Stretch);
    connect(table, &QTableView::doubleClicked, this,
            [this](const QModelIndex &index) { emit opened(m_filter.record(index.row()).device); });
    return table;
}

void AlarmPanel::createActions()
{
    m_acknowledge = new QPushButton(tr("Ac&knowledge"));
    m_acknowledge->setObjectName(QStringLiteral("acknowledge"));
    m_acknowledge->setToolTip(tr("Acknowledge the chosen alarms (Space)"));
    m_acknowledgeAll = new QPushButton;
    m_acknowledgeAll->setObjectName(QStringLiteral("acknowledgeAll"));
    m_acknowledgeAll->setToolTip(tr("Acknowledge all alarms that the filters show"));
    auto *save = new QPushButton(tr("&Export CSV…"));
    save->setObjectName(QStringLiteral("exportLog"));
    connect(m_acknowledge, &QPushButton::clicked, this, &AlarmPanel::acknowledgeSelected);
    connect(m_acknowledgeAll, &QPushButton::clicked, this, &AlarmPanel::acknowledgeShown);
    connect(save, &QPushButton::clicked, this, &AlarmPanel::exportShown);
    for (QPushButton *button : { m_acknowledge, m_acknowledgeAll, save })
        addButton(button);
    auto *space = new QShortcut(Qt::Key_Space, m_table, nullptr, nullptr, Qt::WidgetShortcut);
    connect(space, &QShortcut::activated, this, &AlarmPanel::acknowledgeSelected);
    auto *copy = new QShortcut(QKeySequence::Copy, m_table, nullptr, nullptr, Qt::WidgetShortcut);
    connect(copy, &QShortcut::activated, this, &AlarmPanel::copySelected);
}

void AlarmPanel::addButton(QPushButton *button)
{
    button->setAutoDefault(false);
    static_cast<QBoxLayout *>(layout()->itemAt(0)->widget()->layout())->addWidget(button);
}

QList<qint64> AlarmPanel::idsToAcknowledge(const QModelIndexList &rows) const
{
    QList<qint64> ids;
    for (const QModelIndex &index : rows) {
        const AlarmRecord &record = m_filter.record(index.row());
        if (record.wantsAcknowledging())
            ids << record.id;
    }
    return ids;
}

void AlarmPanel::acknowledgeSelected()
{
    if (m_mayAcknowledge)
        m_log.acknowledge(idsToAcknowledge(m_table->selectionModel()->selectedRows()));
}

void AlarmPanel::acknowledgeShown()
{
    QModelIndexList rows;
    for (int row = 0; row < m_filter.rowCount(); ++row)
        rows << m_filter.index(row, 0);
    m_log.acknowledge(idsToAcknowledge(rows));
}

void AlarmPanel::copySelected()
{
    QModelIndexList rows = m_table->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QApplication::clipboard()->setText(m_filter.text(rows));
}

void AlarmPanel::exportShown()
{
    const QString name = QFileDialog::getSaveFileName(
        this, tr("Export the event log"), QStringLiteral("events.csv"), tr("CSV (*.csv)"));
    if (name.isEmpty())
        return;
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(m_filter.csv()) < 0 || !file.commit())
        QMessageBox::warning(this, tr("Export the event log"),
                             tr("%1 cannot be written: %2").arg(name, file.errorString()));
}

void AlarmPanel::showCounts()
{
    int open = 0;
    for (int row = 0; row < m_filter.rowCount(); ++row)
        open += m_filter.record(row).wantsAcknowledging() ? 1 : 0;
    m_acknowledgeAll->setText(tr("Acknowledge &all (%1)").arg(open));
    m_acknowledgeAll->setEnabled(m_mayAcknowledge && open > 0);
    const QModelIndexList chosen = m_table->selectionModel()->selectedRows();
    m_acknowledge->setEnabled(m_mayAcknowledge && !idsToAcknowledge(chosen).isEmpty());
}
