#pragma once

#include "eventrow.h"
#include "pages/eventrecord.h"

#include <QTableWidget>

class QLabel;

/** The table of the events that are present, each with the mark of its severity; says so when there
 *  are none. */
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

    /** What stands in the middle while there are no events. */
    void setEmptyNote(const QString &text);

    /** Shows the events faint and slanted, as those of a device that does not answer. */
    void setStale(bool stale);

protected:
    void changeEvent(QEvent *event) override;

private:
    void writeMark(int row, EventSeverity severity);
    void fitToFont();

    QLabel *m_emptyNote;
    QVector<EventSeverity> m_marks; // by row, as far as there are any
    bool m_isStale = false;
};
