#pragma once

#include "parameterinformation.h"

/** Equal within the fifth digit; nothing but 0 equals 0. */
bool nearlyEqual(float a, float b);

/** What the user typed as a number; 0 when it is none. A decimal comma is no number.
 *  Too large a number is infinite. */
float typedNumber(const QString &text);

/** A typed number in raw units: divided by `scale`, not rounded; infinite or NaN when it cannot
 *  be. */
float rawFromTyped(float typed, float scale);

/** An option's value in raw units, not rounded.
 *  @param text  the option's text; "0.5" stands for the value 0.5, which its integer cannot keep */
float rawFromOption(int value, const QString &text, float scale);

/** True when the rounded value can be sent without loss. */
bool isSendable(float raw);

/** The whole number nearest to `raw`, halves upwards; 0 when it is not sendable. */
int roundedRaw(float raw);

/** The argument of the set-parameter command: "identifier,value". A text is cut to the record's
 *  length, anything else is sent as `raw`. */
QString requestText(const ParameterInformation &record, const QString &text, int raw);
