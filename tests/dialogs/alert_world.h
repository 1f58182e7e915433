#pragma once
// A program with four measuring channels, and what its alarm alert shows.

#include "app/mainfrm.h"
#include "dialogs/frmalert.h"
#include "logging/logging_machine.h"
#include "platform/sound.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace tyxo::alert_testing {

using namespace simulation;

inline constexpr i32 relay = 0x0080;
inline constexpr i32 ac = 0x0008;
inline constexpr i32 dc = 0x0002;
inline constexpr colour black = 0;
inline constexpr colour red = 255;
inline constexpr colour light = 0xE0E0E0;
inline constexpr std::string_view confirmed = "07-02-2026 13:05:09 Mainalarm confirmed by operator!\r\n";
inline constexpr std::string_view sound_file = "ralarm_1.wav";

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
            EXPECT_EQ(FrmAlert::state.lbl_inst[at].Visible, FrmAlert::state.lbl_inst1[at].Visible);
            if (FrmAlert::state.lbl_inst[at].Visible) shown.push_back(index);
        }
        return shown;
    }
    static void expect_red() {
        EXPECT_EQ(FrmAlert::state.Lbl_relay.ForeColor, red);
        EXPECT_EQ(FrmAlert::state.Lbl_attention.ForeColor, red);
        EXPECT_EQ(FrmAlert::state.BackColor, red);
        EXPECT_TRUE(FrmAlert::state.Image1_visible);
        EXPECT_TRUE(FrmAlert::state.Image2_visible);
    }
    static void expect_dark() {
        EXPECT_EQ(FrmAlert::state.Lbl_relay.ForeColor, black);
        EXPECT_EQ(FrmAlert::state.Lbl_attention.ForeColor, black);
        EXPECT_EQ(FrmAlert::state.BackColor, light);
        EXPECT_FALSE(FrmAlert::state.Image1_visible);
        EXPECT_FALSE(FrmAlert::state.Image2_visible);
    }
    static void expect_closed() {
        EXPECT_FALSE(FrmAlert::state.form.Visible);
        EXPECT_FALSE(FrmAlert::state.form.Loaded);
        EXPECT_FALSE(sensor::state.alert_open);
        EXPECT_FALSE(FrmAlert::timer_alert.Enabled());
        EXPECT_EQ(lines_shown(), std::vector<int>{});
    }
};

} // namespace tyxo::alert_testing
