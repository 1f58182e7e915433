// The dialog "Setup scales" without its picture.

#include "dialogs/frmscale_polar.h"

#include "displays/chart.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "link/main_timers.h"
#include "link/supervision.h"
#include "logging/logging_machine.h"
#include "settings/ini.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tyxo {
namespace {

using namespace simulation;

class ScaleSettings : public testing::Test {
  protected:
    void SetUp() override { start_on(logging_settings(2, "log_mode= 1\r\n")); }

    static frmscale_polar::window& dialog() { return frmscale_polar::state; }
    static std::vector<const Frame*> value_frames() {
        return {&dialog().Frame_scale_a, &dialog().Frame_scale_t, &dialog().Frame_logtime,
                &dialog().Frame_refresh};
    }
};

struct scale_row {
    double factor;
    std::string_view caption;
};
const std::vector<scale_row> scales{{5.0, "x 5"},   {3.0, "x 3"},   {2.0, "x 2"},   {1.0, "x 1"},
                                    {0.5, "x 0.5"}, {0.2, "x 0.2"}, {0.1, "x 0.1"}, {0.03, "x 0.03"}};

struct scale_number {
    i16 value;
    std::string_view caption;
};
const std::vector<scale_number> refresh_times{
    {100, "100 ms"}, {250, "250 ms"}, {500, "500 ms"}, {1000, "1000 ms"}};
const std::vector<scale_number> log_periods{{1, "1 hour"}, {0, "1 day  (24 hours)"}};

TEST_F(ScaleSettings, BothScalesHaveEightFactorsWithTheirCaptions) {
    ASSERT_EQ(scale_choices.size(), scales.size());
    for (std::size_t index = 0; index < scales.size(); ++index) {
        EXPECT_EQ(scale_choices[index].caption, scales[index].caption);
        sensor::state.scale_polar_a = sensor::state.scale_polar_t = 99;
        frmscale_polar::Opt_scale_click(index);
        EXPECT_EQ(sensor::state.scale_polar_a, scales[index].factor);
        EXPECT_EQ(sensor::state.scale_polar_t, 99);
        EXPECT_EQ(dialog().Opt_scale, index);
        frmscale_polar::Opt_scale_t_click(index);
        EXPECT_EQ(sensor::state.scale_polar_t, scales[index].factor);
        EXPECT_EQ(sensor::state.scale_polar_a, scales[index].factor);
        EXPECT_EQ(dialog().Opt_scale_t, index);
    }
}

TEST_F(ScaleSettings, TheRefreshTimeHasFourChoicesWithTheirCaptions) {
    ASSERT_EQ(refresh_choices.size(), refresh_times.size());
    for (std::size_t index = 0; index < refresh_times.size(); ++index) {
        EXPECT_EQ(refresh_choices[index].caption, refresh_times[index].caption);
        frmscale_polar::Opt_refr_click(index);
        EXPECT_EQ(sensor::state.upd_periode, refresh_times[index].value);
        EXPECT_EQ(dialog().Opt_refr, index);
    }
}

TEST_F(ScaleSettings, TheLogPeriodIsAnHourOrADay) {
    ASSERT_EQ(log_period_choices.size(), log_periods.size());
    for (std::size_t index = 0; index < log_periods.size(); ++index) {
        EXPECT_EQ(log_period_choices[index].caption, log_periods[index].caption);
        frmscale_polar::Opt_logtime_click(index);
        EXPECT_EQ(settings.log_mode, log_periods[index].value);
        EXPECT_EQ(dialog().Opt_logtime, index);
    }
}

TEST_F(ScaleSettings, AnOptionThatDoesNotExistFailsAndChangesNothing) {
    mainfrm::setup_scale_click();
    const frmscale_polar::window before = dialog();
    EXPECT_THROW(frmscale_polar::Opt_scale_click(8), failure);
    EXPECT_THROW(frmscale_polar::Opt_scale_t_click(8), failure);
    EXPECT_THROW(frmscale_polar::Opt_refr_click(4), failure);
    EXPECT_THROW(frmscale_polar::Opt_logtime_click(2), failure);
    EXPECT_EQ(sensor::state.scale_polar_a, 2.5);
    EXPECT_EQ(sensor::state.upd_periode, 500);
    EXPECT_EQ(dialog().Opt_refr, before.Opt_refr);
}

TEST_F(ScaleSettings, BearTheirCaptions) {
    EXPECT_EQ(dialog().form.Caption, "Setup scales");
    EXPECT_EQ(dialog().Frame1.Caption, "Scale polardisplay");
    EXPECT_EQ(dialog().Frame_scale_a.Caption, "Scale Angle acceleration");
    EXPECT_EQ(dialog().Frame_scale_t.Caption, "Scale Thermosignal");
    EXPECT_EQ(dialog().Frame_refresh.Caption, "Refresh time for chart in ms");
    EXPECT_EQ(dialog().Frame_logtime.Caption, "Time interval for creating new logfile");
    EXPECT_EQ(dialog().cmd_default.Caption, "default settings");
    EXPECT_EQ(dialog().Cmd_ok.Caption, "OK");
}

TEST_F(ScaleSettings, OpenWithTheOptionsOfTheValuesSelected) {
    EXPECT_FALSE(dialog().form.Visible);
    for (std::size_t index = 0; index < scales.size(); ++index) {
        sensor::state.scale_polar_a = scales[index].factor;
        sensor::state.scale_polar_t = scales[7 - index].factor;
        sensor::state.upd_periode = refresh_times[index % 4].value;
        settings.log_mode = log_periods[index % 2].value;
        mainfrm::setup_scale_click();
        EXPECT_TRUE(dialog().form.Visible);
        EXPECT_TRUE(dialog().form.Loaded);
        EXPECT_EQ(dialog().Opt_scale, index);
        EXPECT_EQ(dialog().Opt_scale_t, 7 - index);
        EXPECT_EQ(dialog().Opt_refr, index % 4);
        EXPECT_EQ(dialog().Opt_logtime, index % 2);
        frmscale_polar::unload();
    }
}

TEST_F(ScaleSettings, MatchAFactorOnlyToItsLastBit) {
    for (const scale_row& row : scales) {
        sensor::state.scale_polar_a = std::nextafter(row.factor, 10);
        sensor::state.scale_polar_t = std::nextafter(row.factor, 0);
        mainfrm::setup_scale_click();
        EXPECT_FALSE(dialog().Opt_scale) << row.caption;
        EXPECT_FALSE(dialog().Opt_scale_t) << row.caption;
    }
}

TEST_F(ScaleSettings, FindTheFactorsThatTheyHaveStored) {
    for (std::size_t index = 0; index < scales.size(); ++index) {
        frmscale_polar::Opt_scale_click(index);
        frmscale_polar::Opt_scale_t_click(7 - index);
        frmscale_polar::Cmd_ok_click();
        mainfrm::load_settings();
        mainfrm::setup_scale_click();
        EXPECT_EQ(dialog().Opt_scale, index);
        EXPECT_EQ(dialog().Opt_scale_t, 7 - index);
    }
}

TEST_F(ScaleSettings, OfAnotherFactorSelectNothingAndUseItAsItStandsUntilOneIsPicked) {
    start_on("[tyxo]\r\nmax_sensors=1\r\nscale_polar_t= 0.7\r\n");
    mainfrm::setup_scale_click();
    EXPECT_FALSE(dialog().Opt_scale_t);
    sensor::state.channels[0].thermo_data.fill(100);
    sensor::state.channels[0].thermo_data[0] = 100 + 256;
    process_thermo(0);
    EXPECT_NEAR(panels.XYplot[0].curves[1].points[0].y, 255 * 0.7 + 30, 0.01);
    frmscale_polar::Opt_scale_t_click(3);
    EXPECT_EQ(sensor::state.scale_polar_t, 1.0);
    process_thermo(0);
    EXPECT_NEAR(panels.XYplot[0].curves[1].points[0].y, 255 + 30, 0.01); // with the next curve, before "OK"
}

TEST_F(ScaleSettings, OfAnotherTimeOrModeSelectNothing) {
    sensor::state.upd_periode = 499;
    settings.log_mode = 2;
    mainfrm::setup_scale_click();
    EXPECT_FALSE(dialog().Opt_refr);
    EXPECT_FALSE(dialog().Opt_logtime);
}

TEST_F(ScaleSettings, CanBeChangedOnlyWhileNothingMeasures) {
    mainfrm::setup_scale_click();
    for (const Frame* frame : value_frames())
        EXPECT_TRUE(frame->Enabled) << frame->Caption;
    frmscale_polar::unload();
    mainfrm::start_channel_click(0);
    mainfrm::setup_scale_click();
    for (const Frame* frame : value_frames())
        EXPECT_FALSE(frame->Enabled) << frame->Caption;
    EXPECT_TRUE(dialog().Frame1.Enabled);
    frmscale_polar::unload();
    mainfrm::start_channel_click(0);
    mainfrm::setup_scale_click();
    for (const Frame* frame : value_frames())
        EXPECT_TRUE(frame->Enabled) << frame->Caption;
}

TEST_F(ScaleSettings, DefaultsAreThreeAndAHalfAndAreSelected) {
    mainfrm::setup_scale_click();
    EXPECT_FALSE(dialog().Opt_scale);
    frmscale_polar::cmd_default_click();
    EXPECT_EQ(sensor::state.scale_polar_t, 3.0);
    EXPECT_EQ(sensor::state.scale_polar_a, 0.5);
    EXPECT_EQ(dialog().Opt_scale_t, 1U);
    EXPECT_EQ(dialog().Opt_scale, 4U);
    EXPECT_TRUE(dialog().form.Visible);
    EXPECT_EQ(Ini::ini_read("scale_polar_a"), "2.5"); // nothing is stored yet
}

TEST_F(ScaleSettings, DefaultsLeaveRefreshTimeAndLogPeriodAlone) {
    mainfrm::setup_scale_click();
    frmscale_polar::Opt_refr_click(0);
    frmscale_polar::Opt_logtime_click(1);
    frmscale_polar::cmd_default_click();
    EXPECT_EQ(sensor::state.upd_periode, 100);
    EXPECT_EQ(settings.log_mode, 0);
    EXPECT_EQ(dialog().Opt_refr, 0U);
    EXPECT_EQ(dialog().Opt_logtime, 1U);
}

TEST_F(ScaleSettings, DefaultsHaveNoEffectWhileMeasuring) {
    mainfrm::start_channel_click(0);
    mainfrm::setup_scale_click();
    frmscale_polar::cmd_default_click();
    EXPECT_EQ(sensor::state.scale_polar_a, 2.5);
    EXPECT_EQ(sensor::state.scale_polar_t, 0.75);
    EXPECT_FALSE(dialog().Opt_scale);
}

TEST_F(ScaleSettings, AreStoredInOrderInTheFormOfTheSettings) {
    fresh_world();
    sensor::state.scale_polar_a = 0.03;
    sensor::state.scale_polar_t = 5;
    settings.log_mode = 0;
    sensor::state.upd_periode = 1000;
    mainfrm::setup_scale_click();
    frmscale_polar::Cmd_ok_click();
    EXPECT_EQ(file("tyxo.ini"), "[tyxo]\r\nscale_polar_a= .03\r\nscale_polar_t= 5\r\nlog_mode= 0\r\n"
                                "upd_periode= 1000\r\n");
    EXPECT_EQ(world().replacements, 1);
    EXPECT_FALSE(dialog().form.Visible);
    EXPECT_FALSE(dialog().form.Loaded);
}

TEST_F(ScaleSettings, AreStoredWhileMeasuringToo) {
    mainfrm::start_channel_click(0);
    sensor::state.scale_polar_a = 0.7;
    mainfrm::setup_scale_click();
    frmscale_polar::Cmd_ok_click();
    EXPECT_EQ(Ini::ini_read("scale_polar_a"), ".7");
    EXPECT_EQ(Ini::ini_read("scale_polar_t"), ".75");
    EXPECT_EQ(Ini::ini_read("log_mode"), "1");
    EXPECT_EQ(Ini::ini_read("upd_periode"), "500");
    EXPECT_FALSE(dialog().form.Visible);
}

TEST_F(ScaleSettings, ClosedInAnotherWayStayInMemoryAndAreNotStored) {
    const std::string before = file("tyxo.ini");
    mainfrm::setup_scale_click();
    frmscale_polar::Opt_scale_click(0);
    frmscale_polar::Opt_scale_t_click(6);
    frmscale_polar::Opt_refr_click(3);
    frmscale_polar::Opt_logtime_click(1);
    frmscale_polar::unload();
    EXPECT_EQ(file("tyxo.ini"), before);
    EXPECT_EQ(sensor::state.scale_polar_a, 5.0);
    EXPECT_EQ(sensor::state.scale_polar_t, 0.1);
    EXPECT_EQ(sensor::state.upd_periode, 1000);
    EXPECT_EQ(settings.log_mode, 0);
    EXPECT_FALSE(dialog().form.Visible);
    mainfrm::setup_scale_click();
    EXPECT_EQ(dialog().Opt_scale, 0U);
    EXPECT_EQ(dialog().Opt_refr, 3U);
}

TEST_F(ScaleSettings, ANewRefreshTimeTakesEffectWithTheNextStartOfTheCharts) {
    mainfrm::start_channel_click(0);
    EXPECT_EQ(mainfrm::timers.Timer_chart_upd.Interval(), 500);
    frmscale_polar::Opt_refr_click(0);
    frmscale_polar::Cmd_ok_click();
    EXPECT_EQ(mainfrm::timers.Timer_chart_upd.Interval(), 500);
    mainfrm::start_channel_click(0);
    mainfrm::start_channel_click(0);
    EXPECT_EQ(mainfrm::timers.Timer_chart_upd.Interval(), 100);
}

TEST_F(ScaleSettings, ANewRefreshTimeWaitsForTheNextStartThoughAnotherChannelStarts) {
    const auto rows_of_a_second = [] {
        const std::size_t before = shown_rows(0).rows();
        advance(1000);
        return shown_rows(0).rows() - before;
    };
    mainfrm::startstop_click();
    frmscale_polar::Opt_refr_click(0); // 100 ms
    EXPECT_EQ(rows_of_a_second(), 2U);
    mainfrm::start_channel_click(1);
    mainfrm::start_channel_click(1); // the first channel measures all the time
    EXPECT_EQ(rows_of_a_second(), 2U);
    mainfrm::startstop_click();
    EXPECT_EQ(rows_of_a_second(), 0U);
    mainfrm::startstop_click();
    EXPECT_EQ(rows_of_a_second(), 10U);
}

} // namespace
} // namespace tyxo
