#pragma once

#include "datareport.h"
#include "devicesettings.h"
#include "family.h"

#include <QDateTime>
#include <QPair>
#include <QVariant>
#include <QVector>

/** Entries of the device information map. */
using DeviceEntries = QVector<QPair<QString, QVariant>>;

/** The current local time as "yyyy-MM-dd hh:mm:ss"; formats it once a second.
 *  Threads: one. */
class TimeText
{
public:
    QString now();

    /** The time that such a text stands for. */
    static QDateTime read(const QString &text);

private:
    qint64 m_second = -1; // s since the epoch that m_text stands for
    QString m_text;
};

/** What every event of a cycle carries: "name", "protocol", "port" and "timeStr". */
QVariantMap eventHeader(const DeviceSettings &settings, const QString &time);

/** The device information entries of a report beside the data points and what the host wrote there
 *  itself.
 *  @param state  communication state */
DeviceEntries deviceEntries(const DeviceSettings &settings, const KnownIds &ids,
                            const DataReport &data, int state);
