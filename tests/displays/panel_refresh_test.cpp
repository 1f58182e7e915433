// The display tick: which panels it writes, and what it writes.

#include "displays/panel.h"
#include "link/supervision.h"
#include "logging/logging_machine.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tyxo {
namespace {

using namespace simulation;
using mainfrm::start_channel_click;

class PanelRefresh : public testing::Test {
  protected:
    void SetUp() override { start_on(logging_settings(3)); }
};

/// Everything that the panel of a channel shows.
auto shown(i16 channel) {
    return std::make_tuple(panels.Frame_sensor[channel], panels.Gauge_thermo[channel], panels.Label4[channel],
                           panels.dig_sens[channel], panels.dig_sens2[channel], panels.lbl_aimplevel[channel],
                           panels.Lbl_dc_percent[channel], panels.Frame_message[channel],
                           panels.Lbl_dama[channel], panels.XYplot[channel].Visible,
                           panels.Cmd_diagramm[channel], panels.Cmd_diagramm2[channel],
                           indicators.drehzahl[channel], indicators.dig_drehzahl[channel],
                           indicators.digi_Thermo[channel], indicators.t_mv[channel]);
}

void fill(i16 channel) {
    channel_rec& rec = sensor::state.channels[channel];
    rec.speed = 500;
    rec.tsignal = 40;
    rec.tvoltage = 123;
    rec.alarmlevel = 300;
    rec.aimp_level_cur = 30;
    rec.ialarmlevel = 80;
    rec.dcalarmpercent = 70;
    rec.ext1_valid = rec.ext2_valid = rec.dcpercent_valid = true;
    rec.eva_mode = 1;
}

TEST_F(PanelRefresh, ATickWritesStartedChannelsOnly) {
    for (i16 channel = 0; channel < channel_count; ++channel)
        fill(channel);
    start_channel_click(1);
    const auto first = shown(0);
    const auto third = shown(2);
    const auto missing = shown(3);
    const auto second = shown(1);
    mainfrm::Timer_chart_upd_tick();
    EXPECT_NE(shown(1), second);
    EXPECT_EQ(indicators.drehzahl[1].Position, 500);
    EXPECT_EQ(shown(0), first);
    EXPECT_EQ(shown(2), third);
    EXPECT_EQ(shown(3), missing);
}

TEST_F(PanelRefresh, ATickNeverTouchesAMissingChannelEvenIfItsFlagWereSet) {
    fill(3);
    sensor::state.channel_running[3] = true;
    const auto before = shown(3);
    mainfrm::Timer_chart_upd_tick();
    EXPECT_EQ(shown(3), before);
}

TEST_F(PanelRefresh, ATickYieldsOnceBehindTheLastChannel) {
    for (i16 channel = 0; channel < 3; ++channel) {
        fill(channel);
        start_channel_click(channel);
    }
    int written = 0;
    world().during_do_events = [&] {
        written = static_cast<int>(std::ranges::count_if(
            indicators.drehzahl, [](const auto& gauge) { return gauge.Position == 500; }));
    };
    const int before = world().do_events_calls;
    mainfrm::Timer_chart_upd_tick();
    EXPECT_EQ(world().do_events_calls, before + 1);
    EXPECT_EQ(written, 3);
}

TEST_F(PanelRefresh, ATickWithoutARunningChannelYieldsAllTheSame) {
    const int before = world().do_events_calls;
    mainfrm::Timer_chart_upd_tick();
    EXPECT_EQ(world().do_events_calls, before + 1);
}

TEST_F(PanelRefresh, ValuesAreWrittenOnEveryTickChangedOrNot) {
    fill(0);
    start_channel_click(0);
    advance(500);
    const auto written = shown(0);
    indicators.drehzahl[0].Position = 1;
    indicators.dig_drehzahl[0].Value = 1;
    indicators.digi_Thermo[0].Value = 1;
    indicators.t_mv[0].Value = 1;
    panels.Gauge_thermo[0].Position = 1;
    panels.dig_sens[0].Value = 1;
    panels.dig_sens2[0] = {};
    panels.lbl_aimplevel[0].Caption = panels.Lbl_dc_percent[0].Caption = panels.Lbl_dama[0].Caption = "1";
    panels.Frame_message[0].Visible = true;
    panels.XYplot[0].Visible = false;
    advance(500);
    auto expected = written;
    std::get<4>(expected) = panels.dig_sens2[0];
    EXPECT_EQ(shown(0), expected);
    EXPECT_EQ(panels.dig_sens2[0].Value, 30);
    EXPECT_EQ(panels.dig_sens2[0].SegmentColor, rgb(255, 128, 0));
}

TEST_F(PanelRefresh, TheTickComesEveryUpdPeriode) {
    for (const int period : {100, 250, 500, 1000}) {
        start_on("[tyxo]\r\nmax_sensors=1\r\ncomport 1=1\r\nupd_periode= " + std::to_string(period) + "\r\n");
        start_channel_click(0);
        const int before = world().do_events_calls;
        advance(period - 1);
        EXPECT_EQ(world().do_events_calls, before) << period;
        advance(1);
        EXPECT_EQ(world().do_events_calls, before + 1) << period;
        advance(9 * period);
        EXPECT_EQ(world().do_events_calls, before + 10) << period;
    }
}

TEST_F(PanelRefresh, TheTickRunsFromTheFirstStartToTheLastStop) {
    const auto ticks = [] {
        const int before = world().do_events_calls;
        advance(5000);
        return world().do_events_calls - before;
    };
    EXPECT_EQ(ticks(), 0);
    start_channel_click(0);
    start_channel_click(1);
    EXPECT_EQ(ticks(), 10);
    start_channel_click(0);
    EXPECT_EQ(ticks(), 10);
    start_channel_click(1);
    EXPECT_EQ(ticks(), 0);
}

TEST_F(PanelRefresh, AStoppedChannelKeepsItsLastValues) {
    start_logging(0);
    feed(0, measured_body({.speed = 900}));
    advance(500);
    const auto before = shown(0);
    start_channel_click(0);
    advance(20000);
    EXPECT_EQ(shown(0), before);
    EXPECT_EQ(indicators.dig_drehzahl[0].Value, 900);
}

TEST_F(PanelRefresh, AChannelWithoutALinkRepeatsItsStoredValues) {
    start_logging(0);
    feed(0, measured_body({.tsignal = 44, .speed = 900, .tvoltage = 250, .teff_dc = 33}));
    advance(2500);
    EXPECT_EQ(indicators.dig_drehzahl[0].Value, 900);
    EXPECT_EQ(panels.Gauge_thermo[0].Position, 44);
    advance(1000);
    EXPECT_EQ(indicators.dig_drehzahl[0].Value, 0);
    EXPECT_EQ(panels.Gauge_thermo[0].Position, 0);
    EXPECT_EQ(indicators.t_mv[0].Value, 2.5);
    EXPECT_EQ(panels.dig_sens[0].Value, 320);
}

TEST_F(PanelRefresh, TheHighestPositionOfTheThermoGaugeIsKept) {
    start_logging(0);
    for (const i32 signal : {20, 90, 30}) {
        feed(0, measured_body({.tsignal = signal}));
        advance(500);
    }
    EXPECT_EQ(panels.Gauge_thermo[0].Position, 30);
    EXPECT_EQ(panels.Gauge_thermo[0].MaxPosition, 90);
}

TEST_F(PanelRefresh, TheSpeedGaugeFollowsTheParameters) {
    struct band_row {
        i32 overspeed;
        double end;
        i32 ticks;
    };
    for (const band_row& row : {band_row{11, 120, 13},
                                {119, 120, 13},
                                {120, 300, 11},
                                {299, 300, 11},
                                {300, 700, 8},
                                {699, 700, 8},
                                {700, 1400, 9},
                                {1399, 1400, 9},
                                {1400, 3000, 7},
                                {2899, 3000, 7},
                                {2900, 4000, 9},
                                {9000, 4000, 9}}) {
        start_on(logging_settings(1));
        start_logging(0, {.ratedspeed = 88, .overspeed = row.overspeed});
        const iAngularGaugeX& gauge = indicators.drehzahl[0];
        EXPECT_EQ(gauge.PositionMax, row.end) << row.overspeed;
        EXPECT_EQ(gauge.TickMajorCount, row.ticks) << row.overspeed;
        EXPECT_EQ(gauge.SectionEnd[0], 88) << row.overspeed;
        EXPECT_EQ(gauge.SectionEnd[1], row.overspeed) << row.overspeed;
    }
}

TEST_F(PanelRefresh, AnOverspeedOfTenOrLessLeavesTheYellowSection) {
    start_logging(0, {.ratedspeed = 700, .overspeed = 800});
    feed(0, parameter_body({.ratedspeed = 10, .overspeed = 10}));
    EXPECT_EQ(indicators.drehzahl[0].SectionEnd[0], 700);
    EXPECT_EQ(indicators.drehzahl[0].SectionEnd[1], 800);
    EXPECT_EQ(indicators.drehzahl[0].PositionMax, 120);
}

TEST_F(PanelRefresh, LampsFollowTheirBits) {
    start_logging(0);
    for (i32 bit = 0; bit < 16; ++bit) {
        const i32 word = 1 << bit;
        feed(0, status_body({.alarm = word}));
        EXPECT_EQ(indicators.LED_Rdy[0].Active, word == 0x20) << word;
        EXPECT_EQ(indicators.LED_prealarm[0].Active, word == 0x40) << word;
        EXPECT_EQ(indicators.LED_Alarm[0].Active, word == 0x80) << word;
    }
}

TEST_F(PanelRefresh, AnAlarmInhibitTakesThePlaceOfTheRelayLabels) {
    start_logging(0);
    for (const i32 on : {0, 1, 2, 1, 255}) {
        feed(0, status_body({.inhibit_on = on, .inhibit_left = 120 + on}));
        EXPECT_EQ(indicators.Lbl_alm1[0].Visible, on != 1) << on;
        EXPECT_EQ(indicators.lbl_alm2[0].Visible, on != 1) << on;
        EXPECT_EQ(indicators.Lbl_alminhibit[0].Visible, on == 1) << on;
        EXPECT_EQ(indicators.Lbl_inhtime[0].Visible, on == 1) << on;
        EXPECT_EQ(indicators.Lbl_inhtime[0].Caption, on == 0 ? "" : "121") << on;
    }
}

TEST_F(PanelRefresh, AMissingPanelReadsNotInstalledAndItsDigitsAreUnlit) {
    for (i16 used = 0; used <= channel_count; ++used) {
        start_on(logging_settings(used));
        for (i16 channel = 0; channel < channel_count; ++channel) {
            const bool missing = channel >= used;
            EXPECT_EQ(panels.Frame_sensor[channel].Caption == "not installed", missing);
            EXPECT_EQ(panels.Frame_sensor[channel].Enabled, !missing);
            EXPECT_EQ(panels.Frame_message[channel].Enabled, !missing);
            EXPECT_EQ(indicators.start_channel[channel].Enabled, !missing);
            EXPECT_EQ(indicators.dig_drehzahl[channel].SegmentColor == rgb(0, 0, 128), missing);
            EXPECT_EQ(indicators.digi_Thermo[channel].ForeColor == rgb(85, 0, 0), missing);
            EXPECT_EQ(panels.dig_sens[channel].SegmentColor == rgb(85, 0, 0), missing);
            EXPECT_EQ(panels.dig_sens2[channel].SegmentColor, rgb(85, 0, 0));
            EXPECT_EQ(indicators.t_mv[channel].ForeColor == rgb(0, 64, 0), missing);
        }
    }
}

TEST_F(PanelRefresh, MissingPanelsNeverChange) {
    start_on(logging_settings(1));
    const auto second = shown(1);
    const auto fourth = shown(3);
    start_logging(0);
    for (int round = 0; round < 20; ++round) {
        feed(0, measured_body({.speed = round}));
        feed(0, status_body());
        advance(1000);
    }
    EXPECT_EQ(shown(1), second);
    EXPECT_EQ(shown(3), fourth);
    EXPECT_EQ(indicators.dig_drehzahl[0].Value, 19);
}

} // namespace
} // namespace tyxo
