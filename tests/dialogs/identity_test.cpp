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
    EXPECT_EQ(Frmlog.Lblversion.Caption, "");
    Lbl_TY_logger_click();
    EXPECT_TRUE(Frmlog.form.Visible);
    EXPECT_TRUE(Frmlog.form.Loaded);
    EXPECT_EQ(Frmlog.form.Caption, "Software info ");
    EXPECT_EQ(Frmlog.headline.Caption, "Quarvo / Tyxo Data Logger Info");
    EXPECT_EQ(Frmlog.Lbllogtype.Caption, "four systems");
    EXPECT_EQ(Frmlog.Lblversion.Caption, "Version 2.10_4");
    EXPECT_EQ(Frmlog.Lbldate.Caption, "02.07.2026");
    EXPECT_NE(Frmlog.Lbldev.Caption, "");
    EXPECT_NE(Frmlog.Lblprog.Caption, "");
    EXPECT_EQ(Frmlog.Cmd_ok.Caption, "ok");
}

TEST_F(Identity, OfTheSoftwareGoesWithOk) {
    Lbl_TY_logger_click();
    Frmlog_Cmd_ok_click();
    EXPECT_FALSE(Frmlog.form.Visible);
    EXPECT_FALSE(Frmlog.form.Loaded);
}

TEST_F(Identity, InAboutHasTheVersionFourBlanksAndTheDate) {
    about_click();
    EXPECT_TRUE(frmSplash.form.Visible);
    EXPECT_TRUE(frmSplash.form.Loaded);
    EXPECT_EQ(frmSplash.form.Caption, "About");
    EXPECT_EQ(frmSplash.lblVersion.Caption, "Version 2.10_4    02.07.2026");
    EXPECT_EQ(frmSplash.lblProductName.Caption, "Quarvo / Tyxo Data Logger");
    EXPECT_NE(frmSplash.lbllogo.Caption, "");
}

TEST_F(Identity, InAboutGoesWhenTheWindowIsUnloaded) {
    about_click();
    frmSplash_unload();
    EXPECT_FALSE(frmSplash.form.Visible);
    EXPECT_FALSE(frmSplash.form.Loaded);
}

TEST_F(Identity, IsNotShownAtTheStart) {
    EXPECT_FALSE(Frmlog.form.Visible);
    EXPECT_FALSE(frmSplash.form.Visible);
}

} // namespace
} // namespace tyxo
