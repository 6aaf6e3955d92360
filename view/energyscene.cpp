#include "energyscene.h"

#include "energytables.h"

#include <QFontMetricsF>

#include <algorithm>

namespace {

constexpr int FontSize = 13; // in pixels, like all lengths of the diagram
constexpr int LeastStretch = 70;
constexpr double LabelGap = 8; // at least half of it is kept
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

// Room for the widest value that a device reports; its own texts are cut where they do not fit.
double valueWidth(const EnergyLineRow &row, const QFontMetricsF &metrics)
{
    const auto numberWidth = [&](const char *number) {
        return metrics.horizontalAdvance(
            EnergyTables::tr(row.pattern).arg(QString::fromLatin1(number)));
    };
    double width = 0;
    switch (row.kind) {
    case EnergyLineKind::Measured:
        return numberWidth(row.phaseId != 0 ? "000.0/000.0/000.0" : "000.0");
    case EnergyLineKind::Whole:
        return numberWidth("00000");
    case EnergyLineKind::State:
        for (int i = 0; i < row.states.count; ++i)
            width =
                std::max(width, metrics.horizontalAdvance(EnergyTables::tr(row.states.texts[i])));
        return width;
    case EnergyLineKind::Text:
        break;
    }
    return width;
}

double panelWidth(EnergyPanel panel)
{
    const auto *const row =
        std::find_if(std::begin(EnergyTables::panels), std::end(EnergyTables::panels),
                     [panel](const EnergyPanelRow &r) { return r.panel == panel; });
    return row->width;
}

bool fitsPanels(const QFont &font)
{
    const QFontMetricsF metrics(font);
    return std::all_of(std::begin(EnergyTables::lines), std::end(EnergyTables::lines),
                       [&metrics](const EnergyLineRow &row) {
                           return metrics.horizontalAdvance(EnergyTables::tr(row.label)) + LabelGap
                               + valueWidth(row, metrics)
                               <= panelWidth(row.panel);
                       });
}

void addPanel(const EnergyPanelRow &row, const std::vector<EnergyLine> &lines,
              const QFontMetricsF &metrics, const QPointF &centre, std::vector<SceneText> &texts)
{
    QRectF line(centre.x() + row.topLeft.x, centre.y() + row.topLeft.y, row.width, row.pitch);
    if (*row.title != '\0') {
        texts.push_back({ line, EnergyTables::tr(row.title), TextRole::Title });
        line.translate(0, row.pitch);
    }
    for (const EnergyLine &entry : lines) {
        const double valueStart = metrics.horizontalAdvance(entry.label) + LabelGap / 2;
        texts.push_back({ line, entry.label, TextRole::Label });
        texts.push_back({ line.adjusted(valueStart, 0, 0, 0), entry.value, TextRole::Value });
        line.translate(0, row.pitch);
    }
}

} // namespace

QPointF energyCentre(const QSize &size)
{
    return QPointF(size.width() / 2, size.height() / 2);
}

QFont energyFont()
{
    QFont font(QStringLiteral("Microsoft YaHei"));
    font.setPixelSize(FontSize);
    font.setHintingPreference(QFont::PreferNoHinting); // widths in fractions of a pixel
    for (int stretch = QFont::Unstretched; stretch >= LeastStretch && !fitsPanels(font); --stretch)
        font.setStretch(stretch);
    return font;
}

EnergyScene energyScene(const EnergyState &state, const EnergyViewFlags &viewFlags,
                        const QFont &font, const QPointF &centre)
{
    const QFontMetricsF metrics(font);
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
            addPanel(row, state.panels[panel], metrics, centre, scene.texts);
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
