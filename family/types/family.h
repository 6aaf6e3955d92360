#pragma once

#include "controlrow.h"
#include "datalogrow.h"
#include "diagramrow.h"
#include "eventrow.h"
#include "historyrow.h"
#include "parameterrow.h"
#include "staterow.h"
#include "trendrow.h"

/** The tables of the parameters that the view shows, by page or panel. */
struct ParameterPages
{
    Rows<ParameterRow> device;
    Rows<ParameterRow> battery;
    Rows<ParameterRow> recInv;
    Rows<ParameterRow> input;
    Rows<ParameterRow> output;
    Rows<ParameterRow> bypass;
    Rows<ParameterRow> basicConfig;
    Rows<ParameterRow> batteryConfig;
    Rows<ParameterRow> adjustConfig;
    Rows<ParameterRow> specialConfig;
    Rows<ParameterRow> devInfoConfig;
};

/** The codes of a downloaded history. */
struct HistoryTables
{
    Rows<HistoryTextRow> statuses;
    Rows<HistoryTextRow> modes;
    Rows<HistoryTextRow> contents;
};

/** Data identifiers that the client or the view reads by itself. */
struct KnownIds
{
    int model;        ///< first character code of the model's text
    int modelLength;  ///< number of its character codes
    int load;         ///< output load in percent
    int capacity;     ///< remaining battery capacity in percent
    int batteryType;  ///< selects the cell ranges; 0: the family has none
    int autonomy = 0; ///< remaining time on battery in minutes; 0: the family has none
};

/**
 * All that makes a plug-in the one of its model family: names, and tables that client, view and
 * upgrade walk. Another family is another object of this type (docs/adding-a-family.md).
 *
 * Texts are marked in the tables and translated by whoever shows them.
 */
struct Family
{
    const char *driverLibrary;    ///< bare name, without the platform's suffix
    const char *upgradeProgram;   ///< below the application's folder
    const char *parameterContext; ///< translation context of the parameters' texts
    int deviceCode;               ///< the view's m_devCode, for the host
    KnownIds ids;
    Rows<EventRow> events;
    Rows<SpecialFlagRow> specialFlags;
    ParameterPages pages;
    Rows<CellRangeRow> cellRanges;
    Rows<CommandRow> commands;
    HistoryTables history;
    Rows<const char *> dataLogTitles;
    Rows<DataLogColumn> dataLogColumns;
    DiagramTables diagram;
    StateTables states {};
    Rows<TrendRow> trends {};
};

/** The family that this plug-in serves; defined by the family, which each plug-in links one of. */
const Family &deviceFamily();
