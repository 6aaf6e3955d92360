#pragma once

#include "controlrow.h"
#include "hostvocabulary.h"
#include "kx300/identifiers.h"

/**
 * The commands of the 6-20 kVA models, the buttons' first in their places.
 *
 * Two pairs share a driver code: self test with discharge, and startup with wakeup; that is
 * intended, and so is that setting the time reaches the driver as an empty command.
 */
namespace kx300 {

using namespace HostContract;

using Form = CommandForm;
using Page = ButtonPage;
using Risk = ControlRisk;

// clang-format off
constexpr CommandRow commands[] = {
    { BuzzerOffCommand,        Form::Coded,      18, QT_TRANSLATE_NOOP("tavoClient", "Buzzer off"),             { Page::Control,     QT_TRANSLATE_NOOP("tavoView", "Buzzer:"),           "buzzer_off",           QT_TRANSLATE_NOOP("tavoView", "Turn off"),             Risk::None,      ClickForm::Plain,   QT_TRANSLATE_NOOP("tavoView", "The buzzer is silenced. The load is not affected.") } },
    { BuzzerOnCommand,         Form::Coded,      17, QT_TRANSLATE_NOOP("tavoClient", "Buzzer on"),              { Page::Control,     QT_TRANSLATE_NOOP("tavoView", "Buzzer:"),           "buzzer_on",            QT_TRANSLATE_NOOP("tavoView", "Turn on"),              Risk::None,      ClickForm::Plain,   QT_TRANSLATE_NOOP("tavoView", "The buzzer sounds when there is an alarm. The load is not affected.") } },
    { StartupCommand,          Form::Coded,       7, QT_TRANSLATE_NOOP("tavoClient", "Startup UPS"),            { Page::Control,     QT_TRANSLATE_NOOP("tavoView", "Startup&Shutdown:"), "power_on",             QT_TRANSLATE_NOOP("tavoView", "Startup"),              Risk::None,      ClickForm::Plain,   QT_TRANSLATE_NOOP("tavoView", "The inverter starts and feeds the load.") }, { { Id::OutputMode, 2 } } },
    { ShutdownToBypassCommand, Form::Coded,       9, QT_TRANSLATE_NOOP("tavoClient", "Shutdown to bypass"),     { Page::Control,     QT_TRANSLATE_NOOP("tavoView", "Startup&Shutdown:"), "off_turn_bypass",      QT_TRANSLATE_NOOP("tavoView", "Shutdown to bypass"),   Risk::MovesLoad, ClickForm::Plain,   QT_TRANSLATE_NOOP("tavoView", "The inverter stops. The load goes to bypass and will no longer be protected.") }, { { Id::OutputMode, 1 }, { Id::InverterStatus, 0 } } },
    { ShutdownCommand,         Form::Coded,       4, QT_TRANSLATE_NOOP("tavoClient", "Shutdown UPS"),           { Page::Control,     QT_TRANSLATE_NOOP("tavoView", "Startup&Shutdown:"), "power_off",            QT_TRANSLATE_NOOP("tavoView", "Shutdown stop output"), Risk::MovesLoad, ClickForm::Plain,   QT_TRANSLATE_NOOP("tavoView", "The output is switched off. The load loses its power.") }, { { Id::OutputMode, 0 } } },
    { TurnBypassCommand,       Form::Coded,      10, QT_TRANSLATE_NOOP("tavoClient", "Turn bypass manually"),   { Page::Control,     QT_TRANSLATE_NOOP("tavoView", "Manual switch:"),    "turn_bypass",          QT_TRANSLATE_NOOP("tavoView", "Transfer to bypass"),   Risk::MovesLoad, ClickForm::Plain,   QT_TRANSLATE_NOOP("tavoView", "The load goes to bypass and will no longer be protected.") }, { { Id::OutputMode, 1 } } },
    { TurnInverterCommand,     Form::Coded,      11, QT_TRANSLATE_NOOP("tavoClient", "Turn inverter manually"), { Page::Control,     QT_TRANSLATE_NOOP("tavoView", "Manual switch:"),    "turn_inverter",        QT_TRANSLATE_NOOP("tavoView", "Transfer to inverter"), Risk::None,      ClickForm::Plain,   QT_TRANSLATE_NOOP("tavoView", "The load goes to the inverter and is protected.") }, { { Id::OutputMode, 2 } } },
    { SelfTestCommand,         Form::Coded,       0, QT_TRANSLATE_NOOP("tavoClient", "Selftest"),               { Page::Control,     QT_TRANSLATE_NOOP("tavoView", "Battery:"),          "battery_test",         QT_TRANSLATE_NOOP("tavoView", "Battery test 20s"),     Risk::None,      ClickForm::Plain,   QT_TRANSLATE_NOOP("tavoView", "The battery feeds the load for 20 seconds.") }, { { Id::WorkingMode, 6 } } },
    { DischargeToLowCommand,   Form::Coded,       2, QT_TRANSLATE_NOOP("tavoClient", "Discharge to low"),       { Page::Control,     QT_TRANSLATE_NOOP("tavoView", "Battery:"),          "battery_maintenance",  QT_TRANSLATE_NOOP("tavoView", "Battery maintenance"),  Risk::Lasting,   ClickForm::Plain,   QT_TRANSLATE_NOOP("tavoView", "The battery feeds the load until it is low. Until it is charged again, it lasts for a short time only.") }, { { Id::WorkingMode, 6 } } },
    { CancelTaskCommand,       Form::Coded,       3, QT_TRANSLATE_NOOP("tavoClient", "Cancel task"),            { Page::Control,     QT_TRANSLATE_NOOP("tavoView", "Battery:"),          "cancel_test",          QT_TRANSLATE_NOOP("tavoView", "Cancel test"),          Risk::None,      ClickForm::Plain,   QT_TRANSLATE_NOOP("tavoView", "A test or a maintenance of the battery ends. The load is not affected.") } },
    { ClearFaultCommand,       Form::Coded,      12, QT_TRANSLATE_NOOP("tavoClient", "Clean fault"),            { Page::Maintenance, QT_TRANSLATE_NOOP("tavoView", "Clear"),             "clear_fault",          QT_TRANSLATE_NOOP("tavoView", "Clear fault"),          Risk::None,      ClickForm::Plain,   QT_TRANSLATE_NOOP("tavoView", "Faults that are over but still shown are cleared. The load is not affected.") } },
    { ClearHistoryCommand,     Form::Coded,      13, QT_TRANSLATE_NOOP("tavoClient", "Clean history"),          { Page::Maintenance, QT_TRANSLATE_NOOP("tavoView", "Clear"),             "clear_history_log",    QT_TRANSLATE_NOOP("tavoView", "Clear history"),        Risk::Lasting,   ClickForm::Plain,   QT_TRANSLATE_NOOP("tavoView", "All records in the device are deleted for good. The load is not affected.") } },
    { DownloadHistoryCommand,  Form::Download,   20, QT_TRANSLATE_NOOP("tavoClient", "Download history"),       { Page::Maintenance, QT_TRANSLATE_NOOP("tavoView", "Plugin"),            "download_history_log", QT_TRANSLATE_NOOP("tavoView", "Download history"),     Risk::None,      ClickForm::File,    QT_TRANSLATE_NOOP("tavoView", "The records in the device are saved to a file. The load is not affected.") } },
    { UpgradeCommand,          Form::ClosePort,   0, "",                                                        { Page::Maintenance, QT_TRANSLATE_NOOP("tavoView", "Plugin"),            "ups_upgrade",          QT_TRANSLATE_NOOP("tavoView", "UPS upgrade"),          Risk::Lasting,   ClickForm::Upgrade, QT_TRANSLATE_NOOP("tavoView", "The firmware of the device is replaced. Nothing is monitored meanwhile; a failed upgrade may leave the device without firmware.") } },
    { SetTimeCommand,          Form::Empty,       0, "",                                                        { Page::None,        "",                                                 "timeSet",              "",                                                    Risk::None,      ClickForm::EditorTime } },
    { DischargeCommand,        Form::Coded,       0, QT_TRANSLATE_NOOP("tavoClient", "Discharge"),              {} },
    { WakeupCommand,           Form::Coded,       7, QT_TRANSLATE_NOOP("tavoClient", "Wakeup UPS"),             {} },
    { SetParameterCommand,     Form::PassThrough, 0, "",                                                        {} },
};
// clang-format on

} // namespace kx300
