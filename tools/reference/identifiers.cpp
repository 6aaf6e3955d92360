#include "kx300/identifiers.h"
#include "hostvocabulary.h"
#include "markdown.h"
#include "sections.h"

#include <QMap>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

using Markdown::range;
using Markdown::table;

constexpr int phaseCount = 3;

struct NameRow
{
    int id;
    const char *name;
};

// What the tables use without a label of its own.
constexpr NameRow names[] = {
    { kx300::Id::InputPhases, "number of phases of the input" },
    { kx300::Id::OutputPhases, "number of phases of the output" },
    { kx300::Id::BypassPhases, "number of phases of the bypass" },
    { kx300::Id::TotalLoad, "total output load" },
    { kx300::Id::BypassPath, "bypass" },
    { kx300::Id::InputPath, "input" },
    { kx300::Id::RectifierPath, "rectifier" },
    { kx300::Id::InverterInputPath, "direct current into the inverter" },
    { kx300::Id::InverterOutputPath, "inverter" },
    { kx300::Id::LoadPath, "output" },
    { kx300::Id::BatteryPath, "battery" },
};

QString nameOf(int id)
{
    for (const NameRow &row : names) {
        if (row.id == id)
            return QString::fromUtf8(row.name);
    }
    std::fprintf(stderr, "reference: %d has no name, give it one in %s\n", id, __FILE__);
    std::exit(1);
}

struct Measurement
{
    QString label;
    QString unit;
    int count = 1;
    QString realData; // how it is shown there
    QString overview;
    QString dataLog;
};

using Measurements = QMap<int, Measurement>;

QString realDataForm(const ParameterRow &row)
{
    switch (row.type) {
    case IntegerValue:
    case DateValue:
        return QStringLiteral("whole");
    case OneDecimal:
        return QStringLiteral("one decimal");
    case ThreePhases:
        return QStringLiteral("R/S/T");
    case TwoDecimals:
        return QStringLiteral("two decimals");
    case TextValue:
        return QStringLiteral("text");
    case OptionValue:
        return QStringLiteral("state");
    }
    return {};
}

QString phasesForm(int phaseId)
{
    return phaseId == 0 ? QStringLiteral("one decimal")
                        : QStringLiteral("R/S/T when %1 is 3").arg(phaseId);
}

QString overviewForm(const DiagramLineRow &row)
{
    switch (row.kind) {
    case LineKind::Measured:
        return phasesForm(row.phaseId);
    case LineKind::Whole:
        return QStringLiteral("whole");
    case LineKind::State:
        return QStringLiteral("state");
    case LineKind::Text:
        return QStringLiteral("text");
    }
    return {};
}

void addPage(Rows<ParameterRow> rows, Measurements &all)
{
    for (const ParameterRow &row : rows) {
        Measurement &one = all[row.dataId];
        one.label = QString::fromUtf8(row.label);
        one.label.chop(1); // the colon
        one.unit = QString::fromUtf8(row.unit);
        one.count = row.type == ThreePhases ? phaseCount : qMax(1, row.length);
        one.realData = realDataForm(row);
    }
}

Measurement &measurement(int id, Measurements &all)
{
    if (!all.contains(id))
        all[id].label = nameOf(id);
    return all[id];
}

void addTrend(const TrendRow &row, Measurements &all)
{
    Measurement &one = measurement(row.dataId, all);
    one.unit = QString::fromUtf8(row.unit);
    one.overview += one.overview.isEmpty() ? QStringLiteral("trend") : QStringLiteral("; trend");
    if (row.lowLimitId != 0)
        one.overview +=
            QStringLiteral(" with the limits %1, %2").arg(row.lowLimitId).arg(row.highLimitId);
}

Measurements measurements(const Family &family)
{
    Measurements all;
    const ParameterPages &pages = family.pages;
    for (const Rows<ParameterRow> &page :
         { pages.device, pages.battery, pages.recInv, pages.input, pages.output, pages.bypass })
        addPage(page, all);
    for (const DiagramLineRow &row : family.diagram.lines) {
        Measurement &one = measurement(row.dataId, all);
        one.overview = overviewForm(row);
        one.count = row.phaseId != 0 ? phaseCount : one.count;
    }
    for (int i = 0; i < family.dataLogColumns.size(); ++i) {
        const DataLogColumn &column = family.dataLogColumns[i];
        Measurement &one = measurement(column.dataId, all);
        one.dataLog = QStringLiteral("column %1").arg(i);
        one.count = column.phaseId != 0 ? phaseCount : one.count;
    }
    for (const TrendRow &row : family.trends)
        addTrend(row, all);
    Measurement &load = measurement(family.ids.load, all);
    load.overview += QStringLiteral("; \"upsLoad\" of the host");
    return all;
}

QString measurementTable(const Family &family)
{
    const Measurements all = measurements(family);
    QList<QStringList> rows;
    for (auto one = all.begin(); one != all.end(); ++one)
        rows.append({ range(one.key(), one->count), one->label, one->unit, one->realData,
                      one->overview, one->dataLog });
    return table({ QStringLiteral("Identifier"), QStringLiteral("Value"), QStringLiteral("Unit"),
                   QStringLiteral("\"RT-data\""), QStringLiteral("\"Overview\""),
                   QStringLiteral("Data log") },
                 rows);
}

QString phaseTable(const Family &family)
{
    QMap<int, QMap<int, QString>> selected; // by number of phases
    for (const DiagramLineRow &row : family.diagram.lines) {
        if (row.phaseId != 0)
            selected[row.phaseId][row.dataId] = range(row.dataId, phaseCount);
    }
    for (const DataLogColumn &column : family.dataLogColumns) {
        if (column.phaseId != 0)
            selected[column.phaseId][column.dataId] = range(column.dataId, phaseCount);
    }
    QList<QStringList> rows;
    for (auto one = selected.begin(); one != selected.end(); ++one)
        rows.append({ QString::number(one.key()), nameOf(one.key()),
                      QStringList(one->values()).join(QStringLiteral(", ")) });
    return table(
        { QStringLiteral("Identifier"), QStringLiteral("Value"), QStringLiteral("Selects") }, rows);
}

QString flowNames(const FlowRow &row)
{
    QStringList parts;
    for (const int id : row.dataIds) {
        if (id != 0)
            parts += QStringLiteral("%1 (%2)").arg(id).arg(nameOf(id));
    }
    return parts.join(QStringLiteral(" and "));
}

QString flowTable(const DiagramTables &diagram)
{
    QList<QStringList> rows;
    for (int i = 0; i < diagram.flows.size(); ++i) {
        QStringList blocks;
        for (const DiagramBlockRow &block : diagram.blocks) {
            const bool carries = std::find(std::begin(block.flows), std::end(block.flows), i)
                != std::end(block.flows);
            if (carries)
                blocks += *block.title != '\0' ? QString::fromUtf8(block.title)
                                               : QStringLiteral("the battery");
        }
        rows.append({ flowNames(diagram.flows[i]), blocks.join(QStringLiteral(", ")),
                      i == diagram.chargingFlow ? QStringLiteral("charging") : QString() });
    }
    return table({ QStringLiteral("1 in"), QStringLiteral("Draws a flow between"), QString() },
                 rows);
}

const char measurementIntroduction[] =
    R"(## Measurements

Values in the unit of the table, not raw: 230.1 for 230.1 V. Three identifiers are the phases R, S, T; where the table
says "one decimal", the first alone is shown. A text has one character code for each of its identifiers, and zeros
behind it. Other identifiers are stored too: they reach the host
with 2007 and in "deviceInformation", and nothing here shows them.

)";

const char phaseIntroduction[] =
    R"(## Numbers of phases

Where the identifier is 3, "Overview" and the data log show the three phases; with any other number, or none, the first
one alone. Send them: 3 or 1.

)";

const char flowIntroduction[] =
    R"(## Energy flow

The diagram draws a flow where both identifiers are 1, and lights the blocks at its ends. Anything but 1 is no flow.

)";

} // namespace

QString measurementSections(const Family &family)
{
    return QString::fromUtf8(measurementIntroduction) + measurementTable(family)
        + QString::fromUtf8(phaseIntroduction) + phaseTable(family) + stateSection(family)
        + QString::fromUtf8(flowIntroduction) + flowTable(family.diagram);
}
