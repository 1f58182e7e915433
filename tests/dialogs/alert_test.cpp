// The alarm alert without its picture: what raises it, its phases, its end. Status frames come over the line.

#include "app/mainfrm.h"
#include "basics/failure.h"
#include "dialogs/frmalert.h"
#include "displays/bar_diagram.h"
#include "displays/frmdetailedpic.h"
#include "logging/logging_machine.h"
#include "platform/sound.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace tyxo {
namespace {

using namespace simulation;

constexpr i32 relay = 0x0080;
constexpr i32 ac = 0x0008;
constexpr i32 dc = 0x0002;
constexpr colour black = 0;
constexpr colour red = 255;
constexpr colour light = 0xE0E0E0;
constexpr std::string_view confirmed = "07-02-2026 13:05:09 Mainalarm confirmed by operator!\r\n";
constexpr std::string_view sound_file = "ralarm_1.wav";

class Alert : public testing::Test {
  protected:
    void SetUp() override {
        start_on(logging_settings(4));
        put_file(sound_file, "RIFF");
        for (i16 channel = 0; channel < channel_count; ++channel)
            mainfrm::start_channel_click(channel);
    }
    ~Alert() override { fresh_world(); }

    static void status(i16 channel, i32 alarm) { feed(channel, status_body({.alarm = alarm})); }
    static std::string box() { return std::string(indicators.Text_status.text()); }
    static std::size_t confirmations() {
        std::size_t count = 0;
        for (std::size_t at = box().find("confirmed"); at != std::string::npos;
             at = box().find("confirmed", at + 1))
            ++count;
        return count;
    }
    static std::vector<int> lines_shown() {
        std::vector<int> shown;
        for (int index = 0; index < channel_count; ++index) {
            const auto at = static_cast<std::size_t>(index);
            EXPECT_EQ(FrmAlert.lbl_inst[at].Visible, FrmAlert.lbl_inst1[at].Visible);
            if (FrmAlert.lbl_inst[at].Visible) shown.push_back(index);
        }
        return shown;
    }
    static void expect_red() {
        EXPECT_EQ(FrmAlert.Lbl_relay.ForeColor, red);
        EXPECT_EQ(FrmAlert.Lbl_attention.ForeColor, red);
        EXPECT_EQ(FrmAlert.BackColor, red);
        EXPECT_TRUE(FrmAlert.Image1_visible);
        EXPECT_TRUE(FrmAlert.Image2_visible);
    }
    static void expect_dark() {
        EXPECT_EQ(FrmAlert.Lbl_relay.ForeColor, black);
        EXPECT_EQ(FrmAlert.Lbl_attention.ForeColor, black);
        EXPECT_EQ(FrmAlert.BackColor, light);
        EXPECT_FALSE(FrmAlert.Image1_visible);
        EXPECT_FALSE(FrmAlert.Image2_visible);
    }
    static void expect_closed() {
        EXPECT_FALSE(FrmAlert.form.Visible);
        EXPECT_FALSE(FrmAlert.form.Loaded);
        EXPECT_FALSE(sensor::alert_open);
        EXPECT_FALSE(timer_alert.Enabled());
        EXPECT_EQ(lines_shown(), std::vector<int>{});
    }
};

TEST_F(Alert, IsClosedAndSilentBeforeAnAlarm) {
    advance(5000);
    expect_closed();
    EXPECT_EQ(FrmAlert.form.Caption, "Mainalarm");
    EXPECT_EQ(FrmAlert.Lbl_attention.Caption, "ATTENTION");
    EXPECT_EQ(FrmAlert.Lbl_relay.Caption, "Main Alarm Relay triggered!");
    EXPECT_EQ(FrmAlert.CmdAck.Caption, "confirm");
    EXPECT_EQ(FrmAlert.lbl_inst[3].Caption, "Tyxo 4:");
    EXPECT_EQ(FrmAlert.lbl_inst1[3].Caption, "TY 4");
    EXPECT_TRUE(world().sounds.empty());
    EXPECT_EQ(world().beeps, 0);
}

TEST_F(Alert, OpensWithTheRelayAndNamesTheChannel) {
    status(1, relay | ac);
    EXPECT_TRUE(FrmAlert.form.Visible);
    EXPECT_TRUE(FrmAlert.form.Loaded);
    EXPECT_TRUE(sensor::alert_open);
    EXPECT_TRUE(sensor::alert_latched[1]);
    EXPECT_EQ(lines_shown(), std::vector<int>{1});
    EXPECT_EQ(FrmAlert.lbl_inst1[1].Caption, "Engine 2  Mainalarm AC");
    EXPECT_EQ(timer_alert.Interval(), 600);
    EXPECT_TRUE(timer_alert.Enabled());
}

TEST_F(Alert, BeginsItsFirstRedPhaseAtOnce) {
    status(0, relay | ac);
    expect_red();
    EXPECT_EQ(world().beeps, 1);
    EXPECT_EQ(world().sounds.size(), 1U);
}

TEST_F(Alert, ChangesEvery600MsAndSoundsAnewEvery1200) {
    status(0, relay | ac);
    advance(599);
    expect_red();
    advance(1);
    expect_dark();
    EXPECT_EQ(world().beeps, 1);
    EXPECT_EQ(world().sounds.size(), 1U);
    advance(599);
    expect_dark();
    advance(1);
    expect_red();
    EXPECT_EQ(world().beeps, 2);
    EXPECT_EQ(world().sounds.size(), 2U);
    advance(12'000);
    expect_red();
    EXPECT_EQ(world().beeps, 12);
    EXPECT_EQ(world().sounds.size(), 12U);
}

TEST_F(Alert, TheSoundIsTheShortPathInABufferOf260Blanks) {
    status(0, relay | ac);
    ASSERT_EQ(world().sounds.size(), 1U);
    EXPECT_EQ(world().sounds[0].name, std::string(sound_file) + std::string(260 - sound_file.size(), ' '));
    EXPECT_EQ(world().sounds[0].flags, 0x20003);
}

TEST_F(Alert, WithoutItsSoundFileFlashesAndBeepsOn) {
    world().files.erase(std::string(sound_file));
    status(0, relay | ac);
    expect_red();
    advance(600);
    expect_dark();
    advance(600);
    expect_red();
    EXPECT_EQ(world().beeps, 2);
    ASSERT_EQ(world().sounds.size(), 2U);
    for (const played_sound& sound : world().sounds)
        EXPECT_EQ(sound.name, std::string(260, ' '));
}

TEST_F(Alert, ASoundFileThatComesLaterIsPlayed) {
    world().files.erase(std::string(sound_file));
    status(0, relay | ac);
    put_file(sound_file, "RIFF");
    advance(1200);
    EXPECT_TRUE(world().sounds.back().name.starts_with(sound_file));
}

TEST_F(Alert, TheColourOfTheRelayLineAloneTellsThePhase) {
    status(0, relay | ac);
    FrmAlert.BackColor = light;
    FrmAlert.Lbl_attention.ForeColor = black;
    timer_alert_tick();
    expect_dark();
    FrmAlert.Lbl_relay.ForeColor = 254;
    FrmAlert.BackColor = red;
    timer_alert_tick();
    expect_red();
}

TEST_F(Alert, TwoChannelsInTheSameSecondMakeOneWindowWithTwoLines) {
    status(0, relay | ac);
    status(2, relay | dc);
    EXPECT_EQ(lines_shown(), (std::vector<int>{0, 2}));
    EXPECT_EQ(FrmAlert.lbl_inst1[0].Caption, "Engine 1  Mainalarm AC");
    EXPECT_EQ(FrmAlert.lbl_inst1[2].Caption, "Engine 3  Mainalarm DC");
    EXPECT_EQ(world().beeps, 1);
    advance(600);
    expect_dark(); // the second one did not begin the phase anew
}

TEST_F(Alert, FourChannelsAtOnceMakeOneWindowWithFourLines) {
    for (i16 channel = 0; channel < channel_count; ++channel)
        status(channel, relay | dc);
    EXPECT_EQ(lines_shown(), (std::vector<int>{0, 1, 2, 3}));
    EXPECT_EQ(world().beeps, 1);
}

TEST_F(Alert, ALocationOf30CharactersIsCutTo25) {
    sensor::channels[0].location = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234";
    status(0, relay | ac);
    EXPECT_EQ(FrmAlert.lbl_inst1[0].Caption, "ABCDEFGHIJKLMNOPQRSTUVWXY  Mainalarm AC");
}

TEST_F(Alert, ALocationMayBeEmptyOrHoldAnyLetter) {
    sensor::channels[0].location = "";
    sensor::channels[1].location = "A & <b>\xDC</b>";
    status(0, relay | ac);
    status(1, relay | dc);
    EXPECT_EQ(FrmAlert.lbl_inst1[0].Caption, "  Mainalarm AC");
    EXPECT_EQ(FrmAlert.lbl_inst1[1].Caption, "A & <b>\xDC</b>  Mainalarm DC");
}

TEST_F(Alert, WithBothAlarmsTheLineSaysDc) {
    status(0, relay | ac | dc);
    EXPECT_EQ(FrmAlert.lbl_inst1[0].Caption, "Engine 1  Mainalarm DC");
}

TEST_F(Alert, ARelayWithoutAcAndDcKeepsTheTextOfItsLine) {
    status(3, relay);
    EXPECT_EQ(lines_shown(), std::vector<int>{3});
    EXPECT_EQ(FrmAlert.lbl_inst1[3].Caption, "TY 4");
    status(0, relay | ac);
    status(0, 0);
    status(0, relay);
    EXPECT_EQ(FrmAlert.lbl_inst1[0].Caption, "Engine 1  Mainalarm AC");
}

TEST_F(Alert, AChannelThatAlarmsAgainIsWrittenOverItsOwnLine) {
    status(0, relay | ac);
    advance(600);
    status(0, 0);
    EXPECT_EQ(lines_shown(), std::vector<int>{0});
    expect_dark();
    status(0, relay | dc);
    EXPECT_EQ(lines_shown(), std::vector<int>{0});
    EXPECT_EQ(FrmAlert.lbl_inst1[0].Caption, "Engine 1  Mainalarm DC");
    expect_dark();
    EXPECT_EQ(world().beeps, 1);
}

TEST_F(Alert, AClearedRelayLeavesTheWindow) {
    status(0, relay | ac);
    status(0, 0);
    EXPECT_FALSE(sensor::alert_latched[0]);
    advance(600);
    expect_dark();
    EXPECT_TRUE(sensor::alert_open);
    EXPECT_TRUE(FrmAlert.form.Visible);
}

TEST_F(Alert, ConfirmingWritesOneLineAndClosesTheWindow) {
    status(0, relay | ac);
    const std::string before = box();
    FrmAlert_CmdAck_click();
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
    FrmAlert_unload();
    EXPECT_EQ(box(), before + std::string(confirmed));
    expect_closed();
}

TEST_F(Alert, ASecondConfirmationWritesNothing) {
    status(0, relay | ac);
    FrmAlert_CmdAck_click();
    FrmAlert_CmdAck_click();
    FrmAlert_unload();
    EXPECT_EQ(confirmations(), 1U);
}

TEST_F(Alert, ConfirmedWithTheAlarmStandingStaysClosed) {
    status(0, relay | ac);
    FrmAlert_CmdAck_click();
    status(0, relay | ac);
    status(0, relay | ac | dc);
    EXPECT_TRUE(indicators.LED_Alarm[0].Active);
    EXPECT_TRUE(sensor::alert_latched[0]);
    advance(6000);
    expect_closed();
    EXPECT_EQ(confirmations(), 1U);
}

TEST_F(Alert, ComesAgainWhenTheRelayReturnsOrAnotherChannelAlarms) {
    status(0, relay | ac);
    FrmAlert_CmdAck_click();
    status(1, relay | dc);
    EXPECT_TRUE(FrmAlert.form.Visible);
    EXPECT_EQ(lines_shown(), std::vector<int>{1}); // the confirmed channel is no longer named
    expect_red();
    FrmAlert_CmdAck_click();
    status(0, 0);
    expect_closed();
    status(0, relay);
    EXPECT_EQ(lines_shown(), std::vector<int>{0});
    EXPECT_EQ(FrmAlert.lbl_inst1[0].Caption, "TY 1"); // a new window has its design texts
    EXPECT_EQ(world().beeps, 3);
}

TEST_F(Alert, ConfirmedInTheDarkPhaseBeginsTheNextAlarmRed) {
    status(0, relay | ac);
    advance(600);
    FrmAlert_CmdAck_click();
    status(1, relay | ac);
    expect_red();
    advance(600);
    expect_dark();
}

TEST_F(Alert, ConfirmedInTheRedPhaseBeginsTheNextAlarmRedToo) {
    status(0, relay | ac);
    FrmAlert_CmdAck_click();
    advance(300);
    status(1, relay | ac);
    expect_red();
    advance(599);
    expect_red();
    advance(1);
    expect_dark();
}

TEST_F(Alert, OpensWithItsDesignValues) {
    show_alert_line(2);
    alert_text(2, "left over");
    FrmAlert.Lbl_relay.ForeColor = red;
    status(0, relay | ac);
    EXPECT_EQ(lines_shown(), std::vector<int>{0});
    EXPECT_EQ(FrmAlert.lbl_inst1[2].Caption, "TY 3");
    expect_red();
}

TEST_F(Alert, ActivationStartsAStoppedClock) {
    status(0, relay | ac);
    timer_alert.Enabled(false);
    FrmAlert_activate();
    EXPECT_TRUE(timer_alert.Enabled());
    advance(600);
    expect_dark();
}

TEST_F(Alert, ActivationDoesNotPutThePhaseOff) {
    status(0, relay | ac);
    for (int turn = 0; turn < 6; ++turn) {
        FrmAlert_activate();
        advance(100);
    }
    expect_dark();
}

TEST_F(Alert, ActivationOfAClosedWindowStartsNothing) {
    status(0, relay | ac);
    FrmAlert_CmdAck_click();
    FrmAlert_activate();
    advance(6000);
    expect_closed();
    EXPECT_EQ(world().beeps, 1);
}

TEST_F(Alert, HidesTheDiagramsThatAreOpenAndNothingElseOfThem) {
    const auto expect_hidden = [](auto& window) {
        window.form.Loaded = window.form.Visible = window.open = true;
        auto expected = window;
        expected.form.Visible = false;
        open_alert();
        EXPECT_EQ(window.form, expected.form);
        EXPECT_TRUE(window.open);
        FrmAlert_CmdAck_click();
        advance(1200);
        EXPECT_FALSE(window.form.Visible); // nobody shows it again
        window = {};
    };
    expect_hidden(frmbarpic);
    expect_hidden(Frmbarpic2);
    expect_hidden(frmdetailedpic);
}

TEST_F(Alert, ADiagramThatIsNotMarkedOpenIsLeftAlone) {
    const auto expect_left = [](auto& window) {
        window.form.Loaded = window.form.Visible = true;
        window.open = false;
        open_alert();
        EXPECT_TRUE(window.form.Visible);
        FrmAlert_CmdAck_click();
    };
    expect_left(frmbarpic);
    expect_left(Frmbarpic2);
    expect_left(frmdetailedpic);
}

TEST_F(Alert, ASecondChannelLeavesADiagramThatWasOpenedAgain) {
    status(0, relay | ac);
    frmbarpic.open = frmbarpic.form.Visible = true;
    status(1, relay | ac);
    EXPECT_TRUE(frmbarpic.form.Visible);
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
        EXPECT_THROW(show_alert_line(channel), failure);
        EXPECT_THROW(alert_text(channel, "x"), failure);
    }
}

TEST_F(Alert, ANightOfFlashingKeepsItsPace) {
    status(0, relay | ac);
    advance(std::int64_t{10} * 3600 * 1000);
    EXPECT_EQ(world().beeps, 1 + 10 * 3600 * 10 / 12);
    EXPECT_EQ(world().sounds.size(), static_cast<std::size_t>(world().beeps));
}

} // namespace
} // namespace tyxo
