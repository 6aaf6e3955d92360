#pragma once

#include "parameterchecks.h"

#include <string_view>

/** What the tables of a family must hold to; each family asserts isSound() when it is compiled. */
namespace FamilyChecks {

constexpr bool isWithin(int index, int count)
{
    return index >= 0 && index < count;
}

/** -1 stands for none. */
constexpr bool isWithinOrNone(int index, int count)
{
    return index == -1 || isWithin(index, count);
}

/** Columns name titles that there are, states have a text for what has none of its own, and nothing
 *  else has phases than what is written with them. */
constexpr bool isDataLogSound(const Family &family)
{
    for (const DataLogColumn &column : family.dataLogColumns) {
        const bool isState = column.form == LogForm::State || column.form == LogForm::CutState;
        if (!isWithin(column.title, family.dataLogTitles.size())
            || (isState && column.states.isEmpty())
            || (column.phaseId != 0 && column.form != LogForm::Phases))
            return false;
    }
    return true;
}

/** Special flags are events that there are. */
constexpr bool areFlagsSound(const Family &family)
{
    for (const SpecialFlagRow &flag : family.specialFlags) {
        if (!isWithin(flag.event, family.events.size()))
            return false;
    }
    return true;
}

/** No command and no button stands twice: the first would hide the second. */
constexpr bool areCommandsSound(const Family &family)
{
    for (const CommandRow &row : family.commands) {
        for (const CommandRow *other = &row + 1; other != family.commands.end(); ++other) {
            const std::string_view name = row.button.name;
            if (row.command == other->command || (!name.empty() && name == other->button.name))
                return false;
        }
    }
    return true;
}

/** No history code is negative or stands twice. */
constexpr bool areCodesSound(Rows<HistoryTextRow> rows)
{
    for (const HistoryTextRow &row : rows) {
        for (const HistoryTextRow *other = &row + 1; other != rows.end(); ++other) {
            if (row.code == other->code)
                return false;
        }
        if (row.code < 0)
            return false;
    }
    return true;
}

constexpr bool hasPlace(Rows<DiagramPanelRow> panels, DiagramPanel panel)
{
    for (const DiagramPanelRow &row : panels) {
        if (row.panel == panel)
            return true;
    }
    return false;
}

/** Lines have a panel; blocks name flows and view flags that there are; flows fit their points. */
constexpr bool isDiagramSound(const DiagramTables &tables)
{
    for (const DiagramPanelRow &row : tables.panels) {
        if (!isWithinOrNone(row.viewFlag, diagramViewFlagCount))
            return false;
    }
    for (const DiagramLineRow &row : tables.lines) {
        if (!hasPlace(tables.panels, row.panel)
            || !(tables.largePanels.isEmpty() || hasPlace(tables.largePanels, row.panel)))
            return false;
    }
    for (const DiagramBlockRow &row : tables.blocks) {
        for (const int flag : row.viewFlags) {
            if (!isWithinOrNone(flag, diagramViewFlagCount))
                return false;
        }
        for (const int flow : row.flows) {
            if (!isWithinOrNone(flow, tables.flows.size()))
                return false;
        }
    }
    for (const FlowRow &row : tables.flows) {
        if (row.pointCount > int(sizeof row.points / sizeof *row.points))
            return false;
    }
    return isWithinOrNone(tables.chargingFlow, tables.flows.size());
}

/** Their memory is bounded. */
constexpr bool areTrendsSound(Rows<TrendRow> rows)
{
    return rows.size() <= maxTrends;
}

constexpr bool isSound(const Family &family)
{
    return isDataLogSound(family) && areFlagsSound(family) && areCommandsSound(family)
        && areCodesSound(family.history.statuses) && areCodesSound(family.history.modes)
        && areCodesSound(family.history.contents) && isDiagramSound(family.diagram)
        && areTrendsSound(family.trends) && arePagesSound(family.pages)
        && areLinesSound(family.diagram.lines) && areDriverCodesSound(family.commands);
}

} // namespace FamilyChecks
