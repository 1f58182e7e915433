#pragma once
// The window that owns the gateway: its settings, its state, and registers read and written by hand.
//
// It is loaded once and stays so; closing it only hides it. The boxes hold texts as they were typed, in
// Windows-1252; a number in a box is the one that its text begins with, and 0 for any other text.

#include "controls/controls.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tyxo {

/// Background colours of the status box.
namespace status_colour {
inline constexpr colour green = 65280;
inline constexpr colour red = 255;
inline constexpr colour yellow = 65535;
} // namespace status_colour

/// A text box with a background.
struct status_box {
    std::string Text;
    colour BackColor = 0;
    bool operator==(const status_box&) const = default;
};

namespace FrmSetupTCP {

struct window {
    Form form{"Setup data transmission over Modbus TCP/IP"};
    i32 summoned = 0; ///< how often the menu entry asked for the window, which then comes to the front
    std::string Txt_IPadr;
    std::string Txt_IPport;
    std::string Txt_regbase;
    std::string Txt_sendbase = "0";
    std::string Txt_regnumber = "10";
    i16 Check1 = 0; ///< 1 or 0: `IPAutoC`
    i16 Check2 = 0; ///< `IPenaTRS`
    i16 Check3 = 0; ///< `IPpolar`
    i16 Check4 = 0; ///< `IPsysstat`
    status_box Text5{"Disconnected", status_colour::red};
    std::array<std::string, 123> Text4; ///< one box per register; "0" at the start
    Frame IP_frame{"TCP IP parameters"};
    Frame IP_Test_Frame{"TCP IP manual transmission to holding registers"};
    bool Image_TCP_visible = false;
    bool Reg_content = false; ///< check marks of the menu
    bool slow = false;
    bool medium = false;
    bool fast = false;

    window() { Text4.fill("0"); }
    bool operator==(const window&) const = default;
};

inline window state;

/// Puts a text into the status box.
inline void show_tcp_status(std::string_view text, colour background) {
    state.Text5 = {std::string(text), background};
}

/// The settings in the boxes, the check boxes and the menu. Runs before anything connects or shows the
/// window; once the window is loaded it does nothing.
void load();

/// A text was typed. Failure: there is no such register box.
void Txt_IPadr_change(std::string_view text);
void Txt_IPport_change(std::string_view text);
void Txt_regbase_change(std::string_view text);
void Txt_sendbase_change(std::string_view text);
void Txt_regnumber_change(std::string_view text);
void Text4_change(std::size_t index, std::string_view text);

/// A check box was clicked: it changes, and its setting in memory with it.
void Check1_click();
void Check2_click();
void Check3_click();
void Check4_click();

/// The check item "Register Content": shows or hides the register boxes, and stores which.
void Reg_content_click();

/// The speeds of the automatic transmission. A click on the checked one does nothing.
void slow_click();
void medium_click();
void fast_click();

/// Unlocks the connection and connects; waits and fails as `TCP_connect` does.
void res_con_click();

/// Read and write by hand, with the numbers in the boxes, which are corrected to their limits first. Nothing
/// happens while a transaction is open. Waiting and failure: see `FC3MB_read` and `FC16MB_write`; a number
/// too large for its type.
void Cmd_read_R_click();
void Cmd_write_R_click();

/// Stores all parameters, closes the connection, and makes it anew if it is automatic, which waits as
/// `TCP_connect` does. Failure: a number too large for its setting, among them a port above 32767. What
/// stands before it is stored then, also the port's own text.
void Cmd_save_click();

/// `TCP_connect` and `TCP_disconnect`, by hand.
void Connect_click();
void cmd_discon_click();

/// Hides the window.
void Cmd_close_click();

/// Why a window is asked to close. A desktop may know fewer reasons; the close box is always one.
enum class close_reason { close_box, code, system_shutdown, task_manager, mdi_parent, owner };

/// Shows the message of the reason and waits for the operator; any reason but the close box then hides the
/// window.
void query_unload(close_reason reason);

} // namespace FrmSetupTCP

namespace mainfrm {

/// The menu entry of the main window: fills the boxes from the settings again and shows the window. An open
/// window comes to the front as it is.
void setup_tcp_click();

} // namespace mainfrm

} // namespace tyxo
