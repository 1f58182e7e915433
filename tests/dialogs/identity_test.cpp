// Who the program says it is.

#include "dialogs/frmlog.h"
#include "dialogs/frmsplash.h"
#include "logging/logging_machine.h"

namespace tyxo {
namespace {

class Identity : public testing::Test {
  protected:
    void SetUp() override { simulation::start_on(simulation::logging_settings(1)); }
};

TEST_F(Identity, OfTheSoftwareIsFilledInWhenTheWindowIsLoaded) {
    EXPECT_EQ(Frmlog::state.Lblversion.Caption, "");
    mainfrm::Lbl_TY_logger_click();
    EXPECT_TRUE(Frmlog::state.form.Visible);
    EXPECT_TRUE(Frmlog::state.form.Loaded);
    EXPECT_EQ(Frmlog::state.form.Caption, "Software info ");
    EXPECT_EQ(Frmlog::state.headline.Caption, "Quarvo / Tyxo Data Logger Info");
    EXPECT_EQ(Frmlog::state.Lbllogtype.Caption, "four systems");
    EXPECT_EQ(Frmlog::state.Lblversion.Caption, "Version 2.10_4");
    EXPECT_EQ(Frmlog::state.Lbldate.Caption, "02.07.2026");
    EXPECT_NE(Frmlog::state.Lbldev.Caption, "");
    EXPECT_NE(Frmlog::state.Lblprog.Caption, "");
    EXPECT_EQ(Frmlog::state.Cmd_ok.Caption, "ok");
}

TEST_F(Identity, OfTheSoftwareGoesWithOk) {
    mainfrm::Lbl_TY_logger_click();
    Frmlog::Cmd_ok_click();
    EXPECT_FALSE(Frmlog::state.form.Visible);
    EXPECT_FALSE(Frmlog::state.form.Loaded);
}

TEST_F(Identity, InAboutHasTheVersionFourBlanksAndTheDate) {
    mainfrm::about_click();
    EXPECT_TRUE(frmSplash::state.form.Visible);
    EXPECT_TRUE(frmSplash::state.form.Loaded);
    EXPECT_EQ(frmSplash::state.form.Caption, "About");
    EXPECT_EQ(frmSplash::state.lblVersion.Caption, "Version 2.10_4    02.07.2026");
    EXPECT_EQ(frmSplash::state.lblProductName.Caption, "Quarvo / Tyxo Data Logger");
    EXPECT_NE(frmSplash::state.lbllogo.Caption, "");
}

TEST_F(Identity, InAboutGoesWhenTheWindowIsUnloaded) {
    mainfrm::about_click();
    frmSplash::unload();
    EXPECT_FALSE(frmSplash::state.form.Visible);
    EXPECT_FALSE(frmSplash::state.form.Loaded);
}

TEST_F(Identity, IsNotShownAtTheStart) {
    EXPECT_FALSE(Frmlog::state.form.Visible);
    EXPECT_FALSE(frmSplash::state.form.Visible);
}

} // namespace
} // namespace tyxo
