// The windows' texts and states before anything has happened.

#include "app/mainfrm.h"
#include "dialogs/frmalert.h"
#include "dialogs/frmlog.h"
#include "dialogs/frmsplash.h"
#include "dialogs/setup/frmsetup.h"
#include "dialogs/setup_world.h"
#include "platform/sound.h"
#include "platform/winsock.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

class WindowTexts : public testing::Test {
  protected:
    WindowTexts() { fresh_world(); }
    ~WindowTexts() override { fresh_world(); }
};

TEST_F(WindowTexts, TheAlertHasALineForEachChannel) {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        const std::string number = std::to_string(channel + 1);
        EXPECT_EQ(FrmAlert::state.lbl_inst[channel].Caption, "Tyxo " + number + ":");
        EXPECT_EQ(FrmAlert::state.lbl_inst1[channel].Caption, "TY " + number);
    }
    EXPECT_FALSE(FrmAlert::state.Image1_visible || FrmAlert::state.Image2_visible);
}

TEST_F(WindowTexts, TheSoftwareSaysWhoMadeIt) {
    mainfrm::Lbl_TY_logger_click();
    EXPECT_EQ(Frmlog::state.Lbldev.Caption, "Quarvo engine diagnostics");
    EXPECT_EQ(Frmlog::state.Lblprog.Caption, "Quarvo software engineering");
}

TEST_F(WindowTexts, AboutSaysWhatTheProgramIsFor) {
    mainfrm::about_click();
    EXPECT_EQ(frmSplash::state.lbllogo.Caption, "Watches up to four engines, day and night");
}

TEST_F(WindowTexts, TheSetupBeginsWithItsFirstTabAndAllOfThemCanBeChosen) {
    const tab_strip tabs;
    EXPECT_EQ(tabs.Tab, 0);
    for (const bool enabled : tabs.TabEnabled)
        EXPECT_TRUE(enabled);
    EXPECT_EQ(frmSetup::window{}.num_sensors_edit, 0);
}

TEST_F(WindowTexts, TheFolderBrowserBeginsWhereTheBoxPoints) {
    frmSetup::state.Text_logfile_path[2].Text = "C:\\logs\\";
    frmSetup::cmd_browse_path_click(2);
    EXPECT_EQ(frmbrowse::state.start_folder, "C:\\logs\\");
    frmSetup::state.Text_evtlogfile_path.Text = "C:\\events\\";
    frmSetup::cmd_browse_evtpath_click();
    EXPECT_EQ(frmbrowse::state.start_folder, "C:\\events\\");
}

TEST_F(WindowTexts, TheMainWindowKnowsNoScreenYet) {
    const mainfrm::window window;
    EXPECT_EQ(window.screen_w + window.screen_h, 0);
    EXPECT_EQ(window.design_w + window.design_h, 0);
    EXPECT_FALSE(window.announced);
}

TEST(CodesOfOthers, AreThoseThatOthersCountOn) {
    EXPECT_EQ(mainfrm::wrong_settings_code, 1);
    EXPECT_EQ(mainfrm::lost_screen_code, 1);
    EXPECT_EQ(mainfrm::second_copy_code, 2);
    EXPECT_EQ(snd_async, 1);
    EXPECT_EQ(snd_nodefault, 2);
    EXPECT_EQ(snd_filename, 131072);
    EXPECT_EQ(socket_state::closed, 0);
    EXPECT_EQ(socket_state::closing, 8);
}

} // namespace
} // namespace tyxo
