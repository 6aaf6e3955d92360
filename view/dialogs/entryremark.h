#pragma once

#include "parameterinformation.h"
#include "style/tone.h"

/** What is to be said of a value while it is typed. */
struct EntryRemark
{
    Tone tone = Tone::Plain;
    QString text; ///< empty when there is nothing to be said
};

/** Says what is wrong with `typed`, or what will be sent in its place. */
EntryRemark remarkOn(const ParameterInformation &setting, const QString &typed);
