#pragma once

#include <QColor>
#include <QCoreApplication>
#include <QPalette>
#include <QString>

/** How much an event matters; the worse, the higher. */
enum class Severity { Information, Warning, Critical };

/**
 * The severity of the plug-in's events, which its contract gives by number and text only.
 *
 * The numbers go by what stops the UPS or its battery (critical), what it says of a test that
 * passed or runs (information), and everything else (warning). A host that guessed from texts
 * would depend on the language.
 */
class Severities
{
    Q_DECLARE_TR_FUNCTIONS(Severities)

public:
    /** @param flag  number of the event, from 0 */
    static Severity ofFlag(int flag);

    static QString text(Severity severity);
    /** ■, ▲ or ●: so that it reads without colour. */
    static QString mark(Severity severity);
    static QColor color(Severity severity, const QPalette &palette);
};

/** One of two colours, so that it stands out from the palette's ground. */
QColor onGround(const QPalette &palette, QRgb onLight, QRgb onDark);
