#pragma once
// The stop lock: the password that stands between the operator and every way of stopping a measurement.

#include "basics/types.h"
#include "controls/controls.h"

#include <string>
#include <string_view>

namespace tyxo::FrmAbort {

struct window {
    Form form{.Caption = "stop data logging"};
    Label Lbl_what; ///< what will stop
    Label Label1{.Caption = "To stop data-logging enter password :"};
    TextBox TextPassword;
    Command CmdStop{.Caption = "Stop Logging"};
    Command CmdContinue{.Caption = "Continue Logging"};

    // These outlive the window.
    i32 CmdStop_focused = 0;   ///< how often the core has given it the focus
    bool asking = false;       ///< a request waits for its answer
    std::string stop_password; ///< as it was when the settings were loaded
    bool stop_result = false;  ///< the operator chose to stop
};

inline window state;

/// The password to compare with.
void SetPassword(std::string_view password);

/// What the operator chose last: -1 to stop, 0 to go on.
[[nodiscard]] i16 GetStatus();

/// Shows the stop lock and waits for the operator while the event loop goes on; `what` tells him what will
/// stop. True if the measurement may. A request that comes while another one waits is refused at once: the
/// operator has not been asked for it, and the other one still gets its answer.
[[nodiscard]] bool stop_lock(std::string_view what);

void TextPassword_change(std::string_view text);
/// Without effect while the button is disabled: a click may wait behind a change of the text.
void CmdStop_click();
void CmdContinue_click();

/// The window was closed in another way.
void unload();

} // namespace tyxo::FrmAbort
