// What firing angles and odd parameters do to the engine in the Detailed Display.

#include "displays/polar_surface.h"

namespace tyxo {
namespace {

class DetailedEngine : public PolarSurface {
  protected:
    /// An in-line engine with these firing angles; entry 0 takes no part.
    static void open_with(i32 strokes, const std::vector<i32>& angles) {
        channel_rec rec = engine(strokes, static_cast<i32>(angles.size()), in_line);
        std::copy(angles.begin(), angles.end(), rec.firingangle.begin());
        open_detailed_display(rec);
    }
    /// The cylinder lines of `draw_xygraph(2)`, in units from its left end.
    static std::vector<double> line_places() {
        only([] { frmdetailedpic::draw_xygraph(2); });
        std::vector<double> places;
        for (std::size_t line = 7; line < strokes().size(); ++line) {
            EXPECT_EQ(strokes()[line].y1, base);
            EXPECT_EQ(strokes()[line].x2, strokes()[line].x1);
            EXPECT_EQ(strokes()[line].y2, 30);
            places.push_back(strokes()[line].x1 - left_end);
        }
        return places;
    }
};

TEST_F(DetailedEngine, TheFirstFiringAngleTakesNoPart) {
    open_with(4, {700, 90, 90});
    EXPECT_EQ(failure_of(frmdetailedpic::prepare), "");
    EXPECT_EQ(line_places(), (std::vector<double>{0, 18, 36}));
}

TEST_F(DetailedEngine, LabelsLieAtTheExactAngleSpokesInPartAtTheWholeDegree) {
    open_with(4, {0, 15}); // 7.5 degrees, which is point 8
    only([] { frmdetailedpic::draw_engine(2); });
    expect_stroke(strokes()[257], {61, 95, 68.654520552804, 40.470532624440, black});
    EXPECT_NEAR(frmdetailedpic::state.Lblzyl[1].Left, 69.484202494303, near_enough);
    EXPECT_NEAR(frmdetailedpic::state.Lblzyl[1].Top, 30.556084010702, near_enough);
}

TEST_F(DetailedEngine, PlacesInTheStraightDiagramAreRoundedAtEachStep) {
    // 12 x 145 / 720 = 2.4167: rounded each time it is 2, 4, 6 ..., and not 2.4, 4.8, 7.25.
    open_with(4, {0, 12, 12, 12, 12, 12, 12});
    EXPECT_EQ(line_places(), (std::vector<double>{0, 2, 4, 6, 8, 10, 12}));
    for (std::size_t place = 0; place < 7; ++place) {
        EXPECT_EQ(frmdetailedpic::state.Lblzyl2[place].Left, left_end + 2.0 * static_cast<double>(place));
        EXPECT_TRUE(frmdetailedpic::state.Lblzyl2[place].Visible);
    }
    // The circle sums exact degrees: 36 at the end.
    only([] { frmdetailedpic::draw_engine(2); });
    EXPECT_NEAR(frmdetailedpic::state.Lblzyl[6].Left, 61 + 65 * 0.587785252292473, 1e-6);
}

TEST_F(DetailedEngine, AHalfUnitGoesToTheEvenNeighbour) {
    open_with(2, {0, 18, 36}); // 7.25 -> 7; 14.5 + 7 = 21.5 -> 22
    EXPECT_EQ(line_places(), (std::vector<double>{0, 7, 22}));
    open_with(4, {0, 72}); // 14.5
    EXPECT_EQ(line_places(), (std::vector<double>{0, 14}));
    open_with(2, {0, 36});
    EXPECT_EQ(line_places(), (std::vector<double>{0, 14}));
}

TEST_F(DetailedEngine, PlacesOfFourStrokesGoToTheNearestUnit) {
    // 18 x 145 / 720 = 3.625: up at each step, where exact sums would give 4, 7, 11.
    open_with(4, {0, 18, 18, 18});
    EXPECT_EQ(line_places(), (std::vector<double>{0, 4, 8, 12}));
    open_with(4, {0, 15, 72}); // 3.02 -> 3; 14.5 + 3 = 17.5 -> 18
    EXPECT_EQ(line_places(), (std::vector<double>{0, 3, 18}));
    frmdetailedpic::state.surface.ScaleWidth = 282; // the span of 146 stands for 720 degrees
    open_with(4, {0, 360});
    only([] { frmdetailedpic::draw_xygraph(2); });
    EXPECT_EQ(strokes().back().x1, 282.0 / 2 - 10 + 73);
    frmdetailedpic::state.surface.ScaleWidth =
        283; // so does that of 146.5, which is rounded first: not 145.69
    open_with(4, {0, 716});
    only([] { frmdetailedpic::draw_xygraph(2); });
    EXPECT_EQ(strokes().back().x1, 283.0 / 2 - 10 + 145);
}

TEST_F(DetailedEngine, BothEndsOfTheStraightDiagramBearTheirDegrees) {
    open_with(4, {0, 360});
    frmdetailedpic::prepare();
    EXPECT_EQ(frmdetailedpic::state.Lbl0deg, (canvas_label{130, 178, "0 deg.", true}));
    EXPECT_EQ(frmdetailedpic::state.Lblenddeg, (canvas_label{268, 178, "720 deg.", true}));
    sensor::state.channels[0].enginetype = 3;
    sensor::state.channels[0].firingangle[1] = 180;
    frmdetailedpic::prepare();
    EXPECT_EQ(frmdetailedpic::state.Lblenddeg.Caption, "360 deg.");
}

struct text_row {
    i32 strokes;
    i32 arrangement;
    std::vector<std::string> texts;
};

TEST_F(DetailedEngine, StrokesArePrintedWhenTheyAreKnownAndWhatIsNoVTypeIsInLine) {
    for (const text_row& row :
         std::vector<text_row>{{2, in_line, {"2 stroke engine 360 degrees", "3 cylinder in line"}},
                               {4, v_type, {"4 stroke engine 720 degrees", "3 cylinder V - type"}},
                               {3, in_line, {"3 cylinder in line"}},
                               {4, 3, {"4 stroke engine 720 degrees", "3 cylinder in line"}},
                               {0, 0, {"3 cylinder in line"}}}) {
        open_with(4, {0, 60, 60});
        sensor::state.channels[0].enginetype = row.strokes;
        sensor::state.channels[0].cylconf = row.arrangement;
        only([] { frmdetailedpic::draw_engine(2); });
        ASSERT_EQ(texts().size(), row.texts.size()) << row.strokes << " " << row.arrangement;
        for (std::size_t text = 0; text < row.texts.size(); ++text) {
            const bool cylinders = row.texts[text].find("cylinder") != std::string::npos;
            expect_text(texts()[text], 5, cylinders ? 7 : 3, row.texts[text]);
        }
    }
}

TEST_F(DetailedEngine, AnEngineThatNobodyHasDescribedHasNoCylinderText) {
    open_with(4, {});
    sensor::state.channels[0].enginetype = sensor::state.channels[0].cylconf = 0;
    only([] { frmdetailedpic::draw_engine(2); });
    EXPECT_TRUE(texts().empty());
}

struct angle_row {
    i32 strokes;
    std::vector<i32> angles;
    bool fits;
};

// 359.5 rounds to 360, which the circle does not have; -0.5 rounds to 0.
const std::vector<angle_row> angle_rows{
    {4, {0, 718}, true},         {4, {0, 719}, false},
    {4, {0, 360, 359}, false},   {4, {0, 360, 358}, true},
    {4, {0, -1}, true},          {4, {0, -2}, false},
    {2, {0, 359}, true},         {2, {0, 360}, false},
    {2, {0, 180, 180}, false},   {2, {0, 300, -300}, true},
    {4, {0, 65535}, false},      {2, {0, -1}, false},
    {4, {0, 2147483647}, false}, {2, {0, 2147483647, 2147483647}, false},
};

TEST_F(DetailedEngine, FiringAnglesThatLeaveTheCircleFailAndTheNextCurveDrawsAgain) {
    for (const angle_row& row : angle_rows) {
        open_with(row.strokes, row.angles);
        const std::string what = std::to_string(row.strokes) + " strokes, " + std::to_string(row.angles[1]);
        EXPECT_EQ(failure_of(frmdetailedpic::prepare).empty(), row.fits) << what;
        open_with(4, {0, 360});
        EXPECT_EQ(failure_of(frmdetailedpic::prepare), "") << what;
        EXPECT_EQ(strokes().size(), 256U + 7 + 512 + 512 + 256 + 2 + 7 + 2 + 256) << what;
    }
}

TEST_F(DetailedEngine, TheFailureBeyondTheCircleIsThatOfASubscript) {
    open_with(4, {0, 360, 359});
    EXPECT_EQ(failure_of(frmdetailedpic::prepare), failure_of([] { failures::subscript(); }));
    // The places before stand, spokes and straight diagram were not reached.
    EXPECT_TRUE(frmdetailedpic::state.Lblzyl[1].Visible);
    EXPECT_FALSE(frmdetailedpic::state.Lblzyl[2].Visible);
    EXPECT_FALSE(frmdetailedpic::state.Lblzyl2[0].Visible);
    EXPECT_EQ(strokes().size(), 256U + 7 + 512 + 512 + 256);
}

TEST_F(DetailedEngine, OneAnd24CylindersAreDrawn25Fail) {
    for (const i32 cylinders : {1, 24}) {
        open_detailed_display(engine(4, cylinders, in_line));
        EXPECT_EQ(failure_of(frmdetailedpic::prepare), "");
        const auto count = static_cast<std::size_t>(cylinders);
        EXPECT_EQ(strokes().size(), 256U + 7 + 512 + 512 + 256 + count + 7 + count + 256);
        EXPECT_TRUE(frmdetailedpic::state.Lblzyl[count - 1].Visible);
    }
    for (const i32 cylinders : {25, 32767, 2147483647}) {
        channel_rec rec = engine(4, 24, in_line);
        rec.numzyl = cylinders;
        open_detailed_display(rec);
        EXPECT_EQ(failure_of(frmdetailedpic::prepare), failure_of([] { failures::subscript(); }));
        EXPECT_EQ(failure_of([] { frmdetailedpic::draw_xygraph(2); }),
                  failure_of([] { failures::subscript(); }));
    }
    open_detailed_display(engine(4, 6, in_line));
    EXPECT_EQ(failure_of(frmdetailedpic::prepare), "");
}

TEST_F(DetailedEngine, WithoutASelectedChannelAPassFails) {
    sensor::state.max_sensors = 4;
    EXPECT_EQ(failure_of(frmdetailedpic::prepare), failure_of([] { failures::subscript(); }));
    EXPECT_EQ(failure_of(frmdetailedpic::draw_scale), "");
}

TEST_F(DetailedEngine, TheEngineIsThatOfTheSelectedChannel) {
    open_detailed_display(engine(4, 6, in_line));
    sensor::state.channels[1] = engine(4, 3, in_line);
    sensor::state.polar_channel = 2;
    only([] { frmdetailedpic::draw_engine(2); });
    EXPECT_EQ(strokes().size(), 256U + 3 + 7 + 3);
}

} // namespace
} // namespace tyxo
