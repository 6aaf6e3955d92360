#pragma once

#include "pages/eventrecord.h"

#include <QWidget>

class NoteLine;
class QToolButton;
class RecordTable;

/** What is known about the alarms of a device. */
struct AlarmState
{
    QVector<RecordedEvent> events; ///< those that are present, newest first
    QDateTime lastCleared;         ///< invalid when none has gone yet
    bool isKnown = false;          ///< the device has reported at all
    QString lost;                  ///< why they are not known now; empty when they are
};

/** Tells whether two states look the same; by their data, which they share as long as they do. */
bool areAlike(const AlarmState &a, const AlarmState &b);

/** One line about the alarms. */
QString alarmText(const AlarmState &state, const QDate &today);

/**
 * The events that are present, and a line that says how far they can be trusted.
 *
 * Threads: GUI thread only.
 */
class AlarmPage : public QWidget
{
    Q_OBJECT

public:
    /** @param texts  the description of event k at index k */
    explicit AlarmPage(const QStringList &texts, QWidget *parent = nullptr);

    /** Shows a state; writes only what differs. */
    void show(const AlarmState &state);

private:
    void write();

    const QStringList m_texts;
    AlarmState m_state;
    QDate m_today; // that was written
    NoteLine *m_line;
    QToolButton *m_worstFirst;
    RecordTable *m_table;
};
