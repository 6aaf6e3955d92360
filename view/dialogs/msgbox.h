#pragma once

#include "style/tone.h"

#include <QDialog>
#include <QPoint>

class NoteText;
class QLabel;
class QPushButton;

/** What a question is about; empty texts take no room. */
struct BoxAbout
{
    QString device;
    QString consequence; ///< of "Ok"
    Tone tone = Tone::Plain;
    QString details {}; ///< shown on request, below the text
};

/**
 * A frameless question or notice; exec() returns Accepted for "Ok" and Rejected for "Cancel".
 *
 * A question starts with the focus on "Cancel", so that a stray Enter confirms nothing.
 *
 * Threads: GUI thread only.
 */
class MsgBox : public QDialog
{
    Q_OBJECT

public:
    enum Type : int {
        Notice,   ///< only "Ok"
        Question, ///< "Ok" and "Cancel"
    };

    MsgBox(int type, QString text);

    /** Says above the text what it is about. */
    void tell(const BoxAbout &about);

    /** Shows a box in the middle of `over`'s window and waits for the answer. `over` may be
     *  deleted meanwhile. */
    static bool ask(QWidget *over, int type, const QString &text, const BoxAbout &about = {});

    /** Shows a notice that leaves `window` in sight, as far as the screen has room for both. */
    static void notify(QWidget &window, const QString &text);

public slots:
    void okBtn_press();
    void cancleBtn_press(); // spelling is bound by name

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void wrapLongLines();
    NoteText *addNote(int place);
    void addDetails(const QString &details);

    QPoint m_pressPos; // inside the dialog
    bool m_dragging = false;
    QLabel *m_label;
    QPushButton *m_okButton;
    QPushButton *m_cancelButton;
};

/** Where a box stands beside a window: below it, or else above it, within the screen. */
QPoint besideWindow(const QRect &window, const QSize &box, const QRect &screen);

/** Puts a parentless `dialog` in the middle of `over`'s window and keeps it above that window. */
void placeOver(QWidget *over, QDialog &dialog);
