#pragma once
// A program that measures, and the stop lock before it.

#include "dialogs/frmabort.h"
#include "dialogs/lock_operator.h"
#include "link/calls.h"
#include "logging/logging_machine.h"

#include <gtest/gtest.h>

#include <functional>
#include <string_view>
#include <utility>

namespace tyxo::simulation {

inline constexpr std::string_view what = "Stops all channels";

/// A program that measures on two channels and knows the password "Ruhe7".
class StopLock : public testing::Test {
  protected:
    void SetUp() override { start_with("passwd=Ruhe7\r\n"); }

    static void start_with(std::string_view more) {
        start_on(logging_settings(2, more));
        calls.stop_lock = FrmAbort::stop_lock;
        start_logging(0);
        start_logging(1);
    }
    /// Opens the lock and leaves it by its frame; `look` runs while it is up.
    static bool asked(std::function<void()> look) {
        while_asked([look = std::move(look)] {
            look();
            FrmAbort::unload();
        });
        return FrmAbort::stop_lock(what);
    }
    static bool measures(i16 channel) { return sensor::state.channel_running[channel] && port(channel).open; }
};

} // namespace tyxo::simulation
