// The commands that stop measuring, with the stop lock before them.

#include "dialogs/locked_program.h"

namespace tyxo {
namespace {

using namespace simulation;

class StopCommand : public StopLock {};

// The start/stop command of all channels.

TEST_F(StopCommand, StopsAllChannelsWithThePassword) {
    while_asked([] { stop_with("Ruhe7"); });
    mainfrm::startstop_click();
    EXPECT_FALSE(sensor::state.measure_running);
    EXPECT_FALSE(measures(0));
    EXPECT_FALSE(measures(1));
    EXPECT_TRUE(indicators.Quit.Enabled);
    EXPECT_EQ(indicators.startstop.Caption, "Start all channels");
}

TEST_F(StopCommand, StopsNothingAndLeavesQuitDisabledOnContinue) {
    while_asked([] {
        type_password("Ruhe7");
        FrmAbort::CmdContinue_click();
    });
    mainfrm::startstop_click();
    EXPECT_TRUE(sensor::state.measure_running);
    EXPECT_TRUE(measures(0));
    EXPECT_TRUE(measures(1));
    EXPECT_FALSE(indicators.Quit.Enabled);
}

TEST_F(StopCommand, QuitIsEnabledAgainByTheNextGrantedStop) {
    while_asked(FrmAbort::CmdContinue_click);
    mainfrm::startstop_click();
    EXPECT_FALSE(indicators.Quit.Enabled);
    while_asked([] { stop_with("Ruhe7"); });
    mainfrm::startstop_click();
    EXPECT_TRUE(indicators.Quit.Enabled);
}

TEST_F(StopCommand, IsNotAskedForAStart) {
    while_asked([] { stop_with("Ruhe7"); });
    mainfrm::startstop_click();
    mainfrm::startstop_click();
    EXPECT_FALSE(FrmAbort::state.form.Visible);
    EXPECT_TRUE(measures(0));
}

// The start/stop command of one channel.

TEST_F(StopCommand, StopsOneChannelAndTheMeasurementWithTheLastOne) {
    while_asked([] { stop_with("Ruhe7"); });
    mainfrm::start_channel_click(0);
    EXPECT_FALSE(measures(0));
    EXPECT_TRUE(measures(1));
    EXPECT_TRUE(sensor::state.measure_running);
    while_asked([] { stop_with("Ruhe7"); });
    mainfrm::start_channel_click(1);
    EXPECT_FALSE(measures(1));
    EXPECT_FALSE(sensor::state.measure_running);
    EXPECT_EQ(indicators.startstop.Caption, "Start all channels");
}

TEST_F(StopCommand, LeavesTheChannelRunningAndQuitDisabledOnContinue) {
    while_asked(FrmAbort::CmdContinue_click);
    mainfrm::start_channel_click(1);
    EXPECT_TRUE(measures(0));
    EXPECT_TRUE(measures(1));
    EXPECT_FALSE(indicators.Quit.Enabled);
}

TEST_F(StopCommand, ASecondChannelsRequestIsRefusedWhileTheFirstIsAsked) {
    while_asked([] {
        mainfrm::start_channel_click(1);
        EXPECT_TRUE(measures(1));
        stop_with("Ruhe7");
    });
    mainfrm::start_channel_click(0);
    EXPECT_FALSE(measures(0));
    EXPECT_TRUE(measures(1)) << "nobody was asked about it";
}

} // namespace
} // namespace tyxo
