#pragma once
// The stop lock: the password that stands between the operator and every way of stopping a measurement.

#include "basics/types.h"
#include "platform/controls.h"

#include <string>
#include <string_view>

namespace tyxo {

struct frmabort_form {
    Form form{.Caption = "stop data logging"};
    Label Label1{.Caption = "To stop data-logging enter password :"};
    TextBox TextPassword;
    Command CmdStop{.Caption = "Stop Logging"};
    Command CmdContinue{.Caption = "Continue Logging"};
    i32 CmdStop_focused = 0; ///< how often the core has given it the focus

    // These outlive the window.
    std::string stop_password; ///< as it was when the settings were loaded
    bool stop_result = false;  ///< the operator chose to stop
};

inline frmabort_form FrmAbort;

/// The password to compare with.
void SetPassword(std::string_view password);

/// What the operator chose last: -1 to stop, 0 to go on.
[[nodiscard]] i16 GetStatus();

/// Shows the stop lock and waits for the operator while the event loop goes on. True if the measurement may
/// stop.
[[nodiscard]] bool stop_lock();

void TextPassword_change(std::string_view text);
void CmdStop_click();
void CmdContinue_click();

/// The window was closed in another way.
void FrmAbort_unload();

} // namespace tyxo
