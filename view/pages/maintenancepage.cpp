#include "pages/maintenancepage.h"

#include "answers/statuslines.h"
#include "lookup.h"
#include "pages/controlbuttons.h"
#include "pages/historynote.h"
#include "style/notetext.h"

namespace {

constexpr int textWidth = 640; // what fits the smallest window, where an inch has 96 points

} // namespace

MaintenancePage::MaintenancePage(Rows<CommandRow> commands, QObject *receiver, const char *clicked,
                                 QWidget *parent)
    : QWidget(parent)
    , m_commands(commands)
    , m_history(new HistoryNote(this))
    , m_status(new StatusLines(this))
{
    setObjectName(QStringLiteral("MaintainTable"));
    auto *grid = new QGridLayout(this);
    const int row = addControlButtons(*grid, commands, ButtonPage::Maintenance, receiver, clicked);
    grid->addWidget(m_status, row, 0, 1, -1);
    grid->addWidget(m_history, row + 1, 0, 1, -1);
    int last = row + 2;
    for (const CommandRow &command : commands) {
        if (command.button.page != ButtonPage::Maintenance)
            continue;
        auto *note = new NoteText(nullptr, this);
        note->setFont(QFont(QStringLiteral("Microsoft YaHei"), 10)); // before it is measured
        const int widest = textWidth * logicalDpiX() / 96;
        note->setWidest(widest);
        note->setMaximumWidth(widest); // wide pages break it where it was measured
        note->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        note->say(tr("%1: %2").arg(translated("tavoView", command.button.text),
                                   translated("tavoView", command.button.consequence)));
        grid->addWidget(note, last++, 0, 1, -1);
    }
    grid->setRowStretch(last, 1);
}

void MaintenancePage::setLost(const QString &lost)
{
    setLinked(*this, m_commands, lost.isEmpty());
    const QString reason = lost.isEmpty()
        ? QString()
        : QCoreApplication::translate("tavoView", "%1: only the upgrade is possible").arg(lost);
    m_status->showReason(reason, Tone::Alarm);
}
