#include "deviceform.h"

#include "serialports.h"
#include "severity.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStackedWidget>

namespace {

constexpr int formWidth = 520;
constexpr int resultLines = 2;
const QString standardRest = QStringLiteral("8,1"); // data and stop bits

struct ParityRow
{
    char letter;
    const char *text;
};

// clang-format off
constexpr ParityRow parityRows[] = {
    { 'n', QT_TRANSLATE_NOOP("DeviceForm", "None")  },
    { 'e', QT_TRANSLATE_NOOP("DeviceForm", "Even")  },
    { 'o', QT_TRANSLATE_NOOP("DeviceForm", "Odd")   },
    { 's', QT_TRANSLATE_NOOP("DeviceForm", "Space") },
    { 'm', QT_TRANSLATE_NOOP("DeviceForm", "Mark")  },
};
// clang-format on

QSpinBox *createNumber(const char *name, int least, int most)
{
    auto *box = new QSpinBox;
    box->setObjectName(QLatin1String(name));
    box->setRange(least, most);
    return box;
}

// One column of fields, whatever page is shown.
void alignLabels(const QWidget &dialog)
{
    QList<QWidget *> labels;
    int width = 0;
    for (const QFormLayout *form : dialog.findChildren<QFormLayout *>()) {
        for (int row = 0; row < form->rowCount(); ++row) {
            labels << form->itemAt(row, QFormLayout::LabelRole)->widget();
            width = qMax(width, labels.last()->sizeHint().width());
        }
    }
    for (QWidget *label : qAsConst(labels))
        label->setMinimumWidth(width);
}

} // namespace

DeviceForm::DeviceForm(DeviceHost &host, const DeviceSpec &spec, Take take, QWidget *parent)
    : QDialog(parent)
    , m_before(spec)
    , m_take(std::move(take))
    , m_test(host)
    , m_name(new QLineEdit)
{
    setObjectName(QStringLiteral("deviceForm"));
    setWindowTitle(spec.name.isEmpty() ? tr("Add device") : tr("Edit device %1").arg(spec.name));
    m_name->setObjectName(QStringLiteral("name"));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    // Enter adds from everywhere, on the test's button too.
    buttons->button(QDialogButtonBox::Cancel)->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    buttons->button(QDialogButtonBox::Ok)->setText(spec.name.isEmpty() ? tr("Add") : tr("Change"));
    connect(buttons, &QDialogButtonBox::accepted, this, &DeviceForm::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &DeviceForm::reject);
    connect(&m_test, &ConnectionTest::finished, this, &DeviceForm::showResult);

    auto *form = new QFormLayout;
    form->addRow(tr("&Name:"), m_name);
    form->addRow(tr("Connection:"), createKinds());
    m_kinds = new QStackedWidget;
    m_kinds->addWidget(createSerialPage());
    m_kinds->addWidget(createNetworkPage());
    auto *column = new QVBoxLayout(this);
    column->setSpacing(8);
    column->addLayout(form);
    column->addWidget(m_kinds);
    column->addWidget(createTestRow());
    column->addStretch();
    column->addWidget(buttons);
    alignLabels(*this);
    fill(spec);
    resize(formWidth, sizeHint().height());
}

QWidget *DeviceForm::createKinds()
{
    m_serial = new QRadioButton(tr("&Serial port"));
    m_network = new QRadioButton(tr("Net&work"));
    m_serial->setObjectName(QStringLiteral("serial"));
    m_network->setObjectName(QStringLiteral("network"));
    connect(m_serial, &QRadioButton::toggled, this, &DeviceForm::showKind);
    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_serial);
    row->addWidget(m_network);
    row->addStretch();
    return bar;
}

QWidget *DeviceForm::createSerialPage()
{
    m_port = new QComboBox;
    m_port->setObjectName(QStringLiteral("port"));
    m_port->setEditable(true);
    m_port->setInsertPolicy(QComboBox::NoInsert); // Enter ends the form
    for (const SerialPortInfo &port : serialPorts())
        m_port->addItem(tr("%1 – %2").arg(port.node, port.description), port.node);
    m_port->lineEdit()->setPlaceholderText(QStringLiteral("/dev/ttyUSB0"));
    connect(m_port, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { m_port->setEditText(m_port->itemData(index).toString()); });
    m_rate = new QComboBox;
    m_rate->setObjectName(QStringLiteral("rate"));
    m_rate->addItem(tr("as in serial.ini"), 0);
    for (int rate : lineRates)
        m_rate->addItem(QString::number(rate), rate);
    m_parity = new QComboBox;
    m_parity->setObjectName(QStringLiteral("parity"));
    for (const ParityRow &row : parityRows)
        m_parity->addItem(tr(row.text), QChar(QLatin1Char(row.letter)));
    connect(m_rate, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this](int index) { m_parity->setEnabled(index > 0); });
    m_address = createNumber("address", 1, 247);
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(tr("&Port:"), m_port);
    form->addRow(tr("&Rate (baud):"), m_rate);
    form->addRow(tr("P&arity:"), m_parity);
    form->addRow(tr("A&ddress:"), m_address);
    return page;
}

QWidget *DeviceForm::createNetworkPage()
{
    m_host = new QLineEdit;
    m_host->setObjectName(QStringLiteral("host"));
    m_host->setPlaceholderText(QStringLiteral("192.0.2.10"));
    m_tcpPort = createNumber("tcpPort", 1, 65535);
    m_unit = createNumber("unit", 0, 255);
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(tr("&Host:"), m_host);
    form->addRow(tr("&Port:"), m_tcpPort);
    form->addRow(tr("&Unit:"), m_unit);
    return page;
}

QWidget *DeviceForm::createTestRow()
{
    m_testButton = new QPushButton(tr("&Test connection"));
    m_testButton->setObjectName(QStringLiteral("test"));
    m_testButton->setAutoDefault(false);
    connect(m_testButton, &QPushButton::clicked, this, &DeviceForm::test);
    m_result = new QLabel;
    m_result->setObjectName(QStringLiteral("result"));
    m_result->setWordWrap(true);
    m_result->setMinimumHeight(resultLines * m_result->fontMetrics().lineSpacing());
    m_result->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 8, 0, 8);
    row->setSpacing(16);
    row->addWidget(m_testButton);
    row->addWidget(m_result, 1);
    return bar;
}

void DeviceForm::fill(const DeviceSpec &spec)
{
    m_name->setText(spec.name);
    m_port->setEditText(spec.port);
    const QStringList settings = spec.settings.split(QLatin1Char(','));
    m_rate->setCurrentIndex(qMax(0, m_rate->findData(settings.first().toInt())));
    m_parity->setCurrentIndex(
        qMax(0, m_parity->findData(QChar(settings.value(1, QStringLiteral("n")).at(0)))));
    m_parity->setEnabled(m_rate->currentIndex() > 0);
    m_address->setValue(spec.address);
    m_host->setText(spec.host);
    m_tcpPort->setValue(spec.tcpPort);
    m_unit->setValue(spec.address);
    (spec.isTcp() ? m_network : m_serial)->setChecked(true);
    showKind();
}

DeviceSpec DeviceForm::spec() const
{
    DeviceSpec spec;
    spec.name = m_name->text().trimmed();
    if (m_network->isChecked()) {
        spec.host = m_host->text().trimmed();
        spec.tcpPort = m_tcpPort->value();
        spec.address = m_unit->value();
        return spec;
    }
    spec.port = m_port->currentText().trimmed();
    spec.address = m_address->value();
    spec.timeout = m_before.timeout;
    const QString rest = m_before.settings.section(QLatin1Char(','), 2);
    if (m_rate->currentIndex() > 0)
        spec.settings = QStringLiteral("%1,%2,%3")
                            .arg(m_rate->currentText(), m_parity->currentData().toString(),
                                 rest.isEmpty() ? standardRest : rest);
    return spec;
}

void DeviceForm::showKind()
{
    m_kinds->setCurrentIndex(m_network->isChecked() ? 1 : 0);
    m_test.stop();
    m_result->clear();
}

Outcome DeviceForm::checkPlace() const
{
    const DeviceSpec entered = spec();
    if (!entered.port.isEmpty() || !entered.host.isEmpty())
        return {};
    return { m_network->isChecked() ? tr("Which host is it on?") : tr("Which port is it on?") };
}

Outcome DeviceForm::check() const
{
    const DeviceSpec entered = spec();
    if (entered.name.isEmpty())
        return { tr("The device needs a name.") };
    const Outcome place = checkPlace();
    if (!place.isGood())
        return place;
    if (!entered.hasUsableAddress())
        return { tr("The unit is 1 to 247; 0 and 255 stand for the peer itself.") };
    const ParsedDevice parsed = parseDevice(entered.text());
    if (!parsed.device || parsed.device->text() != entered.text()
        || parsed.device->name != entered.name)
        return { tr("A name or place with these characters cannot be used.") };
    return {};
}

void DeviceForm::test()
{
    const Outcome place = checkPlace();
    if (!place.isGood())
        return showResult(false, place.error);
    m_result->setPalette(palette());
    m_result->setText(tr("Testing…"));
    m_test.start(spec());
}

void DeviceForm::showResult(bool good, const QString &text)
{
    QPalette colors = palette();
    const Severity severity = good ? Severity::Information : Severity::Critical;
    colors.setColor(QPalette::WindowText, Severities::color(severity, colors));
    m_result->setPalette(colors);
    m_result->setText(Severities::mark(severity) + QLatin1Char(' ') + text);
}

void DeviceForm::accept()
{
    m_test.stop();
    Outcome outcome = check();
    if (outcome.isGood())
        outcome = m_take(spec());
    if (outcome.isGood())
        QDialog::accept();
    else
        showResult(false, outcome.error);
}
