#include "devicestatus.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

// Data identifiers of a report.
constexpr int autonomyId = 4103; // min
constexpr int chargeId = 4117;   // %
constexpr int outputId = 4161;
constexpr int loadId = 4176; // %
constexpr int modeId = 4241;

constexpr int outputNone = 0;
constexpr int outputBypass = 1;
constexpr int ecoMode = 9;
constexpr double fullLoad = 100;

using Level = DeviceStatus::Level;

struct ModeRow
{
    const char *text;
    Level level;
};

struct LevelRow
{
    const char *text;
    const char *mark;
    QRgb onLight;
    QRgb onDark;
};

// clang-format off
constexpr ModeRow modeRows[] = { // by working mode
    { QT_TRANSLATE_NOOP("DeviceStatus", "Clearing"),             Level::Normal    },
    { QT_TRANSLATE_NOOP("DeviceStatus", "Power on"),             Level::Attention },
    { QT_TRANSLATE_NOOP("DeviceStatus", "Standby"),              Level::Attention },
    { QT_TRANSLATE_NOOP("DeviceStatus", "On bypass"),            Level::Attention },
    { QT_TRANSLATE_NOOP("DeviceStatus", "On line"),              Level::Normal    },
    { QT_TRANSLATE_NOOP("DeviceStatus", "On battery"),           Level::Critical  },
    { QT_TRANSLATE_NOOP("DeviceStatus", "Battery test"),         Level::Attention },
    { QT_TRANSLATE_NOOP("DeviceStatus", "Fault"),                Level::Critical  },
    { QT_TRANSLATE_NOOP("DeviceStatus", "Frequency conversion"), Level::Normal    },
    { QT_TRANSLATE_NOOP("DeviceStatus", "ECO"),                  Level::Normal    },
    { QT_TRANSLATE_NOOP("DeviceStatus", "Shut down"),            Level::Attention },
    { QT_TRANSLATE_NOOP("DeviceStatus", "Test"),                 Level::Attention },
};

constexpr LevelRow levelRows[] = { // by Level
    { QT_TRANSLATE_NOOP("DeviceStatus", "Normal"),           "●", 0xff1e7f3c, 0xff6fce8b },
    { QT_TRANSLATE_NOOP("DeviceStatus", "Waiting"),          "○", 0xff5b6285, 0xffb4bad6 },
    { QT_TRANSLATE_NOOP("DeviceStatus", "Attention"),        "▲", 0xff9a6200, 0xffe8b75a },
    { QT_TRANSLATE_NOOP("DeviceStatus", "No communication"), "■", 0xffb3261e, 0xffff8f85 },
    { QT_TRANSLATE_NOOP("DeviceStatus", "Alarm"),            "■", 0xffb3261e, 0xffff8f85 },
};
// clang-format on
static_assert(std::size(levelRows) == size_t(Level::Critical) + 1);

constexpr int iconSize = 14;    // logical pixels
constexpr double iconScale = 3; // sharp up to a scale factor of 3

const LevelRow &rowOf(Level level)
{
    return levelRows[size_t(level)];
}

/** A number of the report; nothing when it is missing or is none. */
std::optional<double> numberAt(const DataMap &data, int id)
{
    bool ok = false;
    const double number = data.value(id).toDouble(&ok);
    return ok && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<int> wholeAt(const DataMap &data, int id)
{
    const std::optional<double> number = numberAt(data, id);
    return number && std::abs(*number) < 1e6 ? std::optional(int(*number)) : std::nullopt;
}

const ModeRow *modeOf(const DataMap &data)
{
    const int mode = wholeAt(data, modeId).value_or(-1);
    return mode >= 0 && mode < int(std::size(modeRows)) ? &modeRows[mode] : nullptr;
}

Level liveLevel(const DeviceStatus::Facts &facts)
{
    const ModeRow *mode = modeOf(facts.data);
    Level level = mode ? mode->level : Level::Normal;
    // The load is what counts, whatever the mode: without protection it is no normal state.
    const int output = wholeAt(facts.data, outputId).value_or(-1);
    const bool isEco = wholeAt(facts.data, modeId) == ecoMode;
    if (output == outputBypass && !isEco)
        level = std::max(level, Level::Attention);
    const bool isOverloaded = numberAt(facts.data, loadId).value_or(0) > fullLoad;
    if (output == outputNone || isOverloaded || facts.worstAlarm == Severity::Critical)
        return Level::Critical;
    return facts.worstAlarm == Severity::Warning ? std::max(level, Level::Attention) : level;
}

} // namespace

DeviceStatus DeviceStatus::of(const Facts &facts)
{
    DeviceStatus status;
    status.isLive = facts.link == 0;
    if (facts.link != 0)
        status.level = facts.link == 1 ? Level::Lost : Level::Waiting;
    else if (!facts.data.isEmpty())
        status.level = liveLevel(facts);
    status.state =
        facts.link == 1 && !facts.wasOnline ? tr("Never connected") : tr(rowOf(status.level).text);
    const ModeRow *mode = modeOf(facts.data);
    if (mode)
        status.mode = tr(mode->text);
    status.load = numberAt(facts.data, loadId);
    status.charge = numberAt(facts.data, chargeId);
    status.autonomy = wholeAt(facts.data, autonomyId);
    return status;
}

QString DeviceStatus::mark(Level level)
{
    return QString::fromUtf8(rowOf(level).mark);
}

QColor DeviceStatus::color(Level level, const QPalette &palette)
{
    return onGround(palette, rowOf(level).onLight, rowOf(level).onDark);
}

QIcon DeviceStatus::icon(Level level, const QPalette &palette)
{
    QPixmap pixmap(int(iconSize * iconScale), int(iconSize * iconScale));
    pixmap.setDevicePixelRatio(iconScale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = color(level, palette);
    const QRectF box(2, 2, iconSize - 4, iconSize - 4);
    painter.setPen(QPen(ink, 1.5));
    painter.setBrush(level == Level::Waiting ? QBrush(Qt::NoBrush) : QBrush(ink));
    if (level == Level::Attention)
        painter.drawPolygon(
            QPolygonF { { QPointF(iconSize / 2.0, 1.5), box.bottomRight(), box.bottomLeft() } });
    else if (level >= Level::Lost)
        painter.drawRect(box);
    else
        painter.drawEllipse(box);
    return pixmap;
}
