#pragma once

#include "hostevent.h"

#include <QTableWidget>

/**
 * The host's event log on the screen: newest first, a new alarm marked until somebody clicks it.
 *
 * Threads: GUI thread only. Keeps the latest thousand lines.
 */
class EventTable : public QTableWidget
{
    Q_OBJECT

public:
    explicit EventTable(QWidget *parent = nullptr);

    void prepend(const LogEntry &entry);

    /** Three lines high. */
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    enum Column { Time, Device, State, Text, ColumnCount };

    static QString stateText(LogEntry::Kind kind);
    void acknowledge(int row);
};
