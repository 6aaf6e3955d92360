#pragma once

#include <QDialog>
#include <QPoint>

class QLabel;
class QPushButton;

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
    static constexpr int Notice = 0;   ///< only "Ok"
    static constexpr int Question = 1; ///< "Ok" and "Cancel"

    MsgBox(int type, QString text);

    /** Shows a box in the middle of `over`'s window and waits for the answer. `over` may be
     *  deleted meanwhile. */
    static bool ask(QWidget *over, int type, const QString &text);

public slots:
    void okBtn_press();
    void cancleBtn_press(); // spelling is bound by name

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void wrapLongLines();

    QPoint m_pressPos; // inside the dialog
    bool m_dragging = false;
    QLabel *m_label;
    QPushButton *m_okButton;
    QPushButton *m_cancelButton;
};

/** Puts a parentless `dialog` in the middle of `over`'s window and keeps it above that window. */
void placeOver(QWidget *over, QDialog &dialog);
