#pragma once

#include "eventrecord.h"

#include <QTableWidget>

class QLabel;

/** The table of the events that are present; says so when there are none. */
class RecordTable : public QTableWidget
{
    Q_OBJECT

public:
    enum Column { TimeColumn, DescriptionColumn, ColumnCount };

    /** @param headers  the titles, in the order of Column */
    explicit RecordTable(const QStringList &headers, QWidget *parent = nullptr);

    /** Shows the events in their order; writes only what differs.
     *  @param texts  the description of event k at index k */
    void showEvents(const QVector<RecordedEvent> &events, const QStringList &texts);

private:
    QLabel *m_emptyNote;
};
