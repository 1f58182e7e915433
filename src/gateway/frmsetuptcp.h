#pragma once
// The window that owns the gateway: its settings, its state, and registers read and written by hand.

#include "platform/controls.h"

#include <array>
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

struct frmsetuptcp_form {
    Form form{"Setup data transmission over Modbus TCP/IP"};
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

    frmsetuptcp_form() { Text4.fill("0"); }
    bool operator==(const frmsetuptcp_form&) const = default;
};

inline frmsetuptcp_form FrmSetupTCP;

/// Puts a text into the status box.
inline void show_tcp_status(std::string_view text, colour background) {
    FrmSetupTCP.Text5 = {std::string(text), background};
}

/// The settings' texts in the boxes; runs before anything connects or shows the window, once.
void load_frmsetuptcp();

/// The menu entry of the main window.
void setup_tcp_click();

} // namespace tyxo
