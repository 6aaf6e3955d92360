#pragma once

#include "registermap.h"

#include <QMap>
#include <QString>

/**
 * What the maker of the device says of one register, for a test to judge the client by
 * (tools/measurementrows.h, tools/settingrows.h).
 */
struct FarRegister
{
    int id = 0;
    int count = 1; ///< registers of a text
    QString name;  ///< lower case; of several alike the second's ends in " 2"
    QMap<int, QString> codes;
    registermap::Format format = registermap::Format::Unsigned;
    double scale = 1;
    QString unit;
    int min = 0; ///< raw, of settings
    int max = 0;

    double value(int raw) const { return registermap::rawNumber(format, quint16(raw)) * scale; }

    /** Whether a text stands for the raw value: its code's words, or the number, rounded as it is
     *  written, and the unit if it has one. */
    bool isShownAs(const QString &text, int raw) const;
};

/** All settings, and all measurements, by identifier. */
QMap<int, FarRegister> farSettings();
QMap<int, FarRegister> farMeasurements();

/** The register that the client calls by this label; id 0 when the maker knows none. */
FarRegister farRegister(const QMap<int, FarRegister> &registers, const QString &label);

/** What the client says, in the maker's words and in lower case. */
QString inFarWords(const QString &text);
