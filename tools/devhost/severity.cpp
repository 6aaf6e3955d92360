#include "severity.h"

#include <algorithm>
#include <iterator>

namespace {

struct FlagRow
{
    int first;
    int last;
    Severity severity;
};

// clang-format off
constexpr FlagRow flagRows[] = { // numbers that are in no row are warnings
    {  0, 12, Severity::Critical },    // bus, inverter, heat, short circuit, overload, shutdown
    { 16, 17, Severity::Critical },    // inverter relay, bus short
    { 22, 31, Severity::Critical },    // rectifier, inverter, PFC, fan, EPO, power supply
    { 50, 52, Severity::Critical },    // battery reversed, overload, battery disconnected
    { 56, 56, Severity::Critical },    // charger fault
    { 59, 59, Severity::Critical },    // battery voltage low
    { 65, 65, Severity::Critical },    // bypass fault
    { 70, 70, Severity::Critical },    // end of discharge
    { 71, 71, Severity::Information }, // battery test passed
    { 76, 76, Severity::Information }, // battery maintenance done
    { 94, 94, Severity::Information }, // a test runs
};

struct SeverityRow
{
    const char *text;
    const char *mark;
    QRgb onLight;
    QRgb onDark;
};

constexpr SeverityRow severityRows[] = { // by Severity
    { QT_TRANSLATE_NOOP("Severities", "Information"), "●", 0xff5b6285, 0xffb4bad6 },
    { QT_TRANSLATE_NOOP("Severities", "Warning"),     "▲", 0xff9a6200, 0xffe8b75a },
    { QT_TRANSLATE_NOOP("Severities", "Critical"),    "■", 0xffb3261e, 0xffff8f85 },
};
// clang-format on

const SeverityRow &rowOf(Severity severity)
{
    return severityRows[size_t(severity)];
}

} // namespace

Severity Severities::ofFlag(int flag)
{
    const auto *row =
        std::find_if(std::begin(flagRows), std::end(flagRows), [flag](const FlagRow &range) {
            return flag >= range.first && flag <= range.last;
        });
    return row == std::end(flagRows) ? Severity::Warning : row->severity;
}

QString Severities::text(Severity severity)
{
    return tr(rowOf(severity).text);
}

QString Severities::mark(Severity severity)
{
    return QString::fromUtf8(rowOf(severity).mark);
}

QColor Severities::color(Severity severity, const QPalette &palette)
{
    return onGround(palette, rowOf(severity).onLight, rowOf(severity).onDark);
}

QColor onGround(const QPalette &palette, QRgb onLight, QRgb onDark)
{
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    return QColor::fromRgb(isDark ? onDark : onLight);
}
