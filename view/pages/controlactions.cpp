#include "pages/controlactions.h"

#include "dialogs/busycover.h"
#include "dialogs/historyfile.h"
#include "dialogs/msgbox.h"
#include "hostvocabulary.h"
#include "lookup.h"
#include "upgrade.h"

#include <QAbstractButton>
#include <QDate>
#include <QDateTimeEdit>
#include <QPointer>

using namespace HostContract;

namespace {

Tone riskTone(ControlRisk risk)
{
    return risk == ControlRisk::MovesLoad ? Tone::Alarm
        : risk == ControlRisk::Lasting    ? Tone::Attention
                                          : Tone::Plain;
}

} // namespace

ControlActions::ControlActions(CollectView &view, const Family &family)
    : QObject(&view)
    , m_view(view)
    , m_family(family)
{
}

void ControlActions::press(const QAbstractButton &button)
{
    const CommandRow *row = buttonRow(m_family, button.objectName());
    if (isConfirmed(button.text() + QLatin1Char('?'), row ? row->button : ControlButtonRow()))
        dispatch(row);
}

// The host goes on meanwhile: it may have closed the view or logged the user off.
bool ControlActions::isConfirmed(const QString &question, const ControlButtonRow &button)
{
    const QString consequence = translated("tavoView", button.consequence);
    const QPointer<ControlActions> alive(this);
    const bool isAccepted = MsgBox::ask(&m_view, MsgBox::Question, question,
                                        { m_deviceName, consequence, riskTone(button.risk) });
    return isAccepted && alive && m_userLevel != 0;
}

void ControlActions::dispatch(const CommandRow *row)
{
    if (!row) {
        // What any other button sends; intended.
        m_view.control(SetParameterCommand, QStringLiteral("1,300"));
        return;
    }
    switch (row->button.click) {
    case ClickForm::EditorTime:
        setTime(row->command);
        break;
    case ClickForm::File:
        downloadHistory(row->command);
        break;
    case ClickForm::Upgrade:
        m_view.control(row->command, QString());
        upgrade();
        break;
    case ClickForm::Plain:
        m_view.control(row->command, QString());
        break;
    }
}

void ControlActions::upgrade()
{
    if (!m_device || !m_pages)
        return;
    emit upgradeBegins();
    Upgrade *upgrade = beginUpgrade(m_family, *m_device);
    connect(upgrade, &Upgrade::finished, this,
            [this](const QStringList &failures) { emit upgradeEnded(failures.isEmpty()); });
    BusyCover::during(*upgrade, *m_pages);
}

void ControlActions::setTime(int command)
{
    const auto *editor = m_view.findChild<QDateTimeEdit *>(QStringLiteral("timeEdit"));
    if (editor)
        m_view.control(command, editor->text());
}

void ControlActions::downloadHistory(int command)
{
    const QPointer<ControlActions> alive(this);
    const HistoryFile file =
        askHistoryFile(&m_view, historyFileName(m_deviceName, QDate::currentDate()));
    if (!alive || m_userLevel == 0)
        return;
    if (file.choice == HistoryFile::Choice::Unwritable) {
        MsgBox::ask(&m_view, MsgBox::Notice, file.notice);
        return;
    }
    emit downloadBegins(file.name);
    // A cancelled dialog still sends the command, with an empty name: the host expects it.
    m_view.control(command, file.name);
}
