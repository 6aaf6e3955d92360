#pragma once

#include <QtGlobal>

/** What the client does for a command. */
enum class CommandForm {
    Coded,       ///< has the driver carry out "code,value"
    Download,    ///< the same, then turns the downloaded history into a file and reports it
    PassThrough, ///< the value is the driver's command as it stands
    Empty,       ///< an empty command for the driver, as for all numbers without a row
    ClosePort,   ///< no driver call: the port is closed
};

/** Where a command's button stands. */
enum class ButtonPage { None, Control, Maintenance };

/** What a click of the button asks for beside the confirmation. */
enum class ClickForm {
    Plain,
    EditorTime, ///< the text of the date-time editor becomes the command's value
    File,       ///< a chosen file's name becomes the command's value
    Upgrade,    ///< the command is followed by the upgrade
};

/** What a command puts at risk; all but None are outlined. */
enum class ControlRisk {
    None,
    Lasting,   ///< what cannot be had back at once: records, charge, firmware
    MovesLoad, ///< stands apart at the end of its row
};

/** A value that a report has once a command has had its effect. */
struct EffectRow
{
    int dataId = 0; ///< 0: none
    int value = 0;
};

/** The button of a command; neighbours with the same group form a row. Its texts are translated in
 *  the context "tavoView". */
struct ControlButtonRow
{
    ButtonPage page = ButtonPage::None;
    const char *group = "";
    const char *name = ""; ///< object name, bound by name
    const char *text = "";
    ControlRisk risk = ControlRisk::None;
    ClickForm click = ClickForm::Plain;
    const char *consequence = ""; ///< what happens, to the load above all: a sentence or two
};

/** A command from the user's click to the driver. */
struct CommandRow
{
    int command; ///< number of the host contract
    CommandForm form;
    int driverCode;         ///< Coded and Download only
    const char *reportText; ///< for the report to the host, translated in "tavoClient"
    ControlButtonRow button;
    EffectRow proof[2] = {}; ///< all of them prove the effect
};
