#pragma once

#include "controlrow.h"
#include "rows.h"

#include <QScrollArea>

class NoteText;
class StatusLines;

/**
 * The control buttons over the tables of settings; scrolls where they do not fit.
 *
 * Threads: GUI thread only.
 */
class ControlPage : public QScrollArea
{
    Q_OBJECT

public:
    /** @param settings  becomes a child of this page
     *  @param clicked   the slot of `receiver`, as SLOT() writes it, for every button's click */
    ControlPage(Rows<CommandRow> commands, QWidget *settings, QObject *receiver,
                const char *clicked, QWidget *parent = nullptr);

    StatusLines &status() { return *m_status; }

    /** Shows what can be asked for, and why not all can.
     *  @param lost  why the device cannot be reached; empty when it can */
    void setAccess(const QString &lost, bool mayControl);

protected:
    /** A user who may only look gets no hints, ... */
    void changeEvent(QEvent *event) override;
    /** ... but scrolls the disabled page. */
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showHint();

    const Rows<CommandRow> m_commands;
    bool m_isLost = false;
    StatusLines *m_status = nullptr;
    NoteText *m_hint = nullptr;
};
