#include "dialogscenes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPainter>
#include <QTableWidget>
#include <QTabWidget>
#include <QTimer>

namespace {

constexpr int settleMs = 700;
constexpr int busyMs = 20; // the download is over soon
constexpr int downloadMs = 8000;
constexpr int editedRow = 1; // a value with a range

void bringUp(QWidget &widget)
{
    for (QWidget *page = &widget; page->parentWidget(); page = page->parentWidget()) {
        auto *tabs = qobject_cast<QTabWidget *>(page->parentWidget()->parentWidget());
        if (tabs && tabs->indexOf(page) >= 0)
            tabs->setCurrentWidget(page);
    }
}

QDialog *openDialog()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *dialog = qobject_cast<QDialog *>(widget);
        if (dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

void answer(const char *slot)
{
    if (QDialog *dialog = openDialog())
        QMetaObject::invokeMethod(dialog, slot);
}

} // namespace

QPixmap grabWithDialogs(QWidget &window)
{
    QPixmap picture = window.grab();
    const QDialog *dialog = openDialog();
    if (!dialog)
        return picture;
    QPainter painter(&picture);
    painter.drawPixmap(dialog->pos() - window.pos(), const_cast<QDialog *>(dialog)->grab());
    return picture;
}

DialogScenes::DialogScenes(QWidget &view, const QString &historyFile, QObject *parent)
    : QObject(parent)
    , m_view(view)
    , m_historyFile(historyFile)
{
    const auto reject = [] { answer("reject"); };
    const auto accept = [] { answer("accept"); };
    m_steps = {
        { [this] { editSetting(); }, settleMs, "dialog" },
        { reject, settleMs, "" },
        { [this] { click("turn_bypass"); }, settleMs, "question" },
        { reject, settleMs, "" },
        { [this] { click("download_history_log"); }, settleMs, "" },
        { accept, settleMs, "chooser" },
        { [this] { chooseFile(); }, busyMs, "download-busy", true },
        { [] {}, downloadMs, "download-done" },
    };
}

void DialogScenes::start()
{
    next();
}

// What opens a modal dialog returns only after it: the steps go on beside it.
void DialogScenes::next()
{
    if (m_steps.isEmpty())
        return emit finished();
    const Step step = m_steps.takeFirst();
    QTimer::singleShot(0, this, step.act);
    QTimer::singleShot(step.settleMs, this, [this, step] { show(step); });
}

void DialogScenes::show(const Step &step)
{
    if (step.isBehindDialog && openDialog()) {
        QTimer::singleShot(step.settleMs, this, [this, step] { show(step); });
        return;
    }
    if (*step.name != '\0')
        emit shown(QString::fromLatin1(step.name));
    next();
}

void DialogScenes::editSetting()
{
    auto *table = m_view.findChild<QTableWidget *>(QStringLiteral("basicTable"));
    if (!table)
        return;
    bringUp(*table);
    emit table->cellDoubleClicked(editedRow, 1);
}

void DialogScenes::click(const char *button)
{
    auto *found = m_view.findChild<QAbstractButton *>(QString::fromLatin1(button));
    if (!found)
        return;
    bringUp(*found);
    found->click();
}

void DialogScenes::chooseFile()
{
    // The chooser keeps a name that is being typed, so this types, too.
    if (const QDialog *chooser = openDialog())
        if (auto *name = chooser->findChild<QLineEdit *>(QStringLiteral("fileNameEdit")))
            name->setText(m_historyFile);
    answer("accept");
}
