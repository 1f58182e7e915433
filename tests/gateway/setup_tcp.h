#pragma once
// The gateway's window on a new machine.

#include "gateway/frmsetuptcp.h"
#include "platform/simulation.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tyxo {

inline constexpr std::string_view manual = "TCP IP manual transmission to holding registers";
inline constexpr std::string_view automatic = "TCP IP FC16 transmission to holding registers";

class SetupTcp : public testing::Test {
  protected:
    void SetUp() override { simulation::fresh_world(); }

    static FrmSetupTCP::window& form() { return FrmSetupTCP::state; }
    static std::string checked_items() {
        std::string items;
        if (form().slow) items += "slow ";
        if (form().medium) items += "medium ";
        if (form().fast) items += "fast ";
        return items;
    }
};

} // namespace tyxo
