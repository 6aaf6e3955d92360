#pragma once

#include "commandqueue.h"

#include <array>

/** What becomes of a command. */
enum class CommandForm {
    Coded,       ///< "code,value" for the driver
    PassThrough, ///< the value is the driver's command as it stands
    ClosePort,   ///< no driver call: the port is closed
    Unlisted,    ///< an empty command for the driver
};

struct CommandRow
{
    int controlId;
    CommandForm form;
    int driverCode;   ///< Coded only
    const char *text; ///< for the report to the host, translated in tavoClient's context
};

constexpr int downloadHistoryCommand = 1045;

// clang-format off
// Two pairs share a driver code: 1003 with 1004, and 1008 with 1013; that is intended.
constexpr CommandRow commandRows[] = {
    { 1001, CommandForm::Coded,       12, QT_TRANSLATE_NOOP("tavoClient", "Clean fault")            },
    { 1002, CommandForm::Coded,       13, QT_TRANSLATE_NOOP("tavoClient", "Clean history")          },
    { 1003, CommandForm::Coded,        0, QT_TRANSLATE_NOOP("tavoClient", "Selftest")               },
    { 1004, CommandForm::Coded,        0, QT_TRANSLATE_NOOP("tavoClient", "Discharge")              },
    { 1005, CommandForm::Coded,        2, QT_TRANSLATE_NOOP("tavoClient", "Discharge to low")       },
    { 1006, CommandForm::Coded,        3, QT_TRANSLATE_NOOP("tavoClient", "Cancel task")            },
    { 1007, CommandForm::Coded,        4, QT_TRANSLATE_NOOP("tavoClient", "Shutdown UPS")           },
    { 1008, CommandForm::Coded,        7, QT_TRANSLATE_NOOP("tavoClient", "Startup UPS")            },
    { 1009, CommandForm::Coded,       17, QT_TRANSLATE_NOOP("tavoClient", "Buzzer on")              },
    { 1010, CommandForm::Coded,       18, QT_TRANSLATE_NOOP("tavoClient", "Buzzer off")             },
    { 1013, CommandForm::Coded,        7, QT_TRANSLATE_NOOP("tavoClient", "Wakeup UPS")             },
    { 1015, CommandForm::Coded,        9, QT_TRANSLATE_NOOP("tavoClient", "Shutdown to bypass")     },
    { 1016, CommandForm::Coded,       10, QT_TRANSLATE_NOOP("tavoClient", "Turn bypass manually")   },
    { 1017, CommandForm::Coded,       11, QT_TRANSLATE_NOOP("tavoClient", "Turn inverter manually") },
    { 1018, CommandForm::ClosePort,    0, ""                                                        },
    { 1045, CommandForm::Coded,       20, QT_TRANSLATE_NOOP("tavoClient", "Download history")       },
    { 2016, CommandForm::PassThrough,  0, ""                                                        },
};
// clang-format on

/** The row of a command; the unlisted ones, 1011 among them, share an empty row. */
CommandRow commandRow(int controlId);

/** The driver's command: zero-terminated and zero-filled. */
using CommandText = std::array<char, 50>;

/** Builds the driver's command in the local 8-bit encoding.
 *  A value that does not fit is cut, and never in the middle of a character. */
CommandText commandText(const ControlCmd &command);
