// The displays' windows and panels as they are designed, before settings and frames change them.

#include "app/mainfrm.h"
#include "controls/curve_strokes.h"
#include "displays/bar_diagram.h"
#include "displays/chart.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "displays/polar_geometry.h"
#include "displays/xy_plot.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "platform/simulation.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

class DisplayDesign : public testing::Test {
  protected:
    DisplayDesign() {
        simulation::fresh_world();
        design_panels();
    }
    ~DisplayDesign() override { simulation::fresh_world(); }
};

TEST_F(DisplayDesign, APanelHasItsColours) {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        EXPECT_EQ(indicators.t_mv[channel].ForeColor, 0x00FF00);
        EXPECT_EQ(indicators.LED_Alarm[channel].InactiveColor, 64);
        EXPECT_EQ(indicators.LED_Rdy[channel], iLedRoundX{});
        EXPECT_EQ(panels.dig_sens[channel].SegmentColor, 0x0080FF);
        EXPECT_EQ(panels.dig_sens2[channel].SegmentColor, 0x0080FF);
    }
}

TEST_F(DisplayDesign, ALampThatWasOnIsOff) {
    indicators.LED_Rdy[1].Active = true;
    design_panels();
    EXPECT_FALSE(indicators.LED_Rdy[1].Active);
}

TEST_F(DisplayDesign, APanelHasItsCaptions) {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        EXPECT_EQ(indicators.Lbl_alm1[channel].Caption, "Alarmrel 1");
        EXPECT_EQ(indicators.lbl_alm2[channel].Caption, "Alarmrel 2");
        EXPECT_EQ(panels.Label4[channel].Caption, "Tsig %DCA");
        EXPECT_EQ(panels.cmd_zoom_xy[channel].Caption, "Enlarge XY graph");
    }
}

TEST_F(DisplayDesign, TheThermoGaugeGetsItsPointerBeforeAChoiceIsShown) {
    panels.Gauge_thermo[2].PointerColor = 0;
    setup_thermo_gauge(2);
    EXPECT_EQ(panels.Gauge_thermo[2].PointerColor, 198);
}

TEST_F(DisplayDesign, APanelOfAChannelInUseHasNoAcLevelYet) {
    setup_panel(0);
    EXPECT_EQ(panels.dig_sens2[0].SegmentColor, 85);
    EXPECT_EQ(indicators.drehzahl[0].SectionEnd[0], 1000);
    EXPECT_EQ(indicators.drehzahl[0].SectionEnd[1], 1000);
}

TEST_F(DisplayDesign, BarDiagramsShowNoChannel) {
    for (const bar_form* bars : {&frmbarpic::state, &Frmbarpic2::state}) {
        EXPECT_EQ(bars->channel, 0);
        EXPECT_FALSE(bars->parameters || bars->open);
        EXPECT_EQ(bars->shows, 0U);
    }
    EXPECT_EQ(bar_design::width, 800);
    EXPECT_EQ(bar_design::height, 500);
    EXPECT_EQ(bar_design::texts_top, 454);
    EXPECT_EQ(bar_design::mtyp1_left, 8);
    EXPECT_EQ(bar_design::mtyp2_left, 100);
}

TEST_F(DisplayDesign, TheDetailedDisplayShowsNoChannelAndDrawsNoDiagram) {
    const frmdetailedpic::window& window = frmdetailedpic::state;
    EXPECT_EQ(window.Chck_tsrel + window.Chck_tsabs + window.Chck_aa, 0);
    EXPECT_FALSE(window.open);
    EXPECT_EQ(canvas_label{}, (canvas_label{0, 0, "", false}));
}

TEST_F(DisplayDesign, TheDetailedDisplayIsNamedAfterItsLocation) {
    sensor::state.max_sensors = 2;
    sensor::state.channels[1].location = "Mill";
    mainfrm::XYplot_click(1);
    EXPECT_EQ(frmdetailedpic::state.form.Caption, "Detailed Display Mill");
    EXPECT_EQ(sensor::state.polar_channel, 2);
}

TEST_F(DisplayDesign, ChartsHaveTheFirstResolution) {
    EXPECT_EQ(charts.opt_res, 0U);
    EXPECT_EQ(charts.layout.client_width, design_client_width);
    EXPECT_EQ(charts.layout.client_height, design_client_height);
    EXPECT_EQ(charts.layout.quadrants[0].XYplot,
              layout_window(design_client_width, design_client_height, false).quadrants[0].XYplot);
}

TEST_F(DisplayDesign, AnAreaIsEmpty) {
    const curve_area area;
    EXPECT_EQ(area.left + area.right + area.top + area.bottom, 0);
}

} // namespace
} // namespace tyxo
