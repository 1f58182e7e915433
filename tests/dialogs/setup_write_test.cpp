// The setup dialog's way back to the Evaluator.

#include "dialogs/setup_world.h"

namespace tyxo {
namespace {

using namespace simulation;

class SetupWrite : public setup_world {
  protected:
    void SetUp() override {
        start(2);
        for (i16 channel = 0; channel < 2; ++channel) {
            channel_rec& rec = sensor::state.channels[channel];
            rec.alarmlevel = 255 + channel;
            rec.ratedspeed = 1500;
            rec.overspeed = 1650;
            rec.numzyl = 6;
            rec.prealarmlevel = 75;
            rec.firingorder = {1, 5, 3, 6, 2, 4};
        }
        mainfrm::setup_click();
    }
};

TEST_F(SetupWrite, SendsWhatTheChannelsTabShowsAndStoresThen) {
    frmSetup::Text_sensor_loc_change(0, "Renamed");
    frmSetup::write_parameter(1);
    const std::string order = "010503060204000000000000000000000000000000000000";
    EXPECT_EQ(sent(1), closed(":07010005DC06720006" + order + "004B"));
    EXPECT_EQ(sent(1).size(), 75U);
    EXPECT_EQ(sent(0), "");
    EXPECT_EQ(sensor::state.channels[0].location, "Renamed");
    EXPECT_EQ(Ini::ini_read("location 1"), "Renamed");
}

TEST_F(SetupWrite, AFiringOrderEntryWithALetterFailsAndNothingIsSentOrStored) {
    sensor::state.channels[1].firingorder[2] = 103;
    frmSetup::cmd_Refresh_click();
    frmSetup::Text_sensor_loc_change(0, "Renamed");
    const std::string before = file("tyxo.ini");
    EXPECT_THROW(frmSetup::write_parameter(1), failure);
    EXPECT_EQ(sent(1), "");
    EXPECT_EQ(sensor::state.channels[0].location, "Engine 1");
    EXPECT_EQ(file("tyxo.ini"), before);
}

TEST_F(SetupWrite, NoButtonOfTheDialogSendsAnything) {
    frmSetup::cmd_Refresh_click();
    frmSetup::cmd_OK_click();
    EXPECT_EQ(sent(0) + sent(1), "");
}

} // namespace
} // namespace tyxo
