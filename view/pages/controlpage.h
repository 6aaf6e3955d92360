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
    /** Settings are not offered to be changed while nothing can be sent. */
    void setLinked(bool isLinked);

protected:
    /** A user who may only look gets no hints, ... */
    void changeEvent(QEvent *event) override;
    /** ... but scrolls the disabled page. */
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showHint();

    bool m_isLinked = true;
    StatusLines *m_status = nullptr;
    NoteText *m_hint = nullptr;
};
