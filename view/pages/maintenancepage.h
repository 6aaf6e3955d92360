#pragma once

#include "controlrow.h"
#include "rows.h"

#include <QWidget>

class HistoryNote;
class StatusLines;

/**
 * The buttons of the maintenance, and what came of what was asked for.
 *
 * Threads: GUI thread only.
 */
class MaintenancePage : public QWidget
{
    Q_OBJECT

public:
    /** @param clicked  the slot of `receiver`, as SLOT() writes it, for every button's click */
    MaintenancePage(Rows<CommandRow> commands, QObject *receiver, const char *clicked,
                    QWidget *parent = nullptr);

    HistoryNote &history() { return *m_history; }

    StatusLines &status() { return *m_status; }

    /** Shows that the device cannot be reached, and why; empty when it can. */
    void setLost(const QString &lost);

private:
    const Rows<CommandRow> m_commands;
    HistoryNote *m_history;
    StatusLines *m_status;
};
