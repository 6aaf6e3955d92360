#pragma once

#include <QMap>
#include <QVariant>

/** One report of the device: data identifier -> latest value, a float. */
using DataReport = QMap<int, QVariant>;

/** A value as an integer; 0 when it is no number or fits no int. */
int integerOf(const QVariant &value);

/** The value of `id` as an integer; 0 when it is missing, too. */
int integerAt(const DataReport &report, int id);

/** The value of `id`; 0 when it is missing. */
float numberAt(const DataReport &report, int id);

/** The text of `length` character codes from `id` on, zeros left out and trimmed. */
QString textAt(const DataReport &report, int id, int length);
