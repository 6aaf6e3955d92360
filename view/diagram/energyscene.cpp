#include "diagram/energyscene.h"

#include "lookup.h"

#include <QFontMetricsF>

#include <algorithm>

namespace {

constexpr char context[] = "Energyline";
constexpr int fontSize = 13; // in pixels, like all lengths of the diagram
constexpr int largeFontSize = 16;
constexpr QRectF noteArea(-440, -98, 300, 48); // from the centre; 12 beside the panel
constexpr int leastStretch = 70;
constexpr double labelGap = 8; // at least half of it is kept
constexpr double terminalHeight = 7;
constexpr double batteryInset = 5; // between the battery's outline and its filling

bool isLive(const DiagramBlockRow &row, const EnergyFlows &flows)
{
    return std::any_of(std::begin(row.flows), std::end(row.flows),
                       [&flows](int flow) { return isFlowing(flows, flow); });
}

QRectF levelRect(const QRectF &battery, double level)
{
    const QRectF body =
        battery.adjusted(batteryInset, batteryInset + terminalHeight, -batteryInset, -batteryInset);
    return { body.left(), body.bottom() - body.height() * level, body.width(),
             body.height() * level };
}

// Room for the widest value that a device reports; its own texts are cut where they do not fit.
double valueWidth(const DiagramLineRow &row, const QFontMetricsF &metrics)
{
    const auto numberWidth = [&](const char *number) {
        return metrics.horizontalAdvance(
            translated(context, row.pattern).arg(QString::fromLatin1(number)));
    };
    double width = 0;
    switch (row.kind) {
    case LineKind::Measured:
        return numberWidth(row.phaseId != 0 ? "000.0/000.0/000.0" : "000.0");
    case LineKind::Whole:
        return numberWidth("00000");
    case LineKind::State:
        for (const char *state : row.states)
            width = std::max(width, metrics.horizontalAdvance(translated(context, state)));
        return width;
    case LineKind::Text:
        break;
    }
    return width;
}

double panelWidth(Rows<DiagramPanelRow> panels, DiagramPanel panel)
{
    const auto *const row =
        std::find_if(panels.begin(), panels.end(),
                     [panel](const DiagramPanelRow &r) { return r.panel == panel; });
    return row->width;
}

bool fitsPanels(const QFont &font, const DiagramTables &tables, Rows<DiagramPanelRow> panels)
{
    const QFontMetricsF metrics(font);
    return std::all_of(tables.lines.begin(), tables.lines.end(), [&](const DiagramLineRow &row) {
        return metrics.horizontalAdvance(translated(context, row.label)) + labelGap
            + valueWidth(row, metrics)
            <= panelWidth(panels, row.panel);
    });
}

void addPanel(const DiagramPanelRow &row, const std::vector<EnergyLine> &lines,
              const QFontMetricsF &metrics, const QPointF &centre, std::vector<SceneText> &texts)
{
    QRectF line(centre.x() + row.topLeft.x, centre.y() + row.topLeft.y, row.width, row.pitch);
    if (*row.title != '\0') {
        texts.push_back({ line, translated(context, row.title), TextRole::Title });
        line.translate(0, row.pitch);
    }
    for (const EnergyLine &entry : lines) {
        const double valueStart = metrics.horizontalAdvance(entry.label) + labelGap / 2;
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

QRegion changedArea(const EnergyScene &one, const EnergyScene &other, const QRect &everything)
{
    if (one.texts.size() != other.texts.size())
        return everything;
    QRegion area;
    if (one.batteryLevel != other.batteryLevel)
        area += one.battery.rect.toAlignedRect();
    for (std::size_t i = 0; i < one.texts.size(); ++i) {
        if (one.texts[i].text != other.texts[i].text)
            area += one.texts[i].rect.united(other.texts[i].rect).toAlignedRect();
    }
    return area;
}

QRegion flowArea(const EnergyScene &scene)
{
    QRegion area;
    for (const QPolygonF &flow : scene.flows) {
        for (int i = 1; i < flow.size(); ++i) {
            const QRectF line = QRectF(flow[i - 1], flow[i]).normalized();
            area += line.adjusted(-flowWidth, -flowWidth, flowWidth, flowWidth).toAlignedRect();
        }
    }
    return area;
}

QRectF noteRect(const QPointF &centre)
{
    return noteArea.translated(centre);
}

QRectF blockRect(const DiagramBlockRow &row, const QPointF &centre)
{
    return { centre.x() + row.topLeft.x, centre.y() + row.topLeft.y, row.width, row.height };
}

EnergyLook energyLook(const DiagramTables &tables, bool isLarge)
{
    const bool hasLarge = isLarge && !tables.largePanels.isEmpty();
    const Rows<DiagramPanelRow> panels = hasLarge ? tables.largePanels : tables.panels;
    QFont font(QStringLiteral("Microsoft YaHei"));
    font.setPixelSize(hasLarge ? largeFontSize : fontSize);
    font.setHintingPreference(QFont::PreferNoHinting); // widths in fractions of a pixel
    for (int stretch = QFont::Unstretched;
         stretch >= leastStretch && !fitsPanels(font, tables, panels); --stretch)
        font.setStretch(stretch);
    return { panels, font };
}

EnergyScene energyScene(const DiagramTables &tables, const EnergyState &state,
                        const EnergyViewFlags &viewFlags, const EnergyLook &look,
                        const QPointF &centre)
{
    const QFontMetricsF metrics(look.font);
    EnergyScene scene;
    for (const DiagramBlockRow &row : tables.blocks) {
        const SceneBlock block { &row, blockRect(row, centre), isLive(row, state.flows) };
        if (row.form == DiagramForm::Battery)
            scene.battery = block;
        else
            scene.blocks.push_back(block);
    }
    scene.batteryLevel =
        levelRect(scene.battery.rect, static_cast<double>(state.capacity.value_or(0)));
    for (int i = 0; i < tables.flows.size(); ++i) {
        const FlowRow &row = tables.flows[i];
        if (!isFlowing(state.flows, i))
            continue;
        QPolygonF line;
        for (int k = 0; k < row.pointCount; ++k)
            line << centre + QPointF(row.points[k].x, row.points[k].y);
        scene.flows.push_back(line);
    }
    for (const DiagramPanelRow &row : look.panels) {
        const auto panel = static_cast<std::size_t>(row.panel);
        if (row.viewFlag < 0 || viewFlags[static_cast<std::size_t>(row.viewFlag)])
            addPanel(row, state.panels[panel], metrics, centre, scene.texts);
    }
    return scene;
}

const DiagramBlockRow *blockAt(Rows<DiagramBlockRow> blocks, const QPoint &point,
                               const QPointF &centre)
{
    for (const DiagramBlockRow &row : blocks) {
        const QRectF rect = blockRect(row, centre);
        const bool isInside = point.x() >= rect.left() && point.x() <= rect.right()
            && point.y() >= rect.top() && point.y() <= rect.bottom();
        if (isInside)
            return &row;
    }
    return nullptr;
}
