#pragma once

#include <QCoreApplication>

enum class ControlPage { Control, Maintenance };

/** What a button does to the load. */
enum class ControlRisk { None, MovesLoad };

/** A control button; neighbours with the same group title form a row. */
struct ControlButtonRow
{
    ControlPage page;
    const char *group;
    const char *name; ///< object name, the command's key
    const char *text;
    ControlRisk risk;
};

/** The command number for an object name. */
struct ControlCommandRow
{
    const char *name;
    int command;
};

/** The control buttons and their commands. */
class ControlTables
{
    Q_DECLARE_TR_FUNCTIONS(tavoView)

public:
    // clang-format off
    using Page = ControlPage;
    using Risk = ControlRisk;
    static constexpr ControlButtonRow buttons[] = {
        { Page::Control,     QT_TR_NOOP("Buzzer:"),           "buzzer_off",           QT_TR_NOOP("Turn off"),             Risk::None      },
        { Page::Control,     QT_TR_NOOP("Buzzer:"),           "buzzer_on",            QT_TR_NOOP("Turn on"),              Risk::None      },
        { Page::Control,     QT_TR_NOOP("Startup&Shutdown:"), "power_on",             QT_TR_NOOP("Startup"),              Risk::None      },
        { Page::Control,     QT_TR_NOOP("Startup&Shutdown:"), "off_turn_bypass",      QT_TR_NOOP("Shutdown to bypass"),   Risk::MovesLoad },
        { Page::Control,     QT_TR_NOOP("Startup&Shutdown:"), "power_off",            QT_TR_NOOP("Shutdown stop output"), Risk::MovesLoad },
        { Page::Control,     QT_TR_NOOP("Manual switch:"),    "turn_bypass",          QT_TR_NOOP("Transfer to bypass"),   Risk::MovesLoad },
        { Page::Control,     QT_TR_NOOP("Manual switch:"),    "turn_inverter",        QT_TR_NOOP("Transfer to inverter"), Risk::None      },
        { Page::Control,     QT_TR_NOOP("Battery:"),          "battery_test",         QT_TR_NOOP("Battery test 20s"),     Risk::None      },
        { Page::Control,     QT_TR_NOOP("Battery:"),          "battery_maintenance",  QT_TR_NOOP("Battery maintenance"),  Risk::None      },
        { Page::Control,     QT_TR_NOOP("Battery:"),          "cancel_test",          QT_TR_NOOP("Cancel test"),          Risk::None      },
        { Page::Maintenance, QT_TR_NOOP("Clear"),             "clear_fault",          QT_TR_NOOP("Clear fault"),          Risk::None      },
        { Page::Maintenance, QT_TR_NOOP("Clear"),             "clear_history_log",    QT_TR_NOOP("Clear history"),        Risk::None      },
        { Page::Maintenance, QT_TR_NOOP("Plugin"),            "download_history_log", QT_TR_NOOP("Download history"),     Risk::None      },
        { Page::Maintenance, QT_TR_NOOP("Plugin"),            "ups_upgrade",          QT_TR_NOOP("UPS upgrade"),          Risk::None      },
    };

    static constexpr int SetParameter = 2016; // what any other button sends, with OtherArgument
    static constexpr const char *OtherArgument = "1,300";
    static constexpr int SetTime = 1011;
    static constexpr int Upgrade = 1018;
    static constexpr int DownloadHistory = 1045;

    // Commands without an argument.
    static constexpr ControlCommandRow commands[] = {
        { "buzzer_off",          1010 },
        { "buzzer_on",           1009 },
        { "power_off",           1007 },
        { "off_turn_bypass",     1015 },
        { "power_on",            1008 },
        { "turn_bypass",         1016 },
        { "turn_inverter",       1017 },
        { "battery_test",        1003 },
        { "battery_maintenance", 1005 },
        { "cancel_test",         1006 },
        { "clear_fault",         1001 },
        { "clear_history_log",   1002 },
    };
    // clang-format on
};
