// What can be changed in the setup dialog while measuring runs, and what while it does not.

#include "dialogs/setup_world.h"

namespace tyxo {
namespace {

using namespace simulation;

class SetupMeasuring : public setup_world {
  protected:
    void SetUp() override { start(2); }
};

TEST_F(SetupMeasuring, WhileIdleItStartsOnTabZeroAndEverythingCanBeChanged) {
    mainfrm::setup_click();
    EXPECT_EQ(dialog().SSTab.Tab, 0);
    EXPECT_TRUE(dialog().XY_Chart.Enabled);
    EXPECT_TRUE(dialog().frame_comport.Enabled);
    EXPECT_TRUE(dialog().scroll_max_commport.Enabled);
    EXPECT_TRUE(dialog().Text_evtlogfile_path.Enabled);
    EXPECT_TRUE(dialog().cmd_browse_evtpath.Enabled);
}

TEST_F(SetupMeasuring, OpenedDuringAMeasurementItStartsOnTabOneAndSettingsAndCheckBoxesAreLocked) {
    measure();
    mainfrm::setup_click();
    EXPECT_EQ(dialog().SSTab.Tab, 1);
    EXPECT_FALSE(dialog().XY_Chart.Enabled);
    EXPECT_FALSE(dialog().frame_comport.Enabled);
    for (i16 row = 0; row < channel_count; ++row)
        expect_row_enabled(row, false);
    EXPECT_FALSE(dialog().scroll_max_commport.Enabled);
    EXPECT_FALSE(dialog().Text_evtlogfile_path.Enabled);
    EXPECT_FALSE(dialog().cmd_browse_evtpath.Enabled);
    EXPECT_EQ(dialog().Text_sensor_loc[1].Text, "Engine 2");
    for (const Command* button : {&dialog().cmd_OK, &dialog().cmd_cancel, &dialog().cmd_Refresh})
        EXPECT_TRUE(button->Enabled) << button->Caption;
}

TEST_F(SetupMeasuring, AfterAMeasurementEverythingCanBeChangedAgain) {
    measure();
    mainfrm::setup_click();
    frmSetup::cmd_cancel_click();
    sensor::state.measure_running = false;
    mainfrm::setup_click();
    EXPECT_EQ(dialog().SSTab.Tab, 0);
    EXPECT_TRUE(dialog().XY_Chart.Enabled);
    EXPECT_TRUE(dialog().frame_comport.Enabled);
    expect_row_enabled(1, true);
    EXPECT_TRUE(dialog().scroll_max_commport.Enabled);
    EXPECT_TRUE(dialog().Text_evtlogfile_path.Enabled);
    EXPECT_TRUE(dialog().cmd_browse_evtpath.Enabled);
}

TEST_F(SetupMeasuring, RefreshLocksTheRowsOfAMeasurementThatBeganMeanwhileAndFreesThemBehindIt) {
    mainfrm::setup_click();
    sensor::state.measure_running = true;
    frmSetup::cmd_Refresh_click();
    expect_row_enabled(0, false);
    EXPECT_FALSE(dialog().scroll_max_commport.Enabled);
    EXPECT_FALSE(dialog().Text_evtlogfile_path.Enabled);
    sensor::state.measure_running = false;
    frmSetup::cmd_Refresh_click();
    expect_row_enabled(0, true);
    EXPECT_TRUE(dialog().scroll_max_commport.Enabled);
    EXPECT_TRUE(dialog().Text_evtlogfile_path.Enabled);
}

} // namespace
} // namespace tyxo
