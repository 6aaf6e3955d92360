#include "pages/controlpage.h"

#include "answers/statuslines.h"
#include "pages/controlbuttons.h"
#include "style/notetext.h"
#include "style/viewstyle.h"

#include <QCoreApplication>
#include <QLabel>
#include <QScrollBar>
#include <QStackedWidget>
#include <QWheelEvent>

ControlPage::ControlPage(Rows<CommandRow> commands, QWidget *settings, QObject *receiver,
                         const char *clicked, QWidget *parent)
    : QScrollArea(parent)
    , m_commands(commands)
{
    setObjectName(QStringLiteral("ControlTable"));
    auto *contents = new QWidget(this);
    auto *grid = new QGridLayout(contents);
    grid->setObjectName(QStringLiteral("ControlGrid"));
    int row = addControlButtons(*grid, commands, ButtonPage::Control, receiver, clicked);
    const int statusRow = row++;
    auto *title = new QLabel(QCoreApplication::translate("tavoView", "Configuration"), contents);
    title->setObjectName(QStringLiteral("DevBigTitle"));
    title->setStyleSheet(QStringLiteral("margin-top:20px"));
    title->setFont(QFont(QStringLiteral("Microsoft YaHei"), 13, QFont::Bold));
    title->setIndent(0);
    grid->addWidget(title, row, 0, 1, -1);
    QStackedWidget *stack = createStack("configStack", contents);
    stack->addWidget(settings);
    grid->addWidget(stack, row + 1, 0, 1, -1);
    grid->setRowStretch(row + 1, 1);
    m_status = new StatusLines(contents); // behind what is looked for by type
    grid->addWidget(m_status, statusRow, 0, 1, -1);
    // Beside the short title, whose line it shares.
    m_hint = new NoteText(nullptr, contents);
    m_hint->setFont(QFont(QStringLiteral("Microsoft YaHei"), 10));
    m_hint->say(QCoreApplication::translate(
        "ControlPage", "Double-click a row to change it; or Up, Down and Enter on the tabs"));
    grid->addWidget(m_hint, row, 2, 1, -1, Qt::AlignRight | Qt::AlignBottom);
    showInScrollArea(*this, contents);
}

void ControlPage::setAccess(const QString &lost, bool mayControl)
{
    const bool isLost = !lost.isEmpty();
    m_isLost = isLost;
    setEnabled(mayControl);
    showHint();
    setLinked(*this, m_commands, !isLost);
    const QString reason = isLost
        ? QCoreApplication::translate("tavoView", "%1: nothing can be sent").arg(lost)
        : mayControl ? QString()
                     : QCoreApplication::translate(
                         "tavoView", "Only to look at: this user may not control the device");
    m_status->showReason(reason, isLost ? Tone::Alarm : Tone::Plain);
}

// Settings are not offered to be changed while nothing can be sent.
void ControlPage::showHint()
{
    m_hint->setVisible(isEnabled() && !m_isLost);
}

void ControlPage::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange && m_hint)
        showHint();
    QScrollArea::changeEvent(event);
}

bool ControlPage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel || isEnabled())
        return QScrollArea::eventFilter(watched, event);
    const int turned = static_cast<QWheelEvent *>(event)->angleDelta().y();
    verticalScrollBar()->setValue(verticalScrollBar()->value() - turned);
    return true;
}
