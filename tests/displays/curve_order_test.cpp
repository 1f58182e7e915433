// A finished curve reaches its views in their order: the Detailed Display, the bars, the calculation.

#include "displays/bar_diagram.h"
#include "displays/finished_curves.h"
#include "displays/frmdetailedpic.h"

namespace tyxo::curve_testing {
namespace {

class CurveOrder : public curve_test {
  protected:
    void SetUp() override {
        curve_test::SetUp();
        mainfrm::XYplot_click(0);
        frmdetailedpic::resize(280, 140);
    }
    [[nodiscard]] bar_form& bars() const {
        return kind().plot_curve == 1 ? Frmbarpic2::state : frmbarpic::state;
    }
    [[nodiscard]] std::size_t strokes() const { return frmdetailedpic::state.surface.strokes.size(); }
};

TEST_P(CurveOrder, OfNoughtsThePictureIsPreparedAndNotDrawn) {
    fill();
    process();
    const std::size_t drawn_strokes = strokes();
    data().fill(0);
    process();
    EXPECT_LT(strokes(), drawn_strokes);
    EXPECT_GT(strokes(), 0U);
}

TEST_P(CurveOrder, ViewsAreServedBeforeTheCalculation) {
    fill();
    process();
    const std::size_t drawn_strokes = strokes();
    frmdetailedpic::state.surface.clear();
    mainfrm::Cmd_diagramm_click(0);
    mainfrm::Cmd_diagramm2_click(0);
    const iPlotX before = bars().plot;
    fill(0, 900);
    data()[40] = 1100;
    during_calc = [&] {
        EXPECT_EQ(strokes(), drawn_strokes);
        EXPECT_NE(bars().plot, before);
    };
    process();
    EXPECT_EQ(calculated.size(), 2U);
}

TEST_P(CurveOrder, ViewsOfAnotherChannelAreLeftAlone) {
    fill(1);
    mainfrm::Cmd_diagramm_click(2);
    mainfrm::Cmd_diagramm2_click(2);
    const unsigned passes = frmdetailedpic::state.surface.passes;
    const iPlotX speed = frmbarpic::state.plot;
    const iPlotX thermo = Frmbarpic2::state.plot;
    process(1);
    EXPECT_EQ(frmdetailedpic::state.surface.passes, passes);
    EXPECT_EQ(frmbarpic::state.plot, speed);
    EXPECT_EQ(Frmbarpic2::state.plot, thermo);
}

INSTANTIATE_TEST_SUITE_P(kinds, CurveOrder, testing::Values(thermo_kind, angacc_kind),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace tyxo::curve_testing
