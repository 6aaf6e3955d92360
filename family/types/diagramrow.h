#pragma once

#include "rows.h"

#include <QtGlobal>

/** The panels of the energy-flow diagram. */
enum class DiagramPanel { Input, Bypass, RecInv, Load, Battery, Device };

constexpr int diagramPanelCount = 6;
constexpr int diagramViewFlagCount = 6; // a click on a block inverts some; they open the panels

enum class LineKind { Measured, Whole, State, Text };

/** One line of a panel and where its value comes from. */
struct DiagramLineRow
{
    DiagramPanel panel;
    const char *label;
    LineKind kind;
    int dataId;
    int phaseId;               ///< this identifier equal to 3 selects three phases; 0: single value
    const char *pattern;       ///< of a measured or whole number
    Rows<const char *> states; ///< the text of each state
    int length = 0;            ///< number of character codes of a text
};

struct DiagramPoint
{
    double x;
    double y;
};

/** Place of a panel relative to the diagram's centre, all lengths in points. */
struct DiagramPanelRow
{
    DiagramPanel panel;
    int viewFlag; ///< -1: always shown
    DiagramPoint topLeft;
    double width;
    double pitch; ///< distance of the lines
    const char *title;
};

enum class DiagramForm {
    Square,  ///< with title and image
    Battery, ///< filled as far as it is charged; at most one
};

/** A block of the diagram relative to its centre; clicks are looked up in the order of the rows. */
struct DiagramBlockRow
{
    DiagramForm form;
    DiagramPoint topLeft;
    double width;
    double height;
    const char *title;
    const char *image; ///< path of a resource
    int viewFlags[2];  ///< that a click inverts; -1: none
    int flows[3];      ///< the block carries energy when one of them does; -1: none
};

/** One flow: the identifiers that must be 1, and its line relative to the diagram's centre, in
 *  points. */
struct FlowRow
{
    int dataIds[2]; ///< 0: none
    int pointCount;
    DiagramPoint points[4];
};

/** The energy-flow diagram; its texts are translated in the context "Energyline". */
struct DiagramTables
{
    Rows<DiagramPanelRow> panels;
    Rows<DiagramLineRow> lines;
    Rows<DiagramBlockRow> blocks;
    Rows<FlowRow> flows;                  ///< blocks name them by place
    int chargingFlow;                     ///< the one into the battery; -1: none
    Rows<DiagramPanelRow> largePanels {}; ///< places for texts of 12 pt; {}: they stay small
};
