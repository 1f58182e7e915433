// What is known of an Evaluator before its first frame: nothing, and every reader takes 0 for it.

#include "link/channel_rec.h"
#include "platform/simulation.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tyxo {
namespace {

class FirstState : public testing::Test {
  protected:
    FirstState() { simulation::fresh_world(); }
    const channel_rec rec;
};

TEST_F(FirstState, NothingIsMeasured) {
    for (const auto number : {&channel_rec::tsignal, &channel_rec::teff_dc, &channel_rec::teff_ac,
                              &channel_rec::speed, &channel_rec::tstsig_state, &channel_rec::tstsig_prev})
        EXPECT_EQ(rec.*number, 0);
    EXPECT_EQ(rec.tvoltage, 0);
    EXPECT_EQ(std::ranges::count(rec.thermo_data, 0), curve_samples + 1);
    EXPECT_EQ(std::ranges::count(rec.angacc_data, 0), curve_samples + 1);
}

TEST_F(FirstState, NoCylinderHasAValue) {
    for (const auto values : {&channel_rec::bar_angacc_val, &channel_rec::bar_thermo_val,
                              &channel_rec::mb_angacc_val, &channel_rec::mb_thermo_val})
        EXPECT_EQ(std::ranges::count(rec.*values, 0), cylinder_max);
    for (const auto values : {&channel_rec::bar_angacc_diff, &channel_rec::bar_thermo_diff,
                              &channel_rec::mb_angacc_diff, &channel_rec::mb_thermo_diff})
        EXPECT_EQ(std::ranges::count(rec.*values, 0), cylinder_max);
}

TEST_F(FirstState, NoParameterIsKnown) {
    for (const auto number :
         {&channel_rec::alarmlevel,    &channel_rec::ratedspeed,      &channel_rec::overspeed,
          &channel_rec::enginetype,    &channel_rec::numzyl,          &channel_rec::cylconf,
          &channel_rec::prealarmlevel, &channel_rec::impoffset,       &channel_rec::tsttime,
          &channel_rec::tstlen,        &channel_rec::aimp_level_cur,  &channel_rec::ialarmlevel1,
          &channel_rec::ialarmlevel2,  &channel_rec::ialmrpm,         &channel_rec::ialarmdelay,
          &channel_rec::ialarmlen,     &channel_rec::ialarmlevel,     &channel_rec::theff_cnt,
          &channel_rec::theff_alm,     &channel_rec::alminhibit_time, &channel_rec::dcalarmpercent})
        EXPECT_EQ(rec.*number, 0);
    EXPECT_EQ(std::ranges::count(rec.firingorder, 0), cylinder_max);
    EXPECT_EQ(std::ranges::count(rec.firingangle, 0), cylinder_max);
    EXPECT_EQ(rec.speed_scale, 0);
    for (const auto valid : {&channel_rec::param_valid, &channel_rec::tst_valid, &channel_rec::ext1_valid,
                             &channel_rec::ext2_valid, &channel_rec::dcpercent_valid})
        EXPECT_FALSE(rec.*valid);
}

TEST_F(FirstState, NoStatusIsKnownAndNoneWasAnnounced) {
    for (const auto number :
         {&channel_rec::status_alarm, &channel_rec::status_error, &channel_rec::status_ext,
          &channel_rec::alminhibit_left, &channel_rec::alminhibit_on, &channel_rec::eva_mode})
        EXPECT_EQ(rec.*number, 0);
    for (const auto latch :
         {&channel_rec::status_valid,   &channel_rec::connected,         &channel_rec::lat_mem_overflow,
          &channel_rec::lat_crc_error,  &channel_rec::lat_mem_timeout,   &channel_rec::lat_mem_error,
          &channel_rec::lat_inca,       &channel_rec::lat_incb,          &channel_rec::lat_sync,
          &channel_rec::lat_testsignal, &channel_rec::lat_not_connected, &channel_rec::lat_main_alarm,
          &channel_rec::lat_prealarm,   &channel_rec::lat_main_ac,       &channel_rec::lat_pre_ac,
          &channel_rec::lat_main_dc,    &channel_rec::lat_pre_dc,        &channel_rec::lat_overspeed,
          &channel_rec::lat_main_error, &channel_rec::lat_inhibit,       &channel_rec::xy_zoom_state})
        EXPECT_FALSE(rec.*latch);
}

TEST_F(FirstState, NoSettingIsMadeAndNoLogIsOpen) {
    EXPECT_EQ(rec.tstsig_visible, 0);
    EXPECT_EQ(rec.th_dig_val, 0);
    EXPECT_EQ(rec.log_state, log_states::none);
    EXPECT_EQ(rec.log_fileno, 0);
}

TEST_F(FirstState, NoChannelIsInUse) {
    const sensor::sensor_state& all = sensor::state;
    for (const auto number : {&sensor::sensor_state::max_sensors, &sensor::sensor_state::upd_periode,
                              &sensor::sensor_state::adc_offset, &sensor::sensor_state::zyl_speed_range,
                              &sensor::sensor_state::polar_channel, &sensor::sensor_state::bar_channel_angacc,
                              &sensor::sensor_state::bar_channel_thermo,
                              &sensor::sensor_state::inhibit_reset_channel, &sensor::sensor_state::poll_step})
        EXPECT_EQ(all.*number, 0);
    EXPECT_EQ(all.cmd_periode, 0);
    EXPECT_EQ(all.scale_polar_a, 0);
    EXPECT_EQ(all.scale_polar_t, 0);
    EXPECT_FALSE(all.measure_running || all.chart_timer_on || all.alert_open);
    for (i16 channel = 0; channel < channel_count; ++channel) {
        EXPECT_EQ(all.comport[channel] + all.thermo_block_last[channel] + all.angacc_block_last[channel], 0);
        EXPECT_FALSE(all.channel_running[channel] || all.alert_latched[channel] || all.poll_hold[channel]);
    }
}

} // namespace
} // namespace tyxo
