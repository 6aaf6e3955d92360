#pragma once

#include "controlrow.h"

#include <QString>

#include <array>

/** The driver's command: zero-terminated and zero-filled. */
using CommandText = std::array<char, 50>;

/** Builds the driver's command in the local 8-bit encoding.
 *  A value that does not fit is cut, and never in the middle of a character. */
CommandText commandText(const CommandRow &row, const QString &value);
