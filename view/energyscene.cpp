#include "energyscene.h"

#include "energytables.h"

#include <algorithm>

namespace {

constexpr double LabelGap = 8;
constexpr double TerminalHeight = 7;
constexpr double BatteryInset = 5; // between the battery's outline and its filling

QRectF rectOf(const EnergyBlockRow &row, const QPointF &centre)
{
    return { centre.x() + row.topLeft.x, centre.y() + row.topLeft.y, row.width, row.height };
}

bool isLive(const EnergyBlockRow &row, const EnergyFlows &flows)
{
    return std::any_of(std::begin(row.flows), std::end(row.flows), [&flows](int flow) {
        return flow >= 0 && flows[static_cast<std::size_t>(flow)];
    });
}

QRectF levelRect(const QRectF &battery, double level)
{
    const QRectF body =
        battery.adjusted(BatteryInset, BatteryInset + TerminalHeight, -BatteryInset, -BatteryInset);
    return { body.left(), body.bottom() - body.height() * level, body.width(),
             body.height() * level };
}

void addPanel(const EnergyPanelRow &row, const std::vector<EnergyLine> &lines, double labelWidth,
              const QPointF &centre, std::vector<SceneText> &texts)
{
    QRectF line(centre.x() + row.topLeft.x, centre.y() + row.topLeft.y, row.width, row.pitch);
    if (*row.title != '\0') {
        texts.push_back({ line, EnergyTables::tr(row.title), TextRole::Title });
        line.translate(0, row.pitch);
    }
    for (const EnergyLine &entry : lines) {
        texts.push_back({ line, entry.label, TextRole::Label });
        texts.push_back(
            { line.adjusted(labelWidth + LabelGap, 0, 0, 0), entry.value, TextRole::Value });
        line.translate(0, row.pitch);
    }
}

} // namespace

QPointF energyCentre(const QSize &size)
{
    return QPointF(size.width() / 2, size.height() / 2);
}

EnergyScene energyScene(const EnergyState &state, const EnergyViewFlags &viewFlags,
                        const LabelWidths &labelWidths, const QPointF &centre)
{
    EnergyScene scene;
    for (const EnergyBlockRow &row : EnergyTables::blocks) {
        const SceneBlock block { &row, rectOf(row, centre), isLive(row, state.flows) };
        if (row.block == EnergyBlock::Battery)
            scene.battery = block;
        else
            scene.blocks.push_back(block);
    }
    scene.batteryLevel = levelRect(scene.battery.rect, static_cast<double>(state.capacity));
    for (std::size_t i = 0; i < state.flows.size(); ++i) {
        const EnergyFlowRow &row = EnergyTables::flows[i];
        if (!state.flows[i])
            continue;
        QPolygonF line;
        for (int k = 0; k < row.pointCount; ++k)
            line << centre + QPointF(row.points[k].x, row.points[k].y);
        scene.flows.push_back(line);
    }
    for (const EnergyPanelRow &row : EnergyTables::panels) {
        const auto panel = static_cast<std::size_t>(row.panel);
        if (row.viewFlag < 0 || viewFlags[static_cast<std::size_t>(row.viewFlag)])
            addPanel(row, state.panels[panel], labelWidths[panel], centre, scene.texts);
    }
    return scene;
}

const EnergyBlockRow *blockAt(const QPoint &point, const QPointF &centre)
{
    for (const EnergyBlockRow &row : EnergyTables::blocks) {
        const QRectF rect = rectOf(row, centre);
        const bool isInside = point.x() >= rect.left() && point.x() <= rect.right()
            && point.y() >= rect.top() && point.y() <= rect.bottom();
        if (isInside)
            return &row;
    }
    return nullptr;
}
