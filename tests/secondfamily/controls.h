#pragma once

#include "controlrow.h"
#include "hostvocabulary.h"

/** The commands of the 1-3 kVA models. */
namespace kx100 {

using namespace HostContract;

// clang-format off
constexpr CommandRow commands[] = {
    { SelfTestCommand,        CommandForm::Coded,       5, QT_TRANSLATE_NOOP("tavoClient", "Test"),     { ButtonPage::Control,     QT_TRANSLATE_NOOP("tavoView", "Pack:"), "pack_test",    QT_TRANSLATE_NOOP("tavoView", "Test pack"), ControlRisk::None,      ClickForm::Plain   } },
    { ShutdownCommand,        CommandForm::Coded,       6, QT_TRANSLATE_NOOP("tavoClient", "Off"),      { ButtonPage::Control,     QT_TRANSLATE_NOOP("tavoView", "Unit:"), "unit_off",     QT_TRANSLATE_NOOP("tavoView", "Off"),       ControlRisk::MovesLoad, ClickForm::Plain   } },
    { DownloadHistoryCommand, CommandForm::Download,    9, QT_TRANSLATE_NOOP("tavoClient", "Log fetch"), { ButtonPage::Maintenance, QT_TRANSLATE_NOOP("tavoView", "Log:"),  "fetch_log",    QT_TRANSLATE_NOOP("tavoView", "Fetch log"), ControlRisk::None,      ClickForm::File    } },
    { UpgradeCommand,         CommandForm::ClosePort,   0, "",                                          { ButtonPage::Maintenance, QT_TRANSLATE_NOOP("tavoView", "Unit:"), "new_firmware", QT_TRANSLATE_NOOP("tavoView", "Upgrade"),   ControlRisk::None,      ClickForm::Upgrade } },
    { SetParameterCommand,    CommandForm::PassThrough, 0, "", {} },
};
// clang-format on

} // namespace kx100
