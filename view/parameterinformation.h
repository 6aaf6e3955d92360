#pragma once

#include "parameterrow.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

/**
 * The description of one value that is shown, or of one setting that can be changed.
 *
 * Ownership: belongs to the tavoViewData whose list holds it.
 */
struct ParameterInformation
{
    QString name;             ///< label, translated
    QString value;            ///< text shown before any data arrives; then the last one entered
    QString unit;             ///< translated; may be empty
    float scale = 0;          ///< raw bound * scale = bound in `unit`
    int max = 0;              ///< highest raw value
    int min = 0;              ///< lowest raw value; min = max = 0: no range
    int type = IntegerValue;  ///< a DisplayType
    int dataId = 0;           ///< data identifier, the first one of a type that spans several
    QString text;             ///< kept for the host's record layout; empty
    int length = 0;           ///< number of identifiers of a text, 0 for all other types
    int enabled = 1;          ///< kept for the host's record layout
    QMap<QString, int> combo; ///< option text -> option value, in the order of the texts

    bool hasRange() const { return min != 0 || max != 0; }

    /** Numbers the options from 0; a text given twice keeps the later number. */
    void addCombo(const QStringList &options);

    /** Gives each option the value at its place, cut to an integer; the shorter list counts. */
    void addCombo(const QStringList &options, const QList<float> &values);
};
