#include "displays/polar_surface.h"

#include <numeric>

namespace tyxo {
namespace {

class DetailedDisplay : public PolarSurface {
  protected:
    static void open_with(const channel_rec& rec) {
        open_detailed_display(rec);
        prepare_frmdetailedpic();
    }
    static const canvas_label& around(std::size_t place) { return frmdetailedpic.Lblzyl[place]; }
    static const canvas_label& above(std::size_t place) { return frmdetailedpic.Lblzyl2[place]; }
    static std::size_t visible_labels() {
        std::size_t count = 0;
        for (std::size_t place = 0; place < 24; ++place)
            count += (around(place).Visible ? 1U : 0U) + (above(place).Visible ? 1U : 0U);
        return count + (frmdetailedpic.Lbl0deg.Visible ? 1U : 0U) +
               (frmdetailedpic.Lblenddeg.Visible ? 1U : 0U);
    }
    /// Ends of the spokes and feet of the cylinder lines that `draw_engine(2)` draws.
    static std::vector<stroke> spokes(std::size_t cylinders) {
        only([] { draw_engine(2); });
        return {strokes().begin() + 256, strokes().begin() + 256 + static_cast<std::ptrdiff_t>(cylinders)};
    }
    static std::vector<double> line_places(std::size_t cylinders) {
        only([] { draw_xygraph(2); });
        std::vector<double> places;
        for (std::size_t line = 7; line < 7 + cylinders; ++line)
            places.push_back(strokes().at(line).x1 - left_end);
        return places;
    }
};

// --- The form -------------------------------------------------------------------------------------------

TEST_F(DetailedDisplay, OpensWithItsCaptionAllBoxesCheckedAndTheFixedPicture) {
    sensor::max_sensors = 1;
    sensor::polar_channel = 1;
    show_frmdetailedpic("Detailed Display Engine 1");
    EXPECT_EQ(frmdetailedpic.form.Caption, "Detailed Display Engine 1");
    EXPECT_TRUE(frmdetailedpic.form.Loaded);
    EXPECT_TRUE(frmdetailedpic.form.Visible);
    EXPECT_TRUE(frmdetailedpic.open);
    EXPECT_EQ(frmdetailedpic.Chck_tsrel, 1);
    EXPECT_EQ(frmdetailedpic.Chck_tsabs, 1);
    EXPECT_EQ(frmdetailedpic.Chck_aa, 1);
    EXPECT_EQ(strokes().size(), 256U + 7 + 256 + 255 + 1 + 256 + 1 + 255);
}

TEST_F(DetailedDisplay, ALoadedFormIsOnlyShownAgain) {
    open_with(engine(4, 6, in_line));
    frmdetailedpic.Chck_tsabs = 0;
    frmdetailedpic.form.Visible = false;
    const auto before = strokes();
    show_frmdetailedpic("Detailed Display Engine 2");
    EXPECT_TRUE(frmdetailedpic.form.Visible);
    EXPECT_EQ(frmdetailedpic.form.Caption, "Detailed Display Engine 2");
    EXPECT_EQ(frmdetailedpic.Chck_tsabs, 0);
    EXPECT_EQ(strokes(), before);
}

TEST_F(DetailedDisplay, UnloadSelectsNoChannelAndForgetsAllButTheSize) {
    open_with(engine(4, 6, in_line));
    frmdetailedpic.Chck_tsabs = 0;
    const unsigned passes = frmdetailedpic.surface.passes;
    frmdetailedpic_unload();
    EXPECT_EQ(sensor::polar_channel, 0);
    EXPECT_FALSE(frmdetailedpic.open);
    EXPECT_FALSE(frmdetailedpic.form.Loaded);
    EXPECT_FALSE(frmdetailedpic.form.Visible);
    EXPECT_TRUE(strokes().empty());
    EXPECT_TRUE(texts().empty());
    EXPECT_EQ(visible_labels(), 0U);
    EXPECT_EQ(frmdetailedpic.surface.ScaleWidth, 280);
    EXPECT_EQ(frmdetailedpic.surface.ScaleHeight, 190);
    EXPECT_NE(frmdetailedpic.surface.passes, passes);
    sensor::polar_channel = 1;
    show_frmdetailedpic("again");
    EXPECT_EQ(frmdetailedpic.Chck_tsabs, 1);
}

TEST_F(DetailedDisplay, AResizeDrawsTheFixedPictureInTheNewSize) {
    open_with(engine(4, 6, in_line));
    draw_curves();
    frmdetailedpic_resize(400, 300);
    EXPECT_EQ(strokes().size(), 256U + 7 + 256 + 255 + 1 + 256 + 1 + 255);
    expect_stroke(strokes()[255], {130 - 0.013553158671, 151.104355283531, 130, 150, black});
    EXPECT_EQ(texts().size(), 2U);
}

TEST_F(DetailedDisplay, WithoutItsChannelInUseHasNoReferenceElements) {
    sensor::max_sensors = 1;
    sensor::polar_channel = 2;
    draw_scale();
    EXPECT_EQ(strokes().size(), 256U + 7);
    EXPECT_TRUE(texts().empty());
    sensor::max_sensors = 2;
    draw_scale();
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
    take_curves(sensor::channels[0]);
    frmdetailedpic.surface.line(1, 2, 3, 4);
    prepare_frmdetailedpic();
    const std::vector<colour_run> prepared{
        {black, 256 + 7},         // the fixed picture
        {white, 256 + 255 + 1},   //
        {orange, 256 + 1 + 255},  //
        {black, 256 + 6 + 7 + 6}, // the engine
        {white, 256},             // the mean again, above the spokes
    };
    EXPECT_EQ(colour_runs(strokes()), prepared);
    clear();
    draw_curves();
    EXPECT_EQ(colour_runs(strokes()), (std::vector<colour_run>{{red, 512}, {yellow, 512}, {blue, 512}}));
}

TEST_F(DetailedDisplay, TextsOfAPassStandInTheirOrder) {
    open_detailed_display(engine(4, 6, in_line));
    take_curves(sensor::channels[0]);
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
    frmdetailedpic.form.Visible = false;
    take_curves(sensor::channels[0]);
    draw_pass();
    EXPECT_EQ(strokes().size(), 256U + 7 + 512 + 512 + 256 + 6 + 7 + 6 + 256 + 3 * 512);
    EXPECT_FALSE(frmdetailedpic.form.Visible);
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
        if (row.radius == 45) draw_engine(1);
        if (row.radius == 30) draw_refcircle();
        if (row.radius == 50) draw_almcircle();
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
    only([] { draw_xygraph(1); });
    EXPECT_EQ(strokes(), expected);
    only([] { draw_engine(1); });
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
        frmdetailedpic.surface.ScaleHeight = row.height;
        only(draw_refline);
        ASSERT_EQ(strokes().size(), 255U + 1);
        for (std::size_t k = 0; k < 255; ++k)
            expect_stroke(strokes()[k],
                          {130 + 145.0 * static_cast<double>(k) / 255, row.mean_line,
                           130 + 145.0 * static_cast<double>(k + 1) / 255, row.mean_line, white});
    }
}

TEST_F(DetailedDisplay, ReferenceLinesHaveAWholeLength) {
    frmdetailedpic.surface.ScaleWidth = 283; // the usable width 146.5 becomes 146
    only(draw_refline);
    EXPECT_DOUBLE_EQ(strokes()[254].x2, 131.5 + 146);
    only(draw_almline);
    EXPECT_DOUBLE_EQ(strokes()[254].x2, 131.5 + 146);
}

TEST_F(DetailedDisplay, TheAlarmLineLies90AboveTheLowerEdge) {
    only(draw_almline);
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
    only(draw_refline);
    EXPECT_EQ(strokes().back(), (stroke{236, 5, 241, 5, white}));
    ASSERT_EQ(texts().size(), 1U);
    expect_text(texts()[0], 243, 3, "average value");
    only(draw_almcircle);
    EXPECT_EQ(strokes().back(), (stroke{106, 186, 111, 186, orange}));
    ASSERT_EQ(texts().size(), 1U);
    expect_text(texts()[0], 113, 184, "Thermosignal 100% Alarmlevel");
    only(draw_refcircle);
    EXPECT_TRUE(texts().empty());
}

// --- The engine
// ---------------------------------------------------------------------------------------------

struct place_row {
    double spoke_x, spoke_y, label_x, label_y, near_x, near_y;
};

/// Spoke ends and label corners for each 60 degrees of the circle, at the radii 55, 65 and 60.
const std::vector<place_row> sixths{
    {61.000000000000, 40.0, 59.883045988014, 31.0, 0, 0}, // the first label stands beside the top
    {108.631397208144, 67.5, 117.291651245989, 62.5, 112.961524227066, 65.0},
    {108.631397208144, 122.5, 117.291651245989, 127.5, 112.961524227066, 125.0},
    {61.000000000000, 150.0, 61.000000000000, 160.0, 61.000000000000, 155.0},
    {13.368602791856, 122.5, 4.708348754012, 127.5, 9.038475772934, 125.0},
    {13.368602791856, 67.5, 4.708348754011, 62.5, 9.038475772934, 65.0},
};

TEST_F(DetailedDisplay, SixCylindersOfAFourStrokeEngineAreSixthsOfTheCircle) {
    open_with(engine(4, 6, in_line));
    for (std::size_t place = 0; place < 6; ++place) {
        const place_row& row = sixths[place];
        expect_stroke(spokes(6)[place], {61, 95, row.spoke_x, row.spoke_y, black}, std::to_string(place));
        EXPECT_NEAR(around(place).Left, row.label_x, near_enough) << place;
        EXPECT_NEAR(around(place).Top, row.label_y, near_enough) << place;
        EXPECT_TRUE(around(place).Visible) << place;
    }
    EXPECT_EQ(frmdetailedpic.Lblenddeg.Caption, "720 deg.");
}

TEST_F(DetailedDisplay, TheSameAnglesAreTwiceAsFarApartOnATwoStrokeEngine) {
    channel_rec rec = engine(4, 6, in_line); // 120 degrees each
    rec.enginetype = 2;
    rec.numzyl = 3;
    open_with(rec);
    for (std::size_t place = 0; place < 3; ++place) {
        const place_row& row = sixths[2 * place];
        expect_stroke(spokes(3)[place], {61, 95, row.spoke_x, row.spoke_y, black}, std::to_string(place));
        EXPECT_NEAR(around(place).Left, row.label_x, near_enough) << place;
    }
    EXPECT_EQ(line_places(3), (std::vector<double>{0, 48, 96})); // 48.33 and 96.33
    EXPECT_EQ(frmdetailedpic.Lblenddeg.Caption, "360 deg.");
}

TEST_F(DetailedDisplay, LabelsOfVEnginesAlternateAndBeginOutside) {
    open_with(engine(4, 6, v_type));
    for (std::size_t place = 1; place < 6; ++place) {
        const bool inner = place % 2 == 1;
        EXPECT_NEAR(around(place).Left, inner ? sixths[place].near_x : sixths[place].label_x, near_enough);
        EXPECT_NEAR(around(place).Top, inner ? sixths[place].near_y : sixths[place].label_y, near_enough);
        EXPECT_EQ(above(place).Top, inner ? 20 : 25) << place;
    }
    EXPECT_NEAR(around(0).Top, 31, near_enough);
    EXPECT_EQ(above(0).Top, 25);
    frmdetailedpic.Lblzyl2 = {};
    open_with(engine(4, 6, in_line));
    for (std::size_t place = 0; place < 6; ++place)
        EXPECT_EQ(above(place).Top, 25) << place;
}

TEST_F(DetailedDisplay, WithoutCylindersThereAreCirclesAndAxesAndNoLabels) {
    open_with(engine(4, 6, in_line));
    ASSERT_EQ(visible_labels(), 14U);
    for (const i32 none : {0, -1}) {
        open_with([none] {
            channel_rec rec = engine(4, 6, in_line);
            rec.numzyl = none;
            return rec;
        }());
        EXPECT_EQ(visible_labels(), 0U);
        only([] { draw_engine(2); });
        EXPECT_EQ(strokes().size(), 256U + 7);
        EXPECT_EQ(texts().size(), 2U);
    }
}

TEST_F(DetailedDisplay, LabelsOfAnEngineThatShrankAreHidden) {
    open_with(engine(4, 16, v_type));
    EXPECT_EQ(visible_labels(), 34U);
    open_with(engine(4, 5, in_line));
    EXPECT_EQ(visible_labels(), 12U);
    EXPECT_TRUE(around(4).Visible);
    EXPECT_FALSE(around(5).Visible);
    EXPECT_TRUE(above(4).Visible);
    EXPECT_FALSE(above(5).Visible);
}

TEST_F(DetailedDisplay, TheFixedPictureLeavesTheLabelsAlone) {
    open_with(engine(4, 6, in_line));
    const auto before = frmdetailedpic.Lblzyl;
    sensor::channels[0].numzyl = 2;
    draw_scale();
    EXPECT_EQ(frmdetailedpic.Lblzyl, before);
}

struct label_row {
    i32 entry;
    std::string_view text;
};

TEST_F(DetailedDisplay, LabelsNameCylinderAndBank) {
    for (const label_row& row : std::vector<label_row>{{1, "1"},
                                                       {99, "99"},
                                                       {0, "0"},
                                                       {101, "1A"},
                                                       {112, "12A"},
                                                       {199, "99A"},
                                                       {201, "1B"},
                                                       {205, "5B"}}) {
        channel_rec rec = engine(4, 2, in_line);
        rec.firingorder[0] = rec.firingorder[1] = row.entry;
        open_with(rec);
        for (const auto* label : {&around(0), &around(1), &above(0), &above(1)})
            EXPECT_EQ(label->Caption, row.text);
    }
}

TEST_F(DetailedDisplay, AFiringOrderEntryOf100Or200KeepsTheTextThatIsThere) {
    for (const i32 entry : {100, 200}) {
        channel_rec rec = engine(4, 3, in_line);
        rec.firingorder = {7, 8, 9};
        open_with(rec);
        rec.firingorder = {entry, entry, 4};
        open_with(rec);
        EXPECT_EQ(around(0).Caption, "7");
        EXPECT_EQ(around(1).Caption, "8");
        EXPECT_EQ(above(0).Caption, "7");
        EXPECT_EQ(above(1).Caption, "8");
        EXPECT_EQ(around(2).Caption, "4");
        EXPECT_TRUE(around(0).Visible && above(1).Visible);
        frmdetailedpic_unload();
        open_with(rec);
        EXPECT_EQ(around(0).Caption, "") << "nothing was there";
    }
}

} // namespace
} // namespace tyxo
