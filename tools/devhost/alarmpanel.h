#pragma once

#include "alarmfilter.h"

#include <QTimer>
#include <QWidget>

class AlarmLog;
class QComboBox;
class QLabel;
class QPushButton;
class QTableView;

/**
 * The event log on the screen: filters, the table, and what can be done with its rows.
 *
 * Nothing is acknowledged by a click on a row, only by button or key, and only by users who may.
 *
 * Threads: GUI thread only.
 */
class AlarmPanel : public QWidget
{
    Q_OBJECT

public:
    explicit AlarmPanel(AlarmLog &log, QWidget *parent = nullptr);

    /** The devices that can be chosen in the filter; the choice stays while it is among them. */
    void setDevices(const QStringList &names);

    /** Whether the user may acknowledge. */
    void setMayAcknowledge(bool may);

    /** A note above the table, for example that the log is not kept; empty: none. */
    void setNote(const QString &note);

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

signals:
    void opened(const QString &device);

private:
    QWidget *createFilters();
    QTableView *createTable();
    void createActions();
    void addButton(QPushButton *button);
    void acknowledgeSelected();
    void acknowledgeShown();
    void copySelected();
    void exportShown();
    void showCounts();
    QList<qint64> idsToAcknowledge(const QModelIndexList &rows) const;

    AlarmLog &m_log;
    AlarmFilter m_filter;
    QTimer m_counting; // of many changes at once
    QTableView *m_table = nullptr;
    QComboBox *m_devices = nullptr;
    QPushButton *m_acknowledge = nullptr;
    QPushButton *m_acknowledgeAll = nullptr;
    QLabel *m_note = nullptr;
    bool m_mayAcknowledge = true;
};
