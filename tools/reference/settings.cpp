#include "markdown.h"
#include "sections.h"

#include <algorithm>
#include <cmath>

namespace {

using Markdown::range;

QString plain(const char *label)
{
    QString text = QString::fromUtf8(label);
    if (text.endsWith(QLatin1Char(':')))
        text.chop(1);
    return text;
}

QString number(float value)
{
    return QString::number(static_cast<double>(value), 'g', 7);
}

// What the dialog sends for an option; the value that a driver reports is this times the scale.
QString optionTexts(const ParameterRow &row)
{
    QStringList texts;
    for (const OptionRow &option : row.options)
        texts += QStringLiteral("%1: %2").arg(
            number(std::round(row.scale == 0 ? option.value : option.value / row.scale)),
            QString::fromUtf8(option.text));
    return texts.join(QStringLiteral(", "));
}

QString allowed(const ParameterRow &row)
{
    if (row.type == TextValue)
        return QStringLiteral("text of %1 characters").arg(row.length);
    if (!row.options.isEmpty())
        return optionTexts(row);
    return row.min == 0 && row.max == 0 ? QStringLiteral("any")
                                        : QStringLiteral("%1 to %2").arg(row.min).arg(row.max);
}

void addRows(Rows<ParameterRow> settings, QList<QStringList> &rows)
{
    for (const ParameterRow &row : settings)
        rows.append({ range(row.dataId, row.length), plain(row.label), QString::fromUtf8(row.unit),
                      row.type == TextValue ? QString() : number(row.scale), allowed(row) });
}

QString cellRangeTable(const Family &family)
{
    QStringList titles { QStringLiteral("Identifier") };
    for (int type = 0; type < batteryTypeCount; ++type)
        titles += QStringLiteral("%1 = %2").arg(family.ids.batteryType).arg(type);
    QList<QStringList> rows;
    for (const CellRangeRow &row : family.cellRanges) {
        QStringList cells { QString::number(row.dataId) };
        for (const RawRange &bounds : row.byBatteryType)
            cells += QStringLiteral("%1 to %2").arg(bounds.min).arg(bounds.max);
        rows.append(cells);
    }
    return Markdown::table(titles, rows);
}

const char introduction[] =
    R"(## Settings

A driver reports the value in its unit, which is **raw × scale**. Command 2016 brings `identifier,raw` to it, and for a
text `identifier,text`: the raw number is what the device's register takes. "Allowed" is raw, and what the view asks for
before it sends; whoever calls the client's `control()` is not checked, so the device or the driver has to. An option is
given as raw number and text.

)";

} // namespace

QString settingSections(const Family &family)
{
    const ParameterPages &pages = family.pages;
    QList<QStringList> rows;
    for (const Rows<ParameterRow> &page :
         { pages.basicConfig, pages.batteryConfig, pages.adjustConfig, pages.specialConfig,
           pages.devInfoConfig })
        addRows(page, rows);
    std::sort(rows.begin(), rows.end()); // all identifiers have four digits
    const QStringList titles { QStringLiteral("Identifier"), QStringLiteral("Setting"),
                               QStringLiteral("Unit"), QStringLiteral("Scale"),
                               QStringLiteral("Allowed") };
    return QString::fromUtf8(introduction) + Markdown::table(titles, rows)
        + QStringLiteral("These follow the type of battery instead:\n\n") + cellRangeTable(family);
}
