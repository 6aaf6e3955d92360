#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>
#include <QTimer>

/**
 * Acts on the next modal dialog as soon as it is shown; to be made before the call that blocks.
 *
 * Threads: GUI thread only.
 */
class ModalAnswer : public QObject
{
public:
    template <typename Action> explicit ModalAnswer(Action action)
    {
        connect(&m_poll, &QTimer::timeout, this, [this, action] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isVisible())
                return;
            m_poll.stop();
            m_answered = true;
            const QPointer<QDialog> shown = dialog;
            action(*dialog);
            if (shown && QTest::currentTestFailed())
                shown->reject(); // an action that failed has left it open
        });
        m_poll.start(5);
    }

    /** True when a dialog came. */
    bool hasAnswered() const { return m_answered; }

private:
    QTimer m_poll;
    bool m_answered = false;
};
