#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

/** One report of the device: data identifier -> latest value, a float. */
using DataReport = QMap<int, QVariant>;

/** A value as an integer, rounded; 0 when it is no number or fits no int. */
int integerOf(const QVariant &value);

/** The value of `id` as an integer; 0 when it is missing, too. */
int integerAt(const DataReport &report, int id);

/** The value of `id`; 0 when it is missing. */
float numberAt(const DataReport &report, int id);

/** The text of `length` character codes from `id` on, zeros left out and trimmed. */
QString textAt(const DataReport &report, int id, int length);

/** A value with so many decimals, whatever the locale: the one form in which values are shown and
 *  logged. Exact ties are rounded away from zero. */
QString decimalText(float value, int decimals);

/** The value of `id` in that form. */
QString decimalAt(const DataReport &report, int id, int decimals);

/** Whether the identifier `phaseId` says that a value has three phases; 0 stands for none. */
bool hasThreePhases(const DataReport &report, int phaseId);

/** The value of `id`, or the three phases from it on where the identifier `phaseId` says that there
 *  are three; 0 for none that says so. */
QString measuredAt(const DataReport &report, int id, int phaseId, int decimals);

/** The three phases from `id` on as "220.0/221.0/220.0". */
QString phasesAt(const DataReport &report, int id, int decimals);
