// The labels of the bar diagrams, and engines and curves that are wrong.

#include "displays/bar_diagram.h"

#include "link/cylinder_model.h"
#include "platform/simulation.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

#include <string>

namespace tyxo {
namespace {

using namespace cylinder_testing;

class BarLabels : public testing::Test {
  protected:
    BarLabels() {
        simulation::fresh_world();
        sensor::state.max_sensors = 1;
        sensor::state.zyl_speed_range = 1;
        sensor::state.adc_offset = 479;
        rec = in_line_engine();
        sensor::state.detail_angacc = flat_curve(704);
        sensor::state.detail_thermo = flat_curve(529);
    }
    ~BarLabels() override { simulation::fresh_world(); }

    channel_rec& rec = sensor::state.channels[0];

    /// The visible labels of both forms, opened anew; they are the same.
    static std::string opened() {
        frmbarpic::unload();
        Frmbarpic2::unload();
        mainfrm::Cmd_diagramm_click(0);
        mainfrm::Cmd_diagramm2_click(0);
        EXPECT_EQ(frmbarpic::state.Lbl_bar, Frmbarpic2::state.Lbl_bar);
        EXPECT_EQ(frmbarpic::state.Lbl_bar_middle, Frmbarpic2::state.Lbl_bar_middle);
        EXPECT_EQ(frmbarpic::state.Lbl_mtyp1, Frmbarpic2::state.Lbl_mtyp1);
        EXPECT_EQ(frmbarpic::state.Lbl_mtyp2, Frmbarpic2::state.Lbl_mtyp2);
        std::string texts;
        for (const Label& label : frmbarpic::state.Lbl_bar)
            if (label.Visible) texts += (texts.empty() ? "" : " ") + label.Caption;
        return texts;
    }
};

TEST_F(BarLabels, StandEvenlyApartBetweenTheEndsOfTheAxis) {
    opened();
    for (int place = 1; place <= 6; ++place)
        EXPECT_DOUBLE_EQ(frmbarpic::state.Lbl_bar_middle[static_cast<std::size_t>(place - 1)],
                         142 + 602.0 * place / 7);
    EXPECT_EQ(frmbarpic::state.Lbl_zyl.Caption, "Cylinder");
    EXPECT_TRUE(frmbarpic::state.Lbl_zyl.Visible);
}

TEST_F(BarLabels, InFiringOrderOfAVEngineAreItsEntries) {
    settings.speedbar_mode = 1;
    rec = banked_engine(4, true);
    EXPECT_EQ(opened(), "2B 2A 1B 1A");
    rec.firingorder = {1, 3, 4, 2};
    EXPECT_EQ(opened(), "1 3 4 2");
    rec.firingorder = {101, 100, 200, 299};
    EXPECT_EQ(opened(), "1A   99B") << "100 and 200 bring no text";
}

TEST_F(BarLabels, InFiringOrderOfAnInLineEngineAreNumbers) {
    settings.speedbar_mode = -1;
    EXPECT_EQ(opened(), "1 5 3 6 2 4");
    rec.firingorder[1] = 100;
    rec.firingorder[2] = 205;
    EXPECT_EQ(opened(), "1 100 205 6 2 4");
}

TEST_F(BarLabels, InCylinderOrderOfAVEngineWithPlainNumbersCount) {
    rec.cylconf = 2;
    EXPECT_EQ(opened(), "1 2 3 4 5 6");
    rec.firingorder[0] = 100;
    EXPECT_EQ(opened(), "1 2 3 4 5 6");
}

TEST_F(BarLabels, InCylinderOrderOfAVEngineWithBanksComeInPairs) {
    rec = banked_engine(5, true);
    EXPECT_EQ(opened(), "1A 1B 2A 2B 3A");
    rec.firingorder[0] = 200;
    EXPECT_EQ(opened(), "1A 1B 2A 2B 3A");
}

TEST_F(BarLabels, InCylinderOrderOfAnInLineEngineCount) {
    rec.firingorder[0] = 205;
    EXPECT_EQ(opened(), "1 2 3 4 5 6");
    rec.cylconf = 3;
    EXPECT_EQ(opened(), "1 2 3 4 5 6");
}

TEST_F(BarLabels, ALabelWithoutATextKeepsTheOneThatItHas) {
    settings.speedbar_mode = 1;
    rec = banked_engine(3);
    EXPECT_EQ(opened(), "1A 1B 2A");
    rec.firingorder = {101, 200, 203};
    bar_form_activate(frmbarpic::state);
    EXPECT_EQ(frmbarpic::state.Lbl_bar[1].Caption, "1B");
    EXPECT_EQ(frmbarpic::state.Lbl_bar[2].Caption, "3B");
}

TEST_F(BarLabels, TheEngineTextsFollowTheParameters) {
    opened();
    EXPECT_EQ(frmbarpic::state.Lbl_mtyp1.Caption, "4 stroke engine");
    EXPECT_EQ(frmbarpic::state.Lbl_mtyp2.Caption, "6 cylinder in line");
    EXPECT_TRUE(frmbarpic::state.Lbl_mtyp1.Visible);
    EXPECT_TRUE(frmbarpic::state.Lbl_mtyp2.Visible);
    rec = banked_engine(16);
    rec.enginetype = 2;
    opened();
    EXPECT_EQ(frmbarpic::state.Lbl_mtyp1.Caption, "2 stroke engine");
    EXPECT_EQ(frmbarpic::state.Lbl_mtyp2.Caption, "16 cylinder V - type");
    rec.enginetype = 3;
    opened();
    EXPECT_EQ(frmbarpic::state.Lbl_mtyp1.Caption, "");
}

TEST_F(BarLabels, AnotherCountOfCylindersMovesLabelsAndAxisAtActivation) {
    opened();
    rec = in_line_engine(4);
    bar_form_activate(frmbarpic::state);
    EXPECT_EQ(frmbarpic::state.plot.XAxis.Span, 5);
    EXPECT_TRUE(frmbarpic::state.Lbl_bar[3].Visible);
    EXPECT_FALSE(frmbarpic::state.Lbl_bar[4].Visible);
    EXPECT_DOUBLE_EQ(frmbarpic::state.Lbl_bar_middle[3], 142 + 602.0 * 4 / 5);
}

TEST_F(BarLabels, AHiddenFormIsNotActivated) {
    bar_form_activate(frmbarpic::state);
    EXPECT_FALSE(frmbarpic::state.open);
    EXPECT_EQ(frmbarpic::state.Lbl_mtyp1.Caption, "");
}

TEST_F(BarLabels, EnginesOf0And1And24CylindersAreShown) {
    for (const i32 cylinders : {0, 1, 24}) {
        rec = in_line_engine(std::max(cylinders, 1));
        rec.numzyl = cylinders;
        opened();
        refresh_speed_bars();
        refresh_thermo_bars();
        EXPECT_EQ(frmbarpic::state.plot.series[1].points.size(), static_cast<std::size_t>(cylinders));
        EXPECT_EQ(Frmbarpic2::state.plot.series[1].points.size(), static_cast<std::size_t>(cylinders));
        EXPECT_EQ(frmbarpic::state.plot.XAxis.Span, cylinders + 1);
        EXPECT_TRUE(frmbarpic::state.open);
    }
}

TEST_F(BarLabels, Of25CylindersFailAndTheWindowCanBeClosed) {
    rec.numzyl = 25;
    EXPECT_THROW(mainfrm::Cmd_diagramm_click(0), failure);
    EXPECT_THROW(refresh_speed_bars(), failure);
    EXPECT_TRUE(frmbarpic::state.form.Visible);
    frmbarpic::unload();
    EXPECT_FALSE(frmbarpic::state.form.Visible);
}

/// What makes a pass fail.
struct bad_input {
    const char* name;
    void (*spoil)(channel_rec& rec);
    bool of_speed;
    bool of_thermo;
};

TEST_F(BarLabels, AFailedPassKeepsTheLastBarsAndTheNextCurveDrawsAgain) {
    const bad_input rows[] = {
        {"zeros", [](channel_rec&) { sensor::state.detail_angacc.fill(0); }, true, false},
        {"mean 0",
         [](channel_rec& rec) {
             rec = in_line_engine(1);
             sensor::state.detail_angacc.fill(0);
             sensor::state.detail_angacc[255] = 100;
         },
         true, false},
        {"25 cylinders", [](channel_rec& rec) { rec.numzyl = 25; }, true, true},
        {"beyond 720", [](channel_rec& rec) { rec.firingangle[3] = 300; }, true, true},
        {"alarm level 6", [](channel_rec& rec) { rec.alarmlevel = 6; }, false, true},
        {"percent 0", [](channel_rec& rec) { rec.dcpercent_valid = true; }, false, true},
        {"0 and 65535 in turn, at 1 %",
         [](channel_rec& rec) {
             rec.alarmlevel = rec.dcalarmpercent = 1;
             rec.dcpercent_valid = true;
             for (std::size_t sample = 0; sample < 256; sample += 2)
                 sensor::state.detail_thermo[sample] = 65535;
         },
         false, true},
    };
    const channel_rec good = rec;
    opened();
    refresh_speed_bars();
    refresh_thermo_bars();
    const iPlotX speed = frmbarpic::state.plot;
    const iPlotX thermo = Frmbarpic2::state.plot;
    for (const bad_input& row : rows) {
        row.spoil(rec);
        if (row.of_speed) {
            EXPECT_THROW(refresh_speed_bars(), failure) << row.name;
            EXPECT_EQ(frmbarpic::state.plot, speed) << row.name;
        }
        if (row.of_thermo) {
            EXPECT_THROW(refresh_thermo_bars(), failure) << row.name;
            EXPECT_EQ(Frmbarpic2::state.plot, thermo) << row.name;
        }
        rec = good;
        sensor::state.detail_angacc = flat_curve(352);
        sensor::state.detail_thermo = flat_curve(579);
        refresh_speed_bars();
        refresh_thermo_bars();
        EXPECT_EQ(frmbarpic::state.plot.series[0].points[5].y, 2000) << row.name;
        EXPECT_EQ(Frmbarpic2::state.plot.series[0].points[5].y, 100) << row.name;
        sensor::state.detail_angacc = flat_curve(704);
        sensor::state.detail_thermo = flat_curve(529);
        refresh_speed_bars();
        refresh_thermo_bars();
    }
}

TEST_F(BarLabels, AMeanThatFailsComesBeforeTheThermosignalsAndBehindTheSpeeds) {
    rec = in_line_engine(1);
    opened();
    rec.bar_angacc_val.fill(-1);
    rec.bar_thermo_val.fill(-1);
    sensor::state.detail_angacc.fill(0);
    sensor::state.detail_angacc[255] = 100;
    EXPECT_THROW(refresh_speed_bars(), failure);
    EXPECT_EQ(rec.bar_angacc_val[0], 4000);
    rec.alarmlevel = rec.dcalarmpercent = 1;
    rec.dcpercent_valid = true;
    sensor::state.detail_thermo.fill(65535);
    EXPECT_THROW(refresh_thermo_bars(), failure);
    EXPECT_EQ(rec.bar_thermo_val[0], -1);
}

TEST_F(BarLabels, RefreshingWithoutAChannelIsAFailure) {
    EXPECT_THROW(refresh_speed_bars(), failure);
    EXPECT_THROW(refresh_thermo_bars(), failure);
}

} // namespace
} // namespace tyxo
