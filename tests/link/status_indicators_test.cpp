// What the status machine shows beside its messages: lamps, inhibit labels, the alert, the cut box.

#include "link/frames.h"
#include "link/link_world.h"
#include "link/start_stop.h"
#include "link/status_update.h"

#include <algorithm>

namespace tyxo::link_testing {
namespace {

constexpr i32 relay = 0x0080;
constexpr i32 ac = 0x0008;
constexpr i32 dc = 0x0002;

class StatusIndicators : public link_world {
  protected:
    void take(const raw_status& raw, i16 channel = 0) {
        said.clear();
        dispatch(status(raw), channel);
    }
    /// The calls of the alert, in order.
    [[nodiscard]] lines alert_calls() const {
        lines found;
        for (const std::string& line : said) {
            if (line.find("alert") != std::string::npos) found.push_back(line);
        }
        return found;
    }
};

struct lamp_case {
    i32 mask;
    per_channel<iLedRoundX> indicator_controls::*lamps;
};

class StatusLamp : public StatusIndicators, public testing::WithParamInterface<lamp_case> {};

TEST_P(StatusLamp, FollowsItsBitAtEveryRun) {
    const auto active = [](i16 channel) { return (indicators.*GetParam().lamps)[channel].Active; };
    const i32 mask = GetParam().mask;
    for (const i32 word : {mask, mask, 0, 0, 0xFFFF & ~mask, 0xFFFF}) {
        take({.alarm = word}, 2);
        EXPECT_EQ(active(2), (word & mask) != 0) << word;
        EXPECT_FALSE(active(1));
    }
    // Also when the bit did not change.
    (indicators.*GetParam().lamps)[2].Active = false;
    take({.alarm = 0xFFFF}, 2);
    EXPECT_TRUE(active(2));
}

INSTANTIATE_TEST_SUITE_P(bits, StatusLamp,
                         testing::Values(lamp_case{0x0080, &indicator_controls::LED_Alarm},
                                         lamp_case{0x0040, &indicator_controls::LED_prealarm},
                                         lamp_case{0x0020, &indicator_controls::LED_Rdy}),
                         [](const auto& info) { return "mask_" + std::to_string(info.param.mask); });

struct inhibit_case {
    i32 value;
    bool inhibited;
};

class InhibitLabels : public StatusIndicators, public testing::WithParamInterface<inhibit_case> {};

TEST_P(InhibitLabels, TakeThePlaceOfTheAlarmLabelsForTheValue1) {
    for (const bool before : {false, true}) {
        take({.inhibit_on = before, .inhibit_left = 5}, 1);
        take({.inhibit_on = GetParam().value, .inhibit_left = 65000}, 1);
        const bool inhibited = GetParam().inhibited;
        EXPECT_EQ(indicators.Lbl_alm1[1].Visible, !inhibited);
        EXPECT_EQ(indicators.lbl_alm2[1].Visible, !inhibited);
        EXPECT_EQ(indicators.Lbl_alminhibit[1].Visible, inhibited);
        EXPECT_EQ(indicators.Lbl_inhtime[1].Visible, inhibited);
        EXPECT_EQ(indicators.Lbl_inhtime[1].Caption == "65000", inhibited);
    }
}

INSTANTIATE_TEST_SUITE_P(values, InhibitLabels,
                         testing::Values(inhibit_case{0, false}, inhibit_case{1, true},
                                         inhibit_case{2, false}, inhibit_case{3, false},
                                         inhibit_case{0x0101, false}),
                         [](const auto& info) { return "value_" + std::to_string(info.param.value); });

TEST_F(StatusIndicators, InhibitTimeCountsDownWithTheFrames) {
    for (const i32 left : {30, 29, 0}) {
        take({.inhibit_on = 1, .inhibit_left = left});
        EXPECT_EQ(indicators.Lbl_inhtime[0].Caption, std::to_string(left));
    }
}

TEST_F(StatusIndicators, AShortStatusFrameEndsTheInhibitLabels) {
    take({.inhibit_on = 1, .inhibit_left = 30});
    dispatch(status({}, short_status_length));
    EXPECT_TRUE(indicators.Lbl_alm1[0].Visible);
    EXPECT_FALSE(indicators.Lbl_alminhibit[0].Visible);
}

TEST_F(StatusIndicators, AlertComesOncePerClosingOfTheRelay) {
    take({.alarm = relay | ac});
    EXPECT_EQ(alert_calls(),
              (lines{"open_alert", "show_alert_line 1", "alert_text 1 Engine 1  Mainalarm AC"}));
    EXPECT_TRUE(sensor::state.alert_latched[0]);
    take({.alarm = relay | ac});
    take({.alarm = relay | dc});
    EXPECT_EQ(alert_calls(), lines{});
    take({});
    EXPECT_FALSE(sensor::state.alert_latched[0]);
    EXPECT_EQ(alert_calls(), lines{});
    sensor::state.alert_open = false; // the operator has closed it
    take({.alarm = relay | dc});
    EXPECT_EQ(alert_calls(),
              (lines{"open_alert", "show_alert_line 1", "alert_text 1 Engine 1  Mainalarm DC"}));
}

TEST_F(StatusIndicators, AlertThatWasClosedStaysClosedWhileTheRelayHolds) {
    take({.alarm = relay | ac});
    sensor::state.alert_open = false;
    take({.alarm = relay | ac | dc});
    EXPECT_EQ(alert_calls(), lines{});
}

TEST_F(StatusIndicators, AlertWithBothAlarmsEndsWithDc) {
    take({.alarm = relay | ac | dc});
    EXPECT_EQ(told("alert_text").back(), "1 Engine 1  Mainalarm DC");
}

TEST_F(StatusIndicators, AlertWithoutAcAndDcKeepsItsLastText) {
    take({.alarm = relay | 0x8005});
    EXPECT_EQ(alert_calls(), (lines{"open_alert", "show_alert_line 1"}));
    EXPECT_TRUE(sensor::state.alert_latched[0]);
}

TEST_F(StatusIndicators, MainAlarmWithoutTheRelayRaisesNoAlert) {
    take({.alarm = 0xFFFF & ~relay});
    EXPECT_EQ(alert_calls(), lines{});
}

TEST_F(StatusIndicators, AlertNamesTheFirst25CharactersOfTheLocation) {
    record(0).location = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234";
    take({.alarm = relay | ac});
    EXPECT_EQ(told("alert_text"), lines{"1 ABCDEFGHIJKLMNOPQRSTUVWXY  Mainalarm AC"});
    record(1).location = "ABCDEFGHIJKLMNOPQRSTUVWXY";
    take({.alarm = relay | dc}, 1);
    EXPECT_EQ(told("alert_text"), lines{"2 ABCDEFGHIJKLMNOPQRSTUVWXY  Mainalarm DC"});
    record(2).location = "";
    take({.alarm = relay | dc}, 2);
    EXPECT_EQ(told("alert_text"), lines{"3   Mainalarm DC"});
}

TEST_F(StatusIndicators, FourRelaysAtOnceOpenOneAlertWithFourLines) {
    for (i16 channel = 0; channel < channel_count; ++channel)
        dispatch(status({.alarm = relay | ac}), channel);
    EXPECT_EQ(told("open_alert").size(), 1U);
    EXPECT_EQ(told("show_alert_line"), (lines{"1", "2", "3", "4"}));
    EXPECT_EQ(told("alert_text").size(), 4U);
}

TEST_F(StatusIndicators, AlertComesBehindTheMessagesOfTheRun) {
    take({.alarm = relay | dc | 0x4000, .inhibit_on = 1});
    const auto alert = std::ranges::find(said, "open_alert");
    const auto last_message = std::ranges::find(said, "log_comment 1 KVD Alarm Inhibit ON");
    EXPECT_LT(last_message - said.begin(), alert - said.begin());
    EXPECT_NE(alert, said.end());
}

TEST_F(StatusIndicators, TheCaretGoesToTheEndAtEveryRun) {
    indicators.Text_status.append("some text\r\n");
    take({});
    EXPECT_EQ(indicators.Text_status.caret(), indicators.Text_status.appended());
    take({.alarm = 0x2000});
    EXPECT_EQ(indicators.Text_status.caret(), indicators.Text_status.appended());
}

TEST_F(StatusIndicators, ATextOf60001CharactersIsCutBeforeTheNewLines) {
    indicators.Text_status.append('a' + std::string(60000, 'b'));
    take({.alarm = 0x2000});
    const std::string line = std::string(box_clock) + " KVD Engine 1 ## Overspeed Alarm ON\r\n";
    EXPECT_EQ(box(), std::string(60000, 'b') + line);
    EXPECT_EQ(indicators.Text_status.dropped(), 1U);
    take({});
    EXPECT_EQ(indicators.Text_status.dropped(), 1U + line.size());
}

TEST_F(StatusIndicators, ATextOf60000CharactersIsNotCut) {
    indicators.Text_status.append(std::string(60000, 'b'));
    take({});
    EXPECT_EQ(indicators.Text_status.size(), 60000U);
    EXPECT_EQ(indicators.Text_status.dropped(), 0U);
}

TEST_F(StatusIndicators, LatchesStayOverStopAndStart) {
    start_log_ch(0);
    receive(status({.alarm = 0x8000 | relay | ac}));
    stop_log_ch(0);
    start_log_ch(0);
    said.clear();
    receive(status({.alarm = 0x8000 | relay | ac}));
    EXPECT_TRUE(said.empty());
    receive(status({}));
    EXPECT_EQ(told("log_comment"), (lines{"1 KVD Main ALARM AC OFF", "1 KVD Main ALARM OFF"}));
}

} // namespace
} // namespace tyxo::link_testing
