#pragma once

#include <QPalette>
#include <QString>

/** How good or bad it is what a text says. */
enum class Tone { Plain, Good, Attention, Alarm };

/** The mark that stands before a text, so that its tone is seen in grey, too. */
QString toneMark(Tone tone);

constexpr double readableContrast = 4.5;
constexpr double visibleContrast = 3; ///< of lines that are no text

/** The tone's colour on `ground`: as dark, or as light, as that contrast takes. */
QColor toneColor(Tone tone, const QColor &ground, double least = readableContrast);

/** The ratio of two colours' luminances, 1 to 21. */
double contrast(const QColor &a, const QColor &b);

/** The ground of what stands on a tab: in a dark palette styles make it lighter than the window. */
QColor pageGround(const QPalette &palette);

/** `ground` with 8 % of the tone's colour. */
QColor toneGround(Tone tone, const QColor &ground);
