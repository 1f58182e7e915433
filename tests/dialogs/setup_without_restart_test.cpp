// Sensors that are set up, dropped or added in the setup dialog are measured without a restart: nothing
// fails, no line of a log is lost. What the main window sets up at its start stays as it was.

#include "dialogs/setup_world.h"

#include "dialogs/frmalert.h"
#include "dialogs/frmscale_polar.h"
#include "dialogs/frmselectprint.h"
#include "displays/bar_diagram.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"

namespace tyxo {
namespace {

using namespace simulation;

class SetupWithoutRestart : public setup_world {
  protected:
    /// Fills a row that may be empty.
    static void fill_row(i16 row, std::size_t port_entry) {
        frmSetup::Select_com_click(row, port_entry);
        frmSetup::Text_sensor_loc_change(row, "Engine " + channel_number(row));
        frmSetup::Text_logfile_path_change(row, "C:\\logs\\");
    }
    static void set_number(i16 number) {
        mainfrm::setup_click();
        frmSetup::scroll_max_commport_change(number);
        frmSetup::cmd_OK_click();
    }
    static void expect_measuring(i16 used) {
        for (i16 channel = 0; channel < channel_count; ++channel) {
            EXPECT_EQ(sensor::state.channel_running[channel], channel < used) << channel;
            EXPECT_EQ(port(channel).open, channel < used) << channel;
        }
    }
    /// Everything that an Evaluator sends in a while; its alarm relay drops in and is released.
    static void feed_everything(i16 channel) {
        feed(channel, parameter_body({.alarmlevel = 2}));
        feed(channel, status_body({.alarm = 0x0088, .inhibit_on = 1, .inhibit_left = 9}));
        feed(channel, status_body());
        for (const std::string_view code : {":03", ":04"}) {
            for (i32 block = 1; block <= 4; ++block)
                feed(channel, curve_body(code, block, 500));
        }
        feed(channel, measured_body({.tsignal = 40 + channel}));
    }
    /// Every command that concerns a channel's displays, twice: there and back.
    static void use_displays(i16 channel) {
        for (int time = 0; time < 2; ++time) {
            mainfrm::chart_click(channel);
            mainfrm::cmd_zoom_xy_click(channel);
            mainfrm::Label4_click(channel);
            mainfrm::XYplot_click(channel);
            mainfrm::Cmd_diagramm_click(channel);
            mainfrm::Cmd_diagramm2_click(channel);
            mainfrm::printplot(channel);
        }
    }
    static void expect_no_complaint() {
        for (const std::string& line : world().debug) {
            for (const std::string_view complaint : {"mscomm", "error", "range", "Overflow"})
                EXPECT_EQ(line.find(complaint), std::string::npos) << line;
        }
        EXPECT_TRUE(world().boxes.empty());
    }
};

TEST_F(SetupWithoutRestart, TwoSensorsOfAFirstStartMeasureShowAndLog) {
    start("", {"COM7", "COM3"});
    mainfrm::startstop_click();
    ASSERT_EQ(world().boxes.size(), 1U) << "no sensor yet";
    world().boxes.clear();

    mainfrm::setup_click();
    frmSetup::scroll_max_commport_change(2);
    fill_row(0, 0);
    fill_row(1, 1);
    frmSetup::Text_alm1_change(1, "Horn");
    frmSetup::cmd_OK_click();
    mainfrm::setup_scale_click();
    frmscale_polar::Opt_refr_click(1); // 250 ms
    frmscale_polar::cmd_default_click();
    frmscale_polar::Cmd_ok_click();
    world().debug.clear();

    mainfrm::startstop_click();
    expect_measuring(2);
    EXPECT_EQ(port(0).number, 3);
    EXPECT_EQ(port(1).number, 7);
    for (i16 channel = 0; channel < 2; ++channel) {
        feed_everything(channel);
        FrmAlert::CmdAck_click();
        use_displays(channel);
    }
    advance(1000);
    for (i16 channel = 0; channel < 2; ++channel) {
        EXPECT_EQ(shown_rows(channel).rows(), 4) << "ticks";
        EXPECT_EQ(panels.Gauge_thermo[channel].Position, 40 + channel);
        EXPECT_TRUE(panels.XYplot[channel].Visible) << "as the Evaluator's mode asks for";
        EXPECT_TRUE(panels.XYplot[channel].curves.empty());
        EXPECT_EQ(panels.Frame_sensor[channel].Caption, "not installed") << "before the next start";
        EXPECT_TRUE(charts.chart[channel].curves.empty());
    }
    EXPECT_EQ(indicators.Lbl_alm1[1].Caption, "Horn");

    mainfrm::setup_click();
    EXPECT_EQ(frmSetup::state.SSTab.Tab, 1);
    EXPECT_EQ(frmSetup::state.sensors[1].txt_num_cyl, "6");
    frmSetup::th_a_click();
    EXPECT_EQ(Ini::ini_read("xy_tha"), "1");
    frmSetup::th_a_click();
    EXPECT_EQ(Ini::ini_read("xy_tha"), "0");
    frmSetup::cmd_OK_click();
    expect_measuring(2);
    advance(1000);
    feed(0, measured_body({.speed = 999}));

    mainfrm::startstop_click();
    expect_measuring(0);
    EXPECT_EQ(logged(0).size(), logged(1).size() + 1);
    EXPECT_EQ(logged(0).at(logged(0).size() - 2), "<REC1> 13:05:11 51 999 1234 48 7 </REC1>");
    for (i16 channel = 0; channel < 2; ++channel)
        EXPECT_NE(logged(channel).back().find(" Measure Stopped -->"), std::string::npos);
    advance(10'000);
    expect_no_complaint();
}

TEST_F(SetupWithoutRestart, AnAddedSensorThatAnswersAtOnceIsNotAnnounced) {
    start(1, with_events);
    mainfrm::setup_click();
    frmSetup::scroll_max_commport_change(2);
    fill_row(1, 1);
    frmSetup::cmd_OK_click();
    mainfrm::start_channel_click(1);
    feed(1, measured_body());
    EXPECT_TRUE(sensor::state.channels[1].connected);
    EXPECT_EQ(event_lines(), (text_lines{std::string(start_line),
                                         "##;07-02-2026;13:05:09;KVD Engine 2 ## Measure started "}));
}

TEST_F(SetupWithoutRestart, FourSensorsLoweredToTwoAndRaisedToThreeMeasureWithoutARefreshTime) {
    start(4, "xy_tha=1\r\n");
    sensor::state.upd_periode = 0; // as without the key
    mainfrm::startstop_click();
    for (i16 channel = 0; channel < 4; ++channel)
        feed_everything(channel);
    FrmAlert::CmdAck_click();
    mainfrm::startstop_click();

    set_number(2);
    mainfrm::startstop_click();
    expect_measuring(2);
    for (i16 channel = 0; channel < 2; ++channel)
        feed_everything(channel);
    advance(2000);
    mainfrm::startstop_click();

    set_number(3);
    EXPECT_FALSE(indicators.start_channel[3].Enabled);
    mainfrm::startstop_click();
    expect_measuring(3);
    for (i16 channel = 0; channel < 3; ++channel) {
        feed_everything(channel);
        use_displays(channel);
    }
    advance(2000);
    for (i16 channel = 0; channel < 3; ++channel) {
        EXPECT_EQ(shown_rows(channel).rows(), 0) << "a time of 0 never ticks";
        EXPECT_EQ(panels.Frame_sensor[channel].Caption,
                  channel_number(channel) + ": Engine " + channel_number(channel));
    }
    mainfrm::Timer_chart_upd_tick();
    EXPECT_EQ(shown_rows(2).rows(), 1);
    EXPECT_EQ(shown_rows(3).rows(), 0);
    mainfrm::setup_click();
    frmSetup::th_a_click();
    for (i16 channel = 0; channel < 4; ++channel)
        EXPECT_EQ(charts.chart[channel].curves.at(0).Visible, channel == 3) << channel;
    frmSetup::cmd_cancel_click();
    mainfrm::startstop_click();
    expect_measuring(0);
    for (i16 channel = 0; channel < 3; ++channel)
        EXPECT_NE(logged(channel).at(logged(channel).size() - 2).find("<REC1>"), std::string::npos);
    expect_no_complaint();
}

} // namespace
} // namespace tyxo
