#pragma once

#include "historyoutcome.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class NoteLine;
class QToolButton;

/**
 * Says how a history download goes, from the choice of the file to what is in it.
 *
 * While one runs, the time it takes is counted; nothing is while this is hidden.
 *
 * Threads: GUI thread only.
 */
class HistoryNote : public QWidget
{
    Q_OBJECT

public:
    explicit HistoryNote(QWidget *parent = nullptr);

    /** A download was asked for.
     *  @param file  empty when the user cancelled the choice of one */
    void begin(const QString &file);

    /** A download has ended, whoever asked for it. */
    void end(const HistoryOutcome &outcome);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void showElapsed();
    void tell(const HistoryOutcome &outcome);
    void openFolder();

    NoteLine *m_line;
    QToolButton *m_open;
    QString m_file;
    QElapsedTimer m_since; // valid while a download runs
    QTimer m_tick { this };
    bool m_wasCancelled = false;
};
