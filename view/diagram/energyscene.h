#pragma once

#include "diagram/energystate.h"

#include <QFont>
#include <QPolygonF>
#include <QRectF>
#include <QRegion>

constexpr int flowWidth = 5; // of a flow's line, in pixels

/** Which panels are open, by the view flag of their block. */
using EnergyViewFlags = std::array<bool, diagramViewFlagCount>;

/** A block's square and whether it carries energy. */
struct SceneBlock
{
    const DiagramBlockRow *row;
    QRectF rect;
    bool isLive;
};

enum class TextRole { Title, Label, Value };

/** A text and its room; a value ends at the right edge. */
struct SceneText
{
    QRectF rect;
    QString text;
    TextRole role;
};

/** The diagram as shapes: what is to be painted, and where. */
struct EnergyScene
{
    std::vector<SceneBlock> blocks; ///< the squares
    SceneBlock battery {};          ///< without a row when there is none
    QRectF batteryLevel;            ///< filled part of the battery
    std::vector<QPolygonF> flows;   ///< lines along which energy flows
    std::vector<SceneText> texts;   ///< the open panels
};

/** How the panels are written: where they stand, and in which font. */
struct EnergyLook
{
    Rows<DiagramPanelRow> panels;
    QFont font;
};

/** The sizes from which on all panels have room, small and large. */
constexpr QSize leastEnergySize(900, 460);
constexpr QSize largeEnergySize(1200, 560);

/** The look of the panels, large ones where the family has them. The font is narrowed as far as
 *  the widest values need it in this language, for the family may be missing and its stand-in be
 *  wider. */
EnergyLook energyLook(const DiagramTables &tables, bool isLarge);

/** The diagram's centre: half its size, rounded down to whole points. */
QPointF energyCentre(const QSize &size);

/** Lays the diagram out around `centre`. */
EnergyScene energyScene(const DiagramTables &tables, const EnergyState &state,
                        const EnergyViewFlags &viewFlags, const EnergyLook &look,
                        const QPointF &centre);

/** Where two diagrams of one size and the same flows differ; everything when their panels are not
 *  made of the same lines. */
QRegion changedArea(const EnergyScene &one, const EnergyScene &other, const QRect &everything);

/** What the lines of the flows cover. */
QRegion flowArea(const EnergyScene &scene);

/** Room for a note between the blocks at the left. */
QRectF noteRect(const QPointF &centre);

/** The square or the battery of a block. */
QRectF blockRect(const DiagramBlockRow &row, const QPointF &centre);

/** The block under a point, edges included; null when there is none. */
const DiagramBlockRow *blockAt(Rows<DiagramBlockRow> blocks, const QPoint &point,
                               const QPointF &centre);
