#pragma once
// Printing of one channel's strip chart, and the dialog that chooses the channel.

#include "basics/per_channel.h"
#include "controls/controls.h"
#include "link/indicators.h"

#include <cstddef>
#include <optional>

namespace tyxo::frmselectprint {

struct window {
    Form form{.Caption = "Select print"};
    Label Lblprintheader{.Caption = "xy - diagram printout"};
    Frame Frmprint{.Caption = "Sensor select"};
    per_channel<Command> optPrint;
    std::optional<std::size_t> selected; ///< of `optPrint`; none while the print channel is not in use
    Label LblPrint;                      ///< what "ok" will print
    Command Cmd_ok{.Caption = "ok"};
    Command cmd_cancel{.Caption = "cancel"};
    i16 print_channel = 0; ///< 0 to 3, kept between uses of the dialog
};

inline window state;

/// A channel was chosen. Failure: there is no such channel.
void optPrint_click(std::size_t index);

/// Closes the dialog and prints the chart of the print channel, see `printplot`.
void Cmd_ok_click();

/// Closes the dialog; the choice stays.
void cmd_cancel_click();

} // namespace tyxo::frmselectprint

namespace tyxo::mainfrm {

/// The menu entry: loads the dialog and shows it.
void prt_click();
/// Prints the chart of a channel: what it shows, under its title lines. Waits for the operator as
/// `print_chart` does. Failure: there is no such channel.
void printplot(i16 channel);

} // namespace tyxo::mainfrm
