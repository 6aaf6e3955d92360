#include "pages/settingseditor.h"

#include "dialogs/dialog.h"
#include "displaytext.h"
#include "pages/settingstabs.h"

SettingsEditor::SettingsEditor(SettingsTabs &tabs, QWidget *view)
    : QObject(view)
    , m_view(*view)
    , m_dialog(new Dialog(view))
{
    connect(m_dialog, &Dialog::postDEvent, this, [this, &tabs](int type, const auto &map) {
        tabs.showEntered(m_record);
        emit postDEvent(type, map);
    });
}

void SettingsEditor::load(ParameterInformation *record, const DataReport &report,
                          const QString &deviceName)
{
    m_record = record;
    m_dialog->initial(record);
    if (report.contains(record->dataId))
        m_dialog->selectOption(optionAt(*record, report));
    m_dialog->setDevName(deviceName);
    m_dialog->setCurrent(report.contains(record->dataId) ? displayText(*record, report)
                                                         : QStringLiteral("\u2013"));
}

void SettingsEditor::show()
{
    if (!m_dialog->isVisible()) {
        m_dialog->adjustSize();
        const QRect place(m_view.mapToGlobal(QPoint()), m_view.size());
        m_dialog->move(place.center() - m_dialog->rect().center());
        return m_dialog->show();
    }
    m_dialog->raise(); // it may be behind another window
    m_dialog->activateWindow();
}

void SettingsEditor::setObstacle(const QString &reason)
{
    m_dialog->setObstacle(reason);
}

void SettingsEditor::close()
{
    m_dialog->reject();
}
