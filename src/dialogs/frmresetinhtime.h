#pragma once
// The dialog that lets an Evaluator start its alarm inhibit time anew.

#include "basics/types.h"
#include "controls/controls.h"

namespace tyxo::FrmResetInhTime {

struct window {
    Form form{.Caption = "Alarm Inhibit Time"};
    Label Label1{.Caption = "Restart Alarm Inhibit Time"};
    Command CmdDo{.Caption = "Restart"};
    Command CmdCancel{.Caption = "Cancel"};
};

inline window state;

/// Sends the command, records it in the three places of record, and closes the dialog: the two last also when
/// the command could not be sent, which the debug output tells. Waits as `serial::frame_send` does.
void CmdDo_click();

/// Also every other way of closing it.
void CmdCancel_click();

} // namespace tyxo::FrmResetInhTime

namespace tyxo::mainfrm {

/// The inhibit label of a channel: the dialog is about this channel from now on, and is shown.
void Lbl_alminhibit_click(i16 channel);

} // namespace tyxo::mainfrm
