// The two bar diagrams without their picture: axes, values, and which channel they show.

#include "displays/bar_diagram.h"

#include "link/cylinder_model.h"
#include "platform/simulation.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tyxo {
namespace {

using namespace cylinder_testing;

/// One of the two forms, with what belongs to it.
struct bars_under_test {
    const char* name;
    bar_form& bars;
    i16& selected;
    void (*click)(i16 channel);
    void (*refresh)();
    void (*unload)();
};

const bars_under_test both[] = {
    {"speed", frmbarpic::state, sensor::state.bar_channel_angacc, mainfrm::Cmd_diagramm_click,
     refresh_speed_bars, frmbarpic::unload},
    {"thermosignal", Frmbarpic2::state, sensor::state.bar_channel_thermo, mainfrm::Cmd_diagramm2_click,
     refresh_thermo_bars, Frmbarpic2::unload},
};

class BarDiagram : public testing::Test {
  protected:
    BarDiagram() {
        simulation::fresh_world();
        sensor::state.max_sensors = 3;
        sensor::state.zyl_speed_range = 1;
        sensor::state.adc_offset = 479;
        sensor::state.channels[0] = in_line_engine();
        sensor::state.channels[1] = banked_engine(16, true);
        sensor::state.channels[1].location = "Engine 2";
        sensor::state.channels[1].overspeed = 100;
        sensor::state.channels[2].location = "Engine 3"; // its parameters are not there yet
        sensor::state.detail_angacc = flat_curve(704);
        sensor::state.detail_thermo = flat_curve(529);
    }
    ~BarDiagram() override { simulation::fresh_world(); }

    static channel_rec& record(std::size_t channel = 0) { return sensor::state.channels[channel]; }

    static std::vector<double> heights(const bar_form& bars, std::size_t series) {
        std::vector<double> found;
        for (const bar_point& point : bars.plot.series.at(series).points)
            found.push_back(point.y);
        return found;
    }

    /// The texts of the visible labels, with a blank between.
    static std::string labels(const bar_form& bars) {
        std::string texts;
        for (const Label& label : bars.Lbl_bar)
            if (label.Visible) texts += (texts.empty() ? "" : " ") + label.Caption;
        return texts;
    }
};

TEST_F(BarDiagram, OfSpeedHasItsTitlesColoursAndAxes) {
    mainfrm::Cmd_diagramm_click(0);
    const iPlotX& plot = frmbarpic::state.plot;
    EXPECT_EQ(frmbarpic::state.form.Caption, "Speed difference diagram Engine 1");
    EXPECT_EQ(plot.Title, "Cylinder speed difference diagram");
    ASSERT_EQ(plot.series.size(), 2U);
    EXPECT_EQ(plot.series[0].Title, "Speed absolut");
    EXPECT_EQ(plot.series[0].Color, rgb(0, 0, 255));
    EXPECT_EQ(plot.series[1].Title, "Speed difference");
    EXPECT_EQ(plot.series[1].Color, rgb(192, 0, 192));
    EXPECT_EQ(plot.series[1].YAxisName, "diffspeed");
    ASSERT_EQ(plot.YAxes.size(), 2U);
    EXPECT_EQ(plot.YAxes[0].Title, "RPM");
    EXPECT_EQ(plot.YAxes[1].Title, "RPM");
    EXPECT_EQ(plot.YAxes[1].Name, "diffspeed");
    EXPECT_EQ(plot.YAxes[1].Min, -60);
    EXPECT_EQ(plot.YAxes[1].Span, 80);
}

TEST_F(BarDiagram, OfThermosignalHasItsTitlesColoursAndAxes) {
    mainfrm::Cmd_diagramm2_click(0);
    const iPlotX& plot = Frmbarpic2::state.plot;
    EXPECT_EQ(Frmbarpic2::state.form.Caption, "Thermosignal difference diagram Engine 1");
    EXPECT_EQ(plot.Title, "Cylinder thermosignal difference diagram");
    ASSERT_EQ(plot.series.size(), 2U);
    EXPECT_EQ(plot.series[0].Title, "Signal absolut");
    EXPECT_EQ(plot.series[0].Color, rgb(255, 0, 0));
    EXPECT_EQ(plot.series[1].Title, "Signal difference");
    EXPECT_EQ(plot.series[1].Color, rgb(192, 0, 192));
    EXPECT_EQ(plot.series[1].YAxisName, "diffspeed");
    ASSERT_EQ(plot.YAxes.size(), 2U);
    EXPECT_EQ(plot.YAxes[0].Title, "Thermosignal in % Alarmlevel");
    EXPECT_EQ(plot.YAxes[0].Min, 0);
    EXPECT_EQ(plot.YAxes[0].Span, 400);
    EXPECT_EQ(plot.YAxes[0].Increment, 20);
    EXPECT_EQ(plot.YAxes[1].Title, "Thermosignal difference in % to meanvalue");
    EXPECT_EQ(plot.YAxes[1].Name, "diffspeed");
    EXPECT_EQ(plot.YAxes[1].Min, -60);
    EXPECT_EQ(plot.YAxes[1].Span, 80);
}

TEST_F(BarDiagram, TheAxisOfSpeedFollowsOverspeed) {
    struct span_row {
        i32 overspeed;
        double span;
        double increment;
    };
    constexpr span_row rows[] = {{0, 267, 50},      {119, 267, 50},    {120, 1330, 100},  {399, 1330, 100},
                                 {400, 2000, 250},  {1399, 2000, 250}, {1400, 6650, 500}, {2899, 6650, 500},
                                 {2900, 8000, 500}, {65535, 8000, 500}};
    for (const span_row& row : rows) {
        record().overspeed = row.overspeed;
        mainfrm::Cmd_diagramm_click(0);
        EXPECT_EQ(frmbarpic::state.plot.YAxes[0].Min, 0);
        EXPECT_EQ(frmbarpic::state.plot.YAxes[0].Span, row.span) << row.overspeed;
        EXPECT_EQ(frmbarpic::state.plot.YAxes[0].Increment, row.increment) << row.overspeed;
        frmbarpic::unload();
    }
}

TEST_F(BarDiagram, ALaterOverspeedDoesNotMoveTheAxis) {
    mainfrm::Cmd_diagramm_click(0);
    record().overspeed = 100;
    refresh_speed_bars();
    mainfrm::Cmd_diagramm_click(0);
    bar_form_activate(frmbarpic::state);
    EXPECT_EQ(frmbarpic::state.plot.YAxes[0].Span, 6650);
    frmbarpic::unload();
    mainfrm::Cmd_diagramm_click(0);
    EXPECT_EQ(frmbarpic::state.plot.YAxes[0].Span, 267);
}

TEST_F(BarDiagram, EachBarStandsAtItsCylindersNumberHalfAWidthWide) {
    for (const bars_under_test& form : both) {
        form.click(0);
        form.refresh();
        EXPECT_EQ(form.bars.plot.XAxis.Min, 0) << form.name;
        EXPECT_EQ(form.bars.plot.XAxis.Span, 7) << form.name;
        for (const bar_series& series : form.bars.plot.series) {
            ASSERT_EQ(series.points.size(), 6U) << form.name;
            for (std::size_t bar = 0; bar < 6; ++bar) {
                EXPECT_EQ(series.points[bar].x, static_cast<double>(bar) + 1) << form.name;
                EXPECT_EQ(series.points[bar].width, 0.5) << form.name;
            }
        }
        form.refresh();
        EXPECT_EQ(form.bars.plot.series[1].points.size(), 6U) << "a new curve takes the place of the last";
    }
}

TEST_F(BarDiagram, AgreesWithThePlainModelInBothOrders) {
    std::mt19937 random(99);
    for (int round = 0; round < 200; ++round) {
        record() = random_engine(random);
        record().param_valid = true;
        settings.speedbar_mode = static_cast<i16>(round % 3 - 1);
        const bool firing = settings.speedbar_mode != 0;
        sensor::state.zyl_speed_range = static_cast<i16>(1 + round % 20);
        sensor::state.adc_offset = static_cast<i16>(460 + round % 61);
        sensor::state.detail_angacc = random_curve(random, 1, round % 2 == 0 ? 500 : 65535);
        sensor::state.detail_thermo = random_curve(random, 300, 900);
        mainfrm::Cmd_diagramm_click(0);
        mainfrm::Cmd_diagramm2_click(0);
        refresh_speed_bars();
        refresh_thermo_bars();
        const model_values speed =
            model_speeds(record(), sensor::state.detail_angacc, sensor::state.zyl_speed_range, firing);
        const model_values signal =
            model_thermosignals(record(), sensor::state.detail_thermo, sensor::state.zyl_speed_range,
                                sensor::state.adc_offset, firing);
        ASSERT_EQ(heights(frmbarpic::state, 0), speed.value) << round;
        ASSERT_EQ(heights(frmbarpic::state, 1), speed.difference) << round;
        ASSERT_EQ(heights(Frmbarpic2::state, 0), signal.value) << round;
        ASSERT_EQ(heights(Frmbarpic2::state, 1), signal.difference) << round;
        for (std::size_t bar = 0; bar < speed.value.size(); ++bar) {
            ASSERT_EQ(record().bar_angacc_val[bar], speed.value[bar]);
            ASSERT_EQ(record().bar_angacc_diff[bar], speed.difference[bar]);
            ASSERT_EQ(record().bar_thermo_val[bar], signal.value[bar]);
            ASSERT_EQ(record().bar_thermo_diff[bar], signal.difference[bar]);
        }
    }
    EXPECT_EQ(record().mb_angacc_val, (std::array<i32, cylinder_max>{})) << "the gateway's arrays";
}

TEST_F(BarDiagram, ARefusedButtonTellsWhyAndLeavesItsChannelSelected) {
    for (const bars_under_test& form : both) {
        simulation::world().boxes.clear();
        form.click(2);
        EXPECT_EQ(form.selected, 3) << form.name;
        EXPECT_FALSE(form.bars.form.Visible) << form.name;
        ASSERT_EQ(simulation::world().boxes.size(), 1U) << form.name;
        const simulation::shown_box& box = simulation::world().boxes.front();
        EXPECT_EQ(box.text, "       Parameters not loaded from Evaluator !!\r\n"
                            "Please wait until loading is ready, and try it again !!");
        EXPECT_EQ(box.icon, box_icon::critical);
        EXPECT_EQ(box.buttons, box_buttons::ok);
        EXPECT_EQ(box.title, "Message");
    }
}

TEST_F(BarDiagram, AHiddenFormComputesWithEveryCurveAfterARefusal) {
    for (const bars_under_test& form : both) {
        form.click(2);
        form.refresh();
        EXPECT_TRUE(form.bars.form.Loaded) << form.name;
        EXPECT_FALSE(form.bars.form.Visible) << form.name;
        EXPECT_FALSE(form.bars.open) << form.name;
        EXPECT_TRUE(heights(form.bars, 0).empty()) << "no cylinder is known";
    }
    record(2) = in_line_engine(4);
    for (const bars_under_test& form : both) {
        form.refresh();
        EXPECT_FALSE(form.bars.form.Visible) << form.name;
        EXPECT_EQ(heights(form.bars, 0).size(), 4U) << form.name;
        EXPECT_EQ(form.bars.plot.XAxis.Span, 5) << "the axes are those of the parameters that came";
        EXPECT_EQ(labels(form.bars), "") << form.name;
        const iPlotX before = form.bars.plot;
        form.click(2);
        EXPECT_EQ(form.bars.plot, before) << "what was computed is there at once";
        EXPECT_TRUE(form.bars.form.Visible) << form.name;
    }
    EXPECT_EQ(record(2).bar_angacc_val[0], 1000);
    EXPECT_EQ(frmbarpic::state.plot.YAxes[0].Span, 6650);
}

TEST_F(BarDiagram, AChannelNotInUseIsSelectedAndNothingElse) {
    for (const bars_under_test& form : both) {
        form.click(3);
        EXPECT_EQ(form.selected, 4) << form.name;
        EXPECT_FALSE(form.bars.form.Loaded) << form.name;
        EXPECT_FALSE(form.bars.form.Visible) << form.name;
    }
    EXPECT_TRUE(simulation::world().boxes.empty());
}

TEST_F(BarDiagram, TheButtonOpensTheWindowWithoutWaiting) {
    for (const bars_under_test& form : both) {
        form.click(0);
        EXPECT_EQ(form.selected, 1) << form.name;
        EXPECT_TRUE(form.bars.form.Visible) << form.name;
        EXPECT_TRUE(form.bars.open) << form.name;
        EXPECT_EQ(form.bars.shows, 1U) << form.name;
        form.click(0);
        EXPECT_EQ(form.bars.shows, 2U) << "it comes to the front again";
    }
    EXPECT_TRUE(simulation::world().boxes.empty());
}

TEST_F(BarDiagram, UnloadSelectsNoChannelAndClosesTheWindow) {
    for (const bars_under_test& form : both) {
        form.click(0);
        form.refresh();
        form.unload();
        EXPECT_EQ(form.selected, 0) << form.name;
        EXPECT_FALSE(form.bars.open) << form.name;
        EXPECT_FALSE(form.bars.form.Loaded) << form.name;
        EXPECT_FALSE(form.bars.form.Visible) << form.name;
        EXPECT_TRUE(form.bars.plot.series.empty()) << form.name;
        form.click(1);
        EXPECT_EQ(form.bars.plot.XAxis.Span, 17) << form.name;
    }
}

TEST_F(BarDiagram, EachFormIsClosedByItself) {
    mainfrm::Cmd_diagramm_click(0);
    mainfrm::Cmd_diagramm2_click(1);
    frmbarpic::unload();
    EXPECT_EQ(sensor::state.bar_channel_thermo, 2);
    EXPECT_TRUE(Frmbarpic2::state.open);
    mainfrm::Cmd_diagramm_click(0);
    Frmbarpic2::unload();
    EXPECT_EQ(sensor::state.bar_channel_angacc, 1);
    EXPECT_TRUE(frmbarpic::state.open);
}

TEST_F(BarDiagram, AnOpenWindowSwitchesToTheChannelOfAnotherButton) {
    for (const bars_under_test& form : both) {
        form.click(1);
        form.refresh();
        EXPECT_EQ(labels(form.bars), "1A 1B 2A 2B 3A 3B 4A 4B 5A 5B 6A 6B 7A 7B 8A 8B") << form.name;
        form.click(0);
        EXPECT_EQ(form.bars.form.Caption.substr(form.bars.form.Caption.size() - 8), "Engine 1");
        EXPECT_EQ(form.bars.plot.XAxis.Span, 7) << form.name;
        EXPECT_EQ(labels(form.bars), "1 2 3 4 5 6") << "and the others are hidden";
        EXPECT_EQ(form.bars.Lbl_mtyp2.Caption, "6 cylinder in line");
        EXPECT_TRUE(heights(form.bars, 0).empty()) << "no bar of the other engine stays";
    }
    EXPECT_EQ(frmbarpic::state.plot.YAxes[0].Span, 6650);
}

TEST_F(BarDiagram, AfterARefusalAnOpenWindowFollowsWithTheNextCurve) {
    for (const bars_under_test& form : both) {
        form.click(0);
        form.refresh();
        form.click(2);
        EXPECT_EQ(heights(form.bars, 0).size(), 6U) << "the box changes nothing";
        bar_form_activate(form.bars);
        EXPECT_EQ(labels(form.bars), "1 2 3 4 5 6") << form.name;
        form.refresh();
        EXPECT_EQ(form.bars.form.Caption.substr(form.bars.form.Caption.size() - 8), "Engine 3");
        EXPECT_EQ(labels(form.bars), "") << form.name;
        form.unload();
    }
}

TEST_F(BarDiagram, BarsAndLabelsOfAnOpenWindowChangeTheirOrderTogether) {
    for (const bars_under_test& form : both) {
        settings.speedbar_mode = 0;
        form.click(0);
        settings.speedbar_mode = 1;
        EXPECT_EQ(labels(form.bars), "1 2 3 4 5 6") << form.name;
        form.refresh();
        EXPECT_EQ(labels(form.bars), "1 5 3 6 2 4") << form.name;
    }
}

} // namespace
} // namespace tyxo
