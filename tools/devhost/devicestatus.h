#pragma once

#include "hostevent.h"
#include "severity.h"

#include <QIcon>

#include <optional>

/**
 * A device at a glance, worked out from what its client posted.
 *
 * Numbers that were never reported are not there. Those of a device that does not communicate are
 * its last ones, and `isLive` is false.
 */
class DeviceStatus
{
    Q_DECLARE_TR_FUNCTIONS(DeviceStatus)

public:
    enum class Level { Normal, Waiting, Attention, Lost, Critical }; // the worse, the higher

    /** What the host knows of a device. */
    struct Facts
    {
        int link = -1; ///< -1 unknown, 0 communicating, 1 lost
        bool wasOnline = false;
        DataMap data;                                ///< the latest live report
        Severity worstAlarm = Severity::Information; ///< of the alarms that are present
    };

    static DeviceStatus of(const Facts &facts);

    Level level = Level::Waiting;
    QString state;                ///< the level in words
    QString mode;                 ///< working mode, empty while unknown
    std::optional<double> load;   ///< %
    std::optional<double> charge; ///< %
    std::optional<int> autonomy;  ///< min
    bool isLive = false;

    /** The sign of a level, which tells it without colour. */
    static QString mark(Level level);
    static QColor color(Level level, const QPalette &palette);
    static QIcon icon(Level level, const QPalette &palette);
};
