#include "style/tone.h"

#include "style/viewcolors.h"

#include <algorithm>
#include <cmath>

namespace {

struct ToneRow
{
    const char *mark;
    QColor color;
};

// In the order of Tone.
constexpr ToneRow tones[] = {
    { "\u25cb", ViewColors::secondaryText },
    { "\u25cf", ViewColors::normal },
    { "\u25b2", ViewColors::attention },
    { "\u25a0", ViewColors::alarm },
};

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

bool isDark(const QColor &ground)
{
    return luminance(ground) < 0.18;
}

QColor mixed(const QColor &a, const QColor &b, double part)
{
    return QColor::fromRgbF(a.redF() + (b.redF() - a.redF()) * part,
                            a.greenF() + (b.greenF() - a.greenF()) * part,
                            a.blueF() + (b.blueF() - a.blueF()) * part);
}

} // namespace

QString toneMark(Tone tone)
{
    return QString::fromUtf8(tones[int(tone)].mark);
}

double contrast(const QColor &a, const QColor &b)
{
    const auto [dark, light] = std::minmax({ luminance(a), luminance(b) });
    return (light + 0.05) / (dark + 0.05);
}

QColor toneColor(Tone tone, const QColor &ground, double least)
{
    const QColor own = tones[int(tone)].color;
    const QColor end = isDark(ground) ? Qt::white : Qt::black;
    QColor color = own;
    for (double part = 0; part <= 1 && contrast(color, ground) < least; part += 0.05)
        color = mixed(own, end, part);
    return color;
}

QColor pageGround(const QPalette &palette)
{
    constexpr int lighterPage = 126; // in percent, of a button's colour
    const QColor window = palette.color(QPalette::Window);
    const QColor page = palette.color(QPalette::Button).lighter(lighterPage);
    return isDark(window) && luminance(page) > luminance(window) ? page : window;
}

QColor toneGround(Tone tone, const QColor &ground)
{
    return mixed(ground, tones[int(tone)].color, 0.08);
}
