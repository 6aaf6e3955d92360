#pragma once

#include "cyclesettings.h"
#include "latestvalues.h"

#include <QPair>
#include <QVariant>
#include <QVector>

/** The current local time as "yyyy-MM-dd hh:mm:ss"; formats it once a second.
 *  Threads: one. */
class TimeText
{
public:
    QString now();

private:
    qint64 m_second = -1; // s since the epoch that m_text stands for
    QString m_text;
};

/** What every event of a cycle carries: "name", "protocol", "port" and "timeStr". */
QVariantMap eventHeader(const CycleSettings &settings, const QString &time);

/** The device information entries of a report beside the data points, in the host's order.
 *  @param state  communication state */
QVector<QPair<QString, QVariant>> deviceEntries(const CycleSettings &settings,
                                                const DataStore &data, int state);
