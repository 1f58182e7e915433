#pragma once
// What an operator does with the stop lock on the simulated machine.

#include "dialogs/frmabort.h"
#include "platform/simulation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string_view>

namespace tyxo::simulation {

/// Types the text letter by letter into the password's box, as keys would.
inline void type_password(std::string_view text) {
    for (std::size_t length = 1; length <= text.size(); ++length)
        FrmAbort::TextPassword_change(text.substr(0, length));
}

inline void stop_with(std::string_view password) {
    type_password(password);
    FrmAbort::CmdStop_click();
}

/// Plans what happens while the lock is up. A lock that is still up an hour later is a failure, and no
/// endless wait.
inline void while_asked(std::function<void()> act, std::int64_t milliseconds = 1500) {
    after(milliseconds, std::move(act));
    after(3'600'000, [] {
        if (!FrmAbort::state.form.Visible) return;
        ADD_FAILURE() << "nobody has answered";
        FrmAbort::unload();
    });
}

} // namespace tyxo::simulation
