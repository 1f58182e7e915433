// The alarm alert's confirmation and return, its activation, and the diagrams that it hides.

#include "basics/failure.h"
#include "dialogs/alert_world.h"
#include "displays/bar_diagram.h"
#include "displays/frmdetailedpic.h"

#include <array>

namespace tyxo::alert_testing {
namespace {

TEST_F(Alert, ConfirmingWritesOneLineAndClosesTheWindow) {
    status(0, relay | ac);
    const std::string before = box();
    FrmAlert::CmdAck_click();
    EXPECT_EQ(box(), before + std::string(confirmed));
    EXPECT_EQ(indicators.Text_status.caret(), indicators.Text_status.appended());
    expect_closed();
    advance(6000);
    EXPECT_EQ(world().beeps, 1);
    EXPECT_EQ(world().sounds.size(), 1U);
}

TEST_F(Alert, ClosingTheWindowIsAConfirmationToo) {
    status(0, relay | ac);
    advance(600);
    const std::string before = box();
    FrmAlert::unload();
    EXPECT_EQ(box(), before + std::string(confirmed));
    expect_closed();
}

TEST_F(Alert, ASecondConfirmationWritesNothing) {
    status(0, relay | ac);
    FrmAlert::CmdAck_click();
    FrmAlert::CmdAck_click();
    FrmAlert::unload();
    EXPECT_EQ(confirmations(), 1U);
}

TEST_F(Alert, ConfirmedWithTheAlarmStandingStaysClosed) {
    status(0, relay | ac);
    FrmAlert::CmdAck_click();
    status(0, relay | ac);
    status(0, relay | ac | dc);
    EXPECT_TRUE(indicators.LED_Alarm[0].Active);
    EXPECT_TRUE(sensor::state.alert_latched[0]);
    advance(6000);
    expect_closed();
    EXPECT_EQ(confirmations(), 1U);
}

TEST_F(Alert, ComesAgainWhenTheRelayReturnsOrAnotherChannelAlarms) {
    status(0, relay | ac);
    FrmAlert::CmdAck_click();
    status(1, relay | dc);
    EXPECT_TRUE(FrmAlert::state.form.Visible);
    EXPECT_EQ(lines_shown(), std::vector<int>{1}); // the confirmed channel is no longer named
    expect_red();
    FrmAlert::CmdAck_click();
    status(0, 0);
    expect_closed();
    status(0, relay);
    EXPECT_EQ(lines_shown(), std::vector<int>{0});
    EXPECT_EQ(FrmAlert::state.lbl_inst1[0].Caption, "TY 1"); // a new window has its design texts
    EXPECT_EQ(world().beeps, 3);
}

TEST_F(Alert, ConfirmedInTheDarkPhaseBeginsTheNextAlarmRed) {
    status(0, relay | ac);
    advance(600);
    FrmAlert::CmdAck_click();
    status(1, relay | ac);
    expect_red();
    advance(600);
    expect_dark();
}

TEST_F(Alert, ConfirmedInTheRedPhaseBeginsTheNextAlarmRedToo) {
    status(0, relay | ac);
    FrmAlert::CmdAck_click();
    advance(300);
    status(1, relay | ac);
    expect_red();
    advance(599);
    expect_red();
    advance(1);
    expect_dark();
}

TEST_F(Alert, OpensWithItsDesignValues) {
    FrmAlert::show_alert_line(2);
    FrmAlert::alert_text(2, "left over");
    FrmAlert::state.Lbl_relay.ForeColor = red;
    status(0, relay | ac);
    EXPECT_EQ(lines_shown(), std::vector<int>{0});
    EXPECT_EQ(FrmAlert::state.lbl_inst1[2].Caption, "TY 3");
    expect_red();
}

TEST_F(Alert, ActivationStartsAStoppedClock) {
    status(0, relay | ac);
    FrmAlert::timer_alert.Enabled(false);
    FrmAlert::activate();
    EXPECT_TRUE(FrmAlert::timer_alert.Enabled());
    advance(600);
    expect_dark();
}

TEST_F(Alert, ActivationDoesNotPutThePhaseOff) {
    status(0, relay | ac);
    for (int turn = 0; turn < 6; ++turn) {
        FrmAlert::activate();
        advance(100);
    }
    expect_dark();
}

TEST_F(Alert, ActivationOfAClosedWindowStartsNothing) {
    status(0, relay | ac);
    FrmAlert::CmdAck_click();
    FrmAlert::activate();
    advance(6000);
    expect_closed();
    EXPECT_EQ(world().beeps, 1);
}

TEST_F(Alert, HidesTheDiagramsThatAreOpenAndNothingElseOfThem) {
    const auto expect_hidden = [](auto& window) {
        window.form.Loaded = window.form.Visible = window.open = true;
        auto expected = window;
        expected.form.Visible = false;
        FrmAlert::open_alert();
        EXPECT_EQ(window.form, expected.form);
        EXPECT_TRUE(window.open);
        FrmAlert::CmdAck_click();
        advance(1200);
        EXPECT_FALSE(window.form.Visible); // nobody shows it again
        window = {};
    };
    expect_hidden(frmbarpic::state);
    expect_hidden(Frmbarpic2::state);
    expect_hidden(frmdetailedpic::state);
}

TEST_F(Alert, ADiagramThatIsNotMarkedOpenIsLeftAlone) {
    const auto expect_left = [](auto& window) {
        window.form.Loaded = window.form.Visible = true;
        window.open = false;
        FrmAlert::open_alert();
        EXPECT_TRUE(window.form.Visible);
        FrmAlert::CmdAck_click();
    };
    expect_left(frmbarpic::state);
    expect_left(Frmbarpic2::state);
    expect_left(frmdetailedpic::state);
}

TEST_F(Alert, ASecondChannelLeavesADiagramThatWasOpenedAgain) {
    status(0, relay | ac);
    frmbarpic::state.open = frmbarpic::state.form.Visible = true;
    status(1, relay | ac);
    EXPECT_TRUE(frmbarpic::state.form.Visible);
}

TEST_F(Alert, AlarmsWhileAMessageBoxIsUp) {
    status(0, 0);
    world().during_box = [] {
        for (i16 channel = 0; channel < channel_count; ++channel)
            status(channel, relay | ac);
        advance(1200);
    };
    message_box("Question", box_icon::critical);
    EXPECT_EQ(lines_shown(), (std::vector<int>{0, 1, 2, 3}));
    expect_red();
    EXPECT_EQ(world().beeps, 2);
}

TEST_F(Alert, ChannelsThatDoNotExistAreFailures) {
    for (const i16 channel : std::array<i16, 2>{-1, 4}) {
        EXPECT_THROW(FrmAlert::show_alert_line(channel), failure);
        EXPECT_THROW(FrmAlert::alert_text(channel, "x"), failure);
    }
}

TEST_F(Alert, ANightOfFlashingKeepsItsPace) {
    status(0, relay | ac);
    advance(std::int64_t{10} * 3600 * 1000);
    EXPECT_EQ(world().beeps, 1 + 10 * 3600 * 10 / 12);
    EXPECT_EQ(world().sounds.size(), static_cast<std::size_t>(world().beeps));
}

} // namespace
} // namespace tyxo::alert_testing
