#pragma once

#include "energystate.h"

#include <QFont>
#include <QPolygonF>
#include <QRectF>

struct EnergyBlockRow;

/** Which panels are open, by the view flag of their block. */
using EnergyViewFlags = std::array<bool, 6>;

/** A block's square and whether it carries energy. */
struct SceneBlock
{
    const EnergyBlockRow *row;
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
    SceneBlock battery {};
    QRectF batteryLevel;          ///< filled part of the battery
    std::vector<QPolygonF> flows; ///< lines along which energy flows
    std::vector<SceneText> texts; ///< the open panels
};

/** The font of the panels: narrowed as far as their widest values need it in this language, for
 *  the family may be missing and its stand-in be wider. */
QFont energyFont();

/** The diagram's centre: half its size, rounded down to whole points. */
QPointF energyCentre(const QSize &size);

/** Lays the diagram out around `centre`, its texts in `font`. */
EnergyScene energyScene(const EnergyState &state, const EnergyViewFlags &viewFlags,
                        const QFont &font, const QPointF &centre);

/** The block under a point, edges included; null when there is none. */
const EnergyBlockRow *blockAt(const QPoint &point, const QPointF &centre);
