// The Detailed Display: its form, what a curve redraws, circles, axes and reference elements.

#include "displays/detailed_display.h"

#include <numeric>

namespace tyxo {
namespace {

// --- The form -------------------------------------------------------------------------------------------

TEST_F(DetailedDisplay, OpensWithItsCaptionAllBoxesCheckedAndTheFixedPicture) {
    sensor::state.max_sensors = 1;
    sensor::state.polar_channel = 1;
    frmdetailedpic::show("Detailed Display Engine 1");
    EXPECT_EQ(frmdetailedpic::state.form.Caption, "Detailed Display Engine 1");
    EXPECT_TRUE(frmdetailedpic::state.form.Loaded);
    EXPECT_TRUE(frmdetailedpic::state.form.Visible);
    EXPECT_TRUE(frmdetailedpic::state.open);
    EXPECT_EQ(frmdetailedpic::state.Chck_tsrel, 1);
    EXPECT_EQ(frmdetailedpic::state.Chck_tsabs, 1);
    EXPECT_EQ(frmdetailedpic::state.Chck_aa, 1);
    EXPECT_EQ(strokes().size(), 256U + 7 + 256 + 255 + 1 + 256 + 1 + 255);
}

TEST_F(DetailedDisplay, ALoadedFormIsOnlyShownAgain) {
    open_with(engine(4, 6, in_line));
    frmdetailedpic::state.Chck_tsabs = 0;
    frmdetailedpic::state.form.Visible = false;
    const auto before = strokes();
    frmdetailedpic::show("Detailed Display Engine 2");
    EXPECT_TRUE(frmdetailedpic::state.form.Visible);
    EXPECT_EQ(frmdetailedpic::state.form.Caption, "Detailed Display Engine 2");
    EXPECT_EQ(frmdetailedpic::state.Chck_tsabs, 0);
    EXPECT_EQ(strokes(), before);
}

TEST_F(DetailedDisplay, UnloadSelectsNoChannelAndForgetsAllButTheSize) {
    open_with(engine(4, 6, in_line));
    frmdetailedpic::state.Chck_tsabs = 0;
    const unsigned passes = frmdetailedpic::state.surface.passes;
    frmdetailedpic::unload();
    EXPECT_EQ(sensor::state.polar_channel, 0);
    EXPECT_FALSE(frmdetailedpic::state.open);
    EXPECT_FALSE(frmdetailedpic::state.form.Loaded);
    EXPECT_FALSE(frmdetailedpic::state.form.Visible);
    EXPECT_TRUE(strokes().empty());
    EXPECT_TRUE(texts().empty());
    EXPECT_EQ(visible_labels(), 0U);
    EXPECT_EQ(frmdetailedpic::state.surface.ScaleWidth, 280);
    EXPECT_EQ(frmdetailedpic::state.surface.ScaleHeight, 190);
    EXPECT_NE(frmdetailedpic::state.surface.passes, passes);
    sensor::state.polar_channel = 1;
    frmdetailedpic::show("again");
    EXPECT_EQ(frmdetailedpic::state.Chck_tsabs, 1);
}

TEST_F(DetailedDisplay, AResizeDrawsTheFixedPictureInTheNewSize) {
    open_with(engine(4, 6, in_line));
    frmdetailedpic::draw_curves();
    frmdetailedpic::resize(400, 300);
    EXPECT_EQ(strokes().size(), 256U + 7 + 256 + 255 + 1 + 256 + 1 + 255);
    expect_stroke(strokes()[255], {130 - 0.013553158671, 151.104355283531, 130, 150, black});
    EXPECT_EQ(texts().size(), 2U);
}

TEST_F(DetailedDisplay, WithoutItsChannelInUseHasNoReferenceElements) {
    sensor::state.max_sensors = 1;
    sensor::state.polar_channel = 2;
    frmdetailedpic::draw_scale();
    EXPECT_EQ(strokes().size(), 256U + 7);
    EXPECT_TRUE(texts().empty());
    sensor::state.max_sensors = 2;
    frmdetailedpic::draw_scale();
    EXPECT_GT(strokes().size(), 256U + 7);
}

struct colour_run {
    colour ForeColor;
    std::size_t count;
    bool operator==(const colour_run&) const = default;
};

std::vector<colour_run> colour_runs(const std::vector<stroke>& strokes) {
    std::vector<colour_run> runs;
    for (const stroke& one : strokes) {
        if (runs.empty() || runs.back().ForeColor != one.ForeColor) runs.push_back({one.ForeColor, 0});
        ++runs.back().count;
    }
    return runs;
}

TEST_F(DetailedDisplay, ANewCurveRedrawsEverythingInItsOrder) {
    open_detailed_display(engine(4, 6, in_line));
    take_curves(sensor::state.channels[0]);
    frmdetailedpic::state.surface.line(1, 2, 3, 4);
    frmdetailedpic::prepare();
    const std::vector<colour_run> prepared{
        {black, 256 + 7},         // the fixed picture
        {white, 256 + 255 + 1},   //
        {orange, 256 + 1 + 255},  //
        {black, 256 + 6 + 7 + 6}, // the engine
        {white, 256},             // the mean again, above the spokes
    };
    EXPECT_EQ(colour_runs(strokes()), prepared);
    clear();
    frmdetailedpic::draw_curves();
    EXPECT_EQ(colour_runs(strokes()), (std::vector<colour_run>{{red, 512}, {yellow, 512}, {blue, 512}}));
}

TEST_F(DetailedDisplay, TextsOfAPassStandInTheirOrder) {
    open_detailed_display(engine(4, 6, in_line));
    take_curves(sensor::state.channels[0]);
    draw_pass();
    std::vector<std::string> shown;
    for (const canvas_text& text : texts())
        shown.push_back(text.text);
    EXPECT_EQ(shown, (std::vector<std::string>{
                         "average value", "Thermosignal 100% Alarmlevel", "4 stroke engine 720 degrees",
                         "6 cylinder in line", "Thermosignal rel. to average value",
                         "Thermosignal in % Alarmlevel", "Angular acceleration rel. to average value"}));
}

TEST_F(DetailedDisplay, HiddenByTheAlertWindowItGoesOn) {
    open_detailed_display(engine(4, 6, in_line));
    frmdetailedpic::state.form.Visible = false;
    take_curves(sensor::state.channels[0]);
    draw_pass();
    EXPECT_EQ(strokes().size(), 256U + 7 + 512 + 512 + 256 + 6 + 7 + 6 + 256 + 3 * 512);
    EXPECT_FALSE(frmdetailedpic::state.form.Visible);
}

// --- Circles, axes, reference elements --------------------------------------------------------------------

struct circle_row {
    int radius;
    std::size_t k;
    double x;
    double y;
};

const std::vector<circle_row> circle_rows{
    {45, 0, 106.000000000000, 95.000000000000},  {45, 1, 105.986446841329, 93.895644716469},
    {45, 100, 26.214529598677, 66.452302212636}, {45, 255, 105.986446841329, 96.104355283531},
    {30, 0, 91.000000000000, 95.000000000000},   {30, 1, 90.990964560886, 94.263763144313},
    {30, 100, 37.809686399118, 75.968201475091}, {30, 255, 90.990964560886, 95.736236855688},
    {50, 0, 111.000000000000, 95.000000000000},  {50, 1, 110.984940934810, 93.772938573854},
    {50, 100, 22.349477331863, 63.280335791818}, {50, 255, 110.984940934810, 96.227061426146},
};

TEST_F(DetailedDisplay, CirclesHave256StepsAndAreClosed) {
    for (const circle_row& row : circle_rows) {
        clear();
        if (row.radius == 45) frmdetailedpic::draw_engine(1);
        if (row.radius == 30) frmdetailedpic::draw_refcircle();
        if (row.radius == 50) frmdetailedpic::draw_almcircle();
        expect_joined(strokes(), 0, 256);
        // Segment k - 1 ends in point k, the last one in point 0.
        const stroke& to_point = strokes()[(row.k + 255) % 256];
        EXPECT_NEAR(to_point.x2, row.x, near_enough) << row.radius << " " << row.k;
        EXPECT_NEAR(to_point.y2, row.y, near_enough) << row.radius << " " << row.k;
        EXPECT_EQ(strokes()[0].ForeColor, row.radius == 45 ? black : row.radius == 30 ? white : orange);
    }
}

TEST_F(DetailedDisplay, AxesAreSevenLines) {
    const std::vector<stroke> expected{
        {128, 175, 128, 25, black},  {130, 175, 278, 175, black}, {128, 25, 127, 27, black},
        {128, 25, 129, 27, black},   {278, 175, 276, 176, black}, {278, 175, 276, 174, black},
        {275, 176, 275, 174, black},
    };
    only([] { frmdetailedpic::draw_xygraph(1); });
    EXPECT_EQ(strokes(), expected);
    only([] { frmdetailedpic::draw_engine(1); });
    EXPECT_EQ(std::vector<stroke>(strokes().begin() + 256, strokes().end()), expected);
    EXPECT_TRUE(texts().empty());
}

struct line_row {
    double height; ///< of the surface
    double mean_line;
};

// Rounded twice, a half to even each time: 145.4 -> 145 -> 72.5 -> 72; 147 -> 73.5 -> 74.
const std::vector<line_row> line_rows{{190, 175 - 72}, {190.4, 175.4 - 72}, {192, 177 - 74}, {185, 170 - 70}};

TEST_F(DetailedDisplay, TheMeanLineIsHalfwayUpWholeUnits) {
    for (const line_row& row : line_rows) {
        frmdetailedpic::state.surface.ScaleHeight = row.height;
        only(frmdetailedpic::draw_refline);
        ASSERT_EQ(strokes().size(), 255U + 1);
        for (std::size_t k = 0; k < 255; ++k)
            expect_stroke(strokes()[k],
                          {130 + 145.0 * static_cast<double>(k) / 255, row.mean_line,
                           130 + 145.0 * static_cast<double>(k + 1) / 255, row.mean_line, white});
    }
}

TEST_F(DetailedDisplay, ReferenceLinesHaveAWholeLength) {
    frmdetailedpic::state.surface.ScaleWidth = 283; // the usable width 146.5 becomes 146
    only(frmdetailedpic::draw_refline);
    EXPECT_DOUBLE_EQ(strokes()[254].x2, 131.5 + 146);
    only(frmdetailedpic::draw_almline);
    EXPECT_DOUBLE_EQ(strokes()[254].x2, 131.5 + 146);
}

TEST_F(DetailedDisplay, TheAlarmLineLies90AboveTheLowerEdge) {
    only(frmdetailedpic::draw_almline);
    ASSERT_EQ(strokes().size(), 255U);
    for (const stroke& one : strokes()) {
        EXPECT_EQ(one.y1, 100);
        EXPECT_EQ(one.y2, 100);
        EXPECT_EQ(one.ForeColor, orange);
    }
    EXPECT_EQ(strokes().front().x1, 130);
    EXPECT_EQ(strokes().back().x2, 275);
    EXPECT_TRUE(texts().empty());
}

TEST_F(DetailedDisplay, ReferenceElementsHaveTheirLegends) {
    only(frmdetailedpic::draw_refline);
    EXPECT_EQ(strokes().back(), (stroke{236, 5, 241, 5, white}));
    ASSERT_EQ(texts().size(), 1U);
    expect_text(texts()[0], 243, 3, "average value");
    only(frmdetailedpic::draw_almcircle);
    EXPECT_EQ(strokes().back(), (stroke{106, 186, 111, 186, orange}));
    ASSERT_EQ(texts().size(), 1U);
    expect_text(texts()[0], 113, 184, "Thermosignal 100% Alarmlevel");
    only(frmdetailedpic::draw_refcircle);
    EXPECT_TRUE(texts().empty());
}

} // namespace
} // namespace tyxo
