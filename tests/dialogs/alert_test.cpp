// The alarm alert without its picture: what raises it, its lines and phases. Status frames come over the
// line.

#include "dialogs/alert_world.h"

namespace tyxo::alert_testing {
namespace {

TEST_F(Alert, IsClosedAndSilentBeforeAnAlarm) {
    advance(5000);
    expect_closed();
    EXPECT_EQ(FrmAlert::state.form.Caption, "Mainalarm");
    EXPECT_EQ(FrmAlert::state.Lbl_attention.Caption, "ATTENTION");
    EXPECT_EQ(FrmAlert::state.Lbl_relay.Caption, "Main Alarm Relay triggered!");
    EXPECT_EQ(FrmAlert::state.CmdAck.Caption, "confirm");
    EXPECT_EQ(FrmAlert::state.lbl_inst[3].Caption, "Tyxo 4:");
    EXPECT_EQ(FrmAlert::state.lbl_inst1[3].Caption, "TY 4");
    EXPECT_TRUE(world().sounds.empty());
    EXPECT_EQ(world().beeps, 0);
}

TEST_F(Alert, OpensWithTheRelayAndNamesTheChannel) {
    status(1, relay | ac);
    EXPECT_TRUE(FrmAlert::state.form.Visible);
    EXPECT_TRUE(FrmAlert::state.form.Loaded);
    EXPECT_TRUE(sensor::state.alert_open);
    EXPECT_TRUE(sensor::state.alert_latched[1]);
    EXPECT_EQ(lines_shown(), std::vector<int>{1});
    EXPECT_EQ(FrmAlert::state.lbl_inst1[1].Caption, "Engine 2  Mainalarm AC");
    EXPECT_EQ(FrmAlert::timer_alert.Interval(), 600);
    EXPECT_TRUE(FrmAlert::timer_alert.Enabled());
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
    EXPECT_EQ(world().wakes, 12) << "a dark screen shows no alarm";
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
    FrmAlert::state.BackColor = light;
    FrmAlert::state.Lbl_attention.ForeColor = black;
    FrmAlert::timer_alert_tick();
    expect_dark();
    FrmAlert::state.Lbl_relay.ForeColor = 254;
    FrmAlert::state.BackColor = red;
    FrmAlert::timer_alert_tick();
    expect_red();
}

TEST_F(Alert, TwoChannelsInTheSameSecondMakeOneWindowWithTwoLines) {
    status(0, relay | ac);
    status(2, relay | dc);
    EXPECT_EQ(lines_shown(), (std::vector<int>{0, 2}));
    EXPECT_EQ(FrmAlert::state.lbl_inst1[0].Caption, "Engine 1  Mainalarm AC");
    EXPECT_EQ(FrmAlert::state.lbl_inst1[2].Caption, "Engine 3  Mainalarm DC");
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
    sensor::state.channels[0].location = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234";
    status(0, relay | ac);
    EXPECT_EQ(FrmAlert::state.lbl_inst1[0].Caption, "ABCDEFGHIJKLMNOPQRSTUVWXY  Mainalarm AC");
}

TEST_F(Alert, ALocationMayBeEmptyOrHoldAnyLetter) {
    sensor::state.channels[0].location = "";
    sensor::state.channels[1].location = "A & <b>\xDC</b>";
    status(0, relay | ac);
    status(1, relay | dc);
    EXPECT_EQ(FrmAlert::state.lbl_inst1[0].Caption, "  Mainalarm AC");
    EXPECT_EQ(FrmAlert::state.lbl_inst1[1].Caption, "A & <b>\xDC</b>  Mainalarm DC");
}

TEST_F(Alert, WithBothAlarmsTheLineSaysDc) {
    status(0, relay | ac | dc);
    EXPECT_EQ(FrmAlert::state.lbl_inst1[0].Caption, "Engine 1  Mainalarm DC");
}

TEST_F(Alert, ARelayWithoutAcAndDcKeepsTheTextOfItsLine) {
    status(3, relay);
    EXPECT_EQ(lines_shown(), std::vector<int>{3});
    EXPECT_EQ(FrmAlert::state.lbl_inst1[3].Caption, "TY 4");
    status(0, relay | ac);
    status(0, 0);
    status(0, relay);
    EXPECT_EQ(FrmAlert::state.lbl_inst1[0].Caption, "Engine 1  Mainalarm AC");
}

TEST_F(Alert, AChannelThatAlarmsAgainIsWrittenOverItsOwnLine) {
    status(0, relay | ac);
    advance(600);
    status(0, 0);
    EXPECT_EQ(lines_shown(), std::vector<int>{0});
    expect_dark();
    status(0, relay | dc);
    EXPECT_EQ(lines_shown(), std::vector<int>{0});
    EXPECT_EQ(FrmAlert::state.lbl_inst1[0].Caption, "Engine 1  Mainalarm DC");
    expect_dark();
    EXPECT_EQ(world().beeps, 1);
}

TEST_F(Alert, AClearedRelayLeavesTheWindow) {
    status(0, relay | ac);
    status(0, 0);
    EXPECT_FALSE(sensor::state.alert_latched[0]);
    advance(600);
    expect_dark();
    EXPECT_TRUE(sensor::state.alert_open);
    EXPECT_TRUE(FrmAlert::state.form.Visible);
}

} // namespace
} // namespace tyxo::alert_testing
