// Where the Detailed Display puts spokes, cylinder lines and labels of an engine, and what the labels say.

#include "displays/detailed_display.h"

#include <string>
#include <string_view>
#include <vector>

namespace tyxo {
namespace {

class DetailedLabels : public DetailedDisplay {};

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

TEST_F(DetailedLabels, SixCylindersOfAFourStrokeEngineAreSixthsOfTheCircle) {
    open_with(engine(4, 6, in_line));
    for (std::size_t place = 0; place < 6; ++place) {
        const place_row& row = sixths[place];
        expect_stroke(spokes(6)[place], {61, 95, row.spoke_x, row.spoke_y, black}, std::to_string(place));
        EXPECT_NEAR(around(place).Left, row.label_x, near_enough) << place;
        EXPECT_NEAR(around(place).Top, row.label_y, near_enough) << place;
        EXPECT_TRUE(around(place).Visible) << place;
    }
    EXPECT_EQ(frmdetailedpic::state.Lblenddeg.Caption, "720 deg.");
}

TEST_F(DetailedLabels, TheSameAnglesAreTwiceAsFarApartOnATwoStrokeEngine) {
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
    EXPECT_EQ(frmdetailedpic::state.Lblenddeg.Caption, "360 deg.");
}

TEST_F(DetailedLabels, LabelsOfVEnginesAlternateAndBeginOutside) {
    open_with(engine(4, 6, v_type));
    for (std::size_t place = 1; place < 6; ++place) {
        const bool inner = place % 2 == 1;
        EXPECT_NEAR(around(place).Left, inner ? sixths[place].near_x : sixths[place].label_x, near_enough);
        EXPECT_NEAR(around(place).Top, inner ? sixths[place].near_y : sixths[place].label_y, near_enough);
        EXPECT_EQ(above(place).Top, inner ? 20 : 25) << place;
    }
    EXPECT_NEAR(around(0).Top, 31, near_enough);
    EXPECT_EQ(above(0).Top, 25);
    frmdetailedpic::state.Lblzyl2 = {};
    open_with(engine(4, 6, in_line));
    for (std::size_t place = 0; place < 6; ++place)
        EXPECT_EQ(above(place).Top, 25) << place;
}

TEST_F(DetailedLabels, WithoutCylindersThereAreCirclesAndAxesAndNoLabels) {
    open_with(engine(4, 6, in_line));
    ASSERT_EQ(visible_labels(), 14U);
    for (const i32 none : {0, -1}) {
        open_with([none] {
            channel_rec rec = engine(4, 6, in_line);
            rec.numzyl = none;
            return rec;
        }());
        EXPECT_EQ(visible_labels(), 0U);
        only([] { frmdetailedpic::draw_engine(2); });
        EXPECT_EQ(strokes().size(), 256U + 7);
        EXPECT_EQ(texts().size(), 2U);
    }
}

TEST_F(DetailedLabels, LabelsOfAnEngineThatShrankAreHidden) {
    open_with(engine(4, 16, v_type));
    EXPECT_EQ(visible_labels(), 34U);
    open_with(engine(4, 5, in_line));
    EXPECT_EQ(visible_labels(), 12U);
    EXPECT_TRUE(around(4).Visible);
    EXPECT_FALSE(around(5).Visible);
    EXPECT_TRUE(above(4).Visible);
    EXPECT_FALSE(above(5).Visible);
}

TEST_F(DetailedLabels, TheFixedPictureLeavesTheLabelsAlone) {
    open_with(engine(4, 6, in_line));
    const auto before = frmdetailedpic::state.Lblzyl;
    sensor::state.channels[0].numzyl = 2;
    frmdetailedpic::draw_scale();
    EXPECT_EQ(frmdetailedpic::state.Lblzyl, before);
}

struct label_row {
    i32 entry;
    std::string_view text;
};

TEST_F(DetailedLabels, LabelsNameCylinderAndBank) {
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

TEST_F(DetailedLabels, AFiringOrderEntryOf100Or200KeepsTheTextThatIsThere) {
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
        frmdetailedpic::unload();
        open_with(rec);
        EXPECT_EQ(around(0).Caption, "") << "nothing was there";
    }
}

} // namespace
} // namespace tyxo
