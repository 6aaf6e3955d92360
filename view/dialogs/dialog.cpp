#include "dialogs/dialog.h"

#include "dialogs/entryremark.h"
#include "dialogs/loading.h"
#include "dialogs/msgbox.h"
#include "dialogs/settingvalue.h"
#include "displaytext.h"
#include "hostvocabulary.h"
#include "style/notetext.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDebug>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStackedWidget>

using namespace HostContract;

namespace {

constexpr int closeDelayMs = 1000;
constexpr int closeDelayWithoutRangeMs = 2000;
constexpr QSize spinnerSize(72, 72);

} // namespace

Dialog::Dialog(QWidget *parent)
    : QDialog(parent)
    , m_pages(new QStackedWidget(this))
    , m_rangeLabel(new QLabel(this))
    , m_nameLabel(new QLabel(this))
    , m_okButton(new QPushButton(tr("Ok"), this))
    , m_cancelButton(new QPushButton(tr("Cancel"), this))
{
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setObjectName(QStringLiteral("WhiteDialog"));
    setProperty("canMove", true);
    setFont(QFont(QStringLiteral("Microsoft YaHei"), 10));

    m_okButton->setObjectName(QStringLiteral("btnBlue"));
    m_okButton->setDefault(true);
    m_cancelButton->setObjectName(QStringLiteral("btnWhite"));
    m_cancelButton->setAutoDefault(false); // Enter means "Ok" wherever the focus is
    m_pages->addWidget(createValuePage());
    m_pages->addWidget(createOptionPage());
    m_pages->addWidget(createBusyPage());
    buildLayout();

    connect(m_okButton, &QPushButton::clicked, this, &Dialog::checkRange);
    connect(m_cancelButton, &QPushButton::clicked, this, &Dialog::reject);
    connect(m_valueEdit, &QLineEdit::textChanged, this, &Dialog::showRemark);
    m_closeTimer.setSingleShot(true);
    m_closeTimer.setTimerType(Qt::PreciseTimer); // a coarse one may fire 5 % early
    connect(&m_closeTimer, &QTimer::timeout, this, &Dialog::close);
}

QWidget *Dialog::createValuePage()
{
    auto *page = new QWidget(m_pages);
    m_valueEdit = new QLineEdit(page);
    auto *label = new QLabel(tr("Value:"), page);
    label->setBuddy(m_valueEdit);
    auto *row = new QHBoxLayout(page);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(label);
    row->addWidget(m_valueEdit, 1);
    return page;
}

QWidget *Dialog::createOptionPage()
{
    auto *page = new QWidget(m_pages);
    m_optionBox = new QComboBox(page);
    auto *label = new QLabel(tr("Option:"), page);
    label->setBuddy(m_optionBox);
    auto *row = new QHBoxLayout(page);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(label);
    row->addWidget(m_optionBox, 1);
    return page;
}

QWidget *Dialog::createBusyPage()
{
    auto *page = new QWidget(m_pages);
    page->setMinimumSize(spinnerSize);
    m_busyRow = new QHBoxLayout(page);
    m_busyRow->setContentsMargins(0, 0, 0, 0);
    return page;
}

void Dialog::buildLayout()
{
    m_nameLabel->setAlignment(Qt::AlignCenter);
    QFont nameFont = font();
    nameFont.setPointSize(11);
    nameFont.setBold(true);
    m_nameLabel->setFont(nameFont);
    m_rangeLabel->setAlignment(Qt::AlignCenter);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(16);
    buttons->addStretch();
    buttons->addWidget(m_okButton);
    buttons->addWidget(m_cancelButton);
    buttons->addStretch();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(24, 24, 24, 24);
    column->setSpacing(8);
    column->addWidget(m_nameLabel);
    column->addWidget(m_pages, 1);
    column->addWidget(m_rangeLabel);
    column->addSpacing(8);
    column->addLayout(buttons);
    setMinimumWidth(360);
    addNotes(*column);
}

// Behind all that is looked for by type, in the layout where they are read.
void Dialog::addNotes(QBoxLayout &column)
{
    m_deviceNote = new NoteText(m_nameLabel, this);
    m_currentNote = new NoteText(m_rangeLabel, this);
    m_remark = new NoteText(m_rangeLabel, this);
    m_unitNote = new NoteText(m_rangeLabel, m_valueEdit->parentWidget());
    for (NoteText *note : { m_deviceNote, m_currentNote, m_remark })
        note->setWidest(312);
    QSizePolicy keeping = m_remark->sizePolicy();
    keeping.setRetainSizeWhenHidden(true); // or the buttons would move while one types
    m_remark->setSizePolicy(keeping);
    m_valueEdit->parentWidget()->layout()->addWidget(m_unitNote);
    column.insertWidget(column.indexOf(m_pages) + 1, m_remark);
    column.insertWidget(column.indexOf(m_pages), m_currentNote);
    column.insertWidget(0, m_deviceNote);
}

void Dialog::setCurrent(const QString &value)
{
    m_currentNote->say(value.isEmpty() ? QString() : tr("Now: %1").arg(value));
}

void Dialog::setObstacle(const QString &reason)
{
    m_obstacle = reason;
    m_okButton->setEnabled(reason.isEmpty() && m_pages->currentIndex() != BusyPage);
    showRemark();
}

void Dialog::showRemark()
{
    const bool isTyped = m_record && m_mode == ValuePage && m_pages->currentIndex() != BusyPage;
    const EntryRemark remark = !m_obstacle.isEmpty() ? EntryRemark { Tone::Alarm, m_obstacle }
        : isTyped                                    ? remarkOn(*m_record, m_valueEdit->text())
                                                     : EntryRemark();
    m_remark->say(remark.text, remark.tone);
}

void Dialog::initial(ParameterInformation *record)
{
    m_closeTimer.stop();
    m_optionBox->clear();
    m_record = record;
    m_recordName = record->name;
    m_scale = record->scale;
    m_mode = record->combo.isEmpty() ? ValuePage : OptionPage;
    takeRange();
    m_nameLabel->setText(m_recordName);
    m_unitNote->say(record->unit);
    m_currentNote->say({});
    setWindowTitle(m_recordName);
    m_valueEdit->clear();
    for (auto it = record->combo.constBegin(); it != record->combo.constEnd(); ++it)
        m_optionBox->addItem(it.key(), it.value());
    switchPage(m_mode);
    adjustSize(); // a window that was shown before keeps its width, whatever the name's is
}

void Dialog::takeRange()
{
    m_min = m_record->min;
    m_max = m_record->max;
    m_rangeLabel->setText(
        m_record->hasRange()
            ? tr("Range:%1~%2").arg(boundText(*m_record, m_min), boundText(*m_record, m_max))
            : QString());
}

void Dialog::selectOption(int value)
{
    const int index = m_optionBox->findData(value);
    if (index >= 0)
        m_optionBox->setCurrentIndex(index);
}

void Dialog::setDevName(QString name)
{
    m_deviceName = name;
    m_deviceNote->say(name);
}

void Dialog::switchPage(int page)
{
    m_pages->setCurrentIndex(page);
    m_okButton->setEnabled(page != BusyPage && m_obstacle.isEmpty());
    showRemark();
    dropSpinner();
    if (page == BusyPage)
        addSpinner();
    else if (page == ValuePage)
        m_valueEdit->setFocus();
    else if (page == OptionPage)
        m_optionBox->setFocus();
}

void Dialog::addSpinner()
{
    m_spinner = new Loading(this);
    m_spinner->setFixedSize(spinnerSize);
    m_busyRow->addWidget(m_spinner, 0, Qt::AlignCenter);
    m_spinner->show();
}

void Dialog::dropSpinner()
{
    delete m_spinner;
    m_spinner = nullptr;
}

QString Dialog::getstrValue()
{
    m_stringValue = m_mode == ValuePage ? m_valueEdit->text() : m_optionBox->currentText();
    return m_stringValue;
}

int Dialog::getrealValue()
{
    if (m_mode == ValuePage) {
        m_realValue = rawFromTyped(typedNumber(m_valueEdit->text()), m_scale);
        qDebug() << "22222222222222 " << m_realValue; // known to those who read the logs
    } else {
        const int value = m_optionBox->currentData().toInt();
        const QString text = m_optionBox->currentText();
        qDebug() << "Dialog::getrealValue 1 " << rawFromOption(value, text, 0);
        m_realValue = rawFromOption(value, text, m_scale);
    }
    return roundedRaw(m_realValue);
}

bool Dialog::isAcceptable()
{
    takeRange(); // the battery type may have changed since the record was loaded
    const float value = static_cast<float>(getrealValue());
    if (m_record->type != TextValue && !isSendable(m_realValue))
        return false;
    return !m_record->hasRange()
        || (value >= static_cast<float>(m_min) && value <= static_cast<float>(m_max));
}

void Dialog::checkRange()
{
    if (!m_record || m_pages->currentIndex() == BusyPage)
        return;
    if (!isAcceptable()) {
        refuse();
        return;
    }
    switchPage(BusyPage);
    m_closeTimer.start(m_record->hasRange() ? closeDelayMs : closeDelayWithoutRangeMs);
    post();
}

void Dialog::refuse()
{
    const QPointer<Dialog> alive(this);
    MsgBox::notify(*this, tr("The value is out of range!"));
    if (!alive)
        return;
    m_valueEdit->selectAll();
    switchPage(m_mode);
}

void Dialog::post()
{
    const QString text = getstrValue();
    const int raw = getrealValue();
    m_record->value = text;
    QMap<QString, QVariant> map;
    map.insert(Key::controlId(), SetParameterCommand);
    map.insert(Key::controlValue(), requestText(*m_record, text, raw));
    map.insert(Key::nodeValue(), text);
    map.insert(Key::nodeName(), m_record->name);
    map.insert(Key::name(), m_deviceName);
    emit postDEvent(ParameterRequestEvent, map);
}

void Dialog::done(int result)
{
    m_closeTimer.stop();
    QDialog::done(result);
    dropSpinner();
}
