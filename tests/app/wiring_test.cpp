// What the program's wiring leads to, where other tests put recorders.

#include "dialogs/lock_operator.h"
#include "dialogs/locked_program.h"

#include "app/wiring.h"

namespace tyxo {
namespace {

using namespace simulation;

class Wiring : public StopLock {};

TEST_F(Wiring, AStopAsksTheOperatorForThePassword) {
    wire(); // as the program does it
    bool asked = false;
    while_asked([&asked] {
        asked = FrmAbort::state.form.Visible;
        FrmAbort::CmdContinue_click();
    });
    mainfrm::startstop_click();
    EXPECT_TRUE(asked);
    EXPECT_TRUE(measures(0));
    while_asked([] { stop_with("Ruhe7"); });
    mainfrm::startstop_click();
    EXPECT_FALSE(measures(0));
}

TEST_F(Wiring, TheStopButtonTakesTheFocusAtEachRightPassword) {
    const auto before = FrmAbort::state.CmdStop_focused;
    for (int request = 0; request < 2; ++request) {
        while_asked([] { stop_with("Ruhe7"); });
        EXPECT_TRUE(FrmAbort::stop_lock(what));
    }
    EXPECT_EQ(FrmAbort::state.CmdStop_focused, before + 2);
}

} // namespace
} // namespace tyxo
