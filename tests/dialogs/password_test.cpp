// The dialog "Setup Password" without its picture.

#include "dialogs/frmabort.h"
#include "dialogs/frmpwd.h"
#include "logging/logging_machine.h"
#include "settings/ini.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

class Password : public testing::Test {
  protected:
    void SetUp() override {
        start_on(logging_settings(1, "passwd=Ruhe7\r\n"));
        mainfrm::setup_passwd_click();
    }
    static void change(std::string_view old_one, std::string_view first, std::string_view second) {
        frmpwd::oldpasswd_change(old_one);
        frmpwd::newpasswd_change(first);
        frmpwd::newpasswd2_change(second);
        frmpwd::CmdOK_click();
    }
    /// Sets a password through the dialog, from whatever is stored.
    static void set(std::string_view password) {
        mainfrm::setup_passwd_click();
        change(Ini::ini_read("passwd"), password, password);
        EXPECT_FALSE(frmpwd::state.form.Visible);
    }
    static std::string stored_line() {
        for (const std::string& line : lines_of(file("tyxo.ini"))) {
            if (line.starts_with("passwd=")) return line;
        }
        return "none";
    }
};

TEST_F(Password, OpensEmptyWithItsTextsAndOkDisabled) {
    EXPECT_TRUE(frmpwd::state.form.Visible);
    EXPECT_TRUE(frmpwd::state.form.Loaded);
    EXPECT_EQ(frmpwd::state.form.Caption, "Setup Password");
    EXPECT_EQ(frmpwd::state.Frame1.Caption, "Change password");
    EXPECT_EQ(frmpwd::state.CmdOK.Caption, "OK");
    EXPECT_EQ(frmpwd::state.CmdCancel.Caption, "Cancel");
    EXPECT_FALSE(frmpwd::state.CmdOK.Enabled);
    EXPECT_TRUE(frmpwd::state.CmdCancel.Enabled);
    for (const TextBox* box : {&frmpwd::state.oldpasswd, &frmpwd::state.newpasswd, &frmpwd::state.newpasswd2})
        EXPECT_EQ(box->Text, "");
}

TEST_F(Password, OpensAnewWhateverWasTypedBefore) {
    frmpwd::oldpasswd_change("Ruhe7");
    frmpwd::newpasswd_change("a");
    frmpwd::newpasswd2_change("b");
    frmpwd::CmdCancel_click();
    mainfrm::setup_passwd_click();
    EXPECT_FALSE(frmpwd::state.CmdOK.Enabled);
    for (const TextBox* box : {&frmpwd::state.oldpasswd, &frmpwd::state.newpasswd, &frmpwd::state.newpasswd2})
        EXPECT_EQ(box->Text, "");
}

TEST_F(Password, TheOldPasswordEnablesOkExactly) {
    for (const std::string_view text : {"R", "Ruhe", "ruhe7", "RUHE7", "Ruhe7 ", ""}) {
        frmpwd::oldpasswd_change(text);
        EXPECT_FALSE(frmpwd::state.CmdOK.Enabled) << text;
    }
    frmpwd::oldpasswd_change("Ruhe7");
    EXPECT_TRUE(frmpwd::state.CmdOK.Enabled);
    frmpwd::oldpasswd_change("Ruhe7x");
    EXPECT_FALSE(frmpwd::state.CmdOK.Enabled);
    EXPECT_EQ(frmpwd::state.oldpasswd.Text, "Ruhe7x");
}

TEST_F(Password, EachChangeReadsTheFileAnew) {
    frmpwd::oldpasswd_change("Ruhe7");
    EXPECT_TRUE(frmpwd::state.CmdOK.Enabled);
    Ini::ini_write("passwd", "other");
    EXPECT_TRUE(frmpwd::state.CmdOK.Enabled) << "until the next change";
    frmpwd::oldpasswd_change("Ruhe7");
    EXPECT_FALSE(frmpwd::state.CmdOK.Enabled);
    frmpwd::oldpasswd_change("other");
    EXPECT_TRUE(frmpwd::state.CmdOK.Enabled);
}

TEST_F(Password, WithoutAPasswordOkIsEnabledWhenTheOldBoxIsEmptyAgain) {
    for (const std::string_view more : {"passwd=\r\n", ""}) {
        start_on(logging_settings(1, more));
        mainfrm::setup_passwd_click();
        EXPECT_FALSE(frmpwd::state.CmdOK.Enabled) << "nothing has changed yet";
        frmpwd::oldpasswd_change("x");
        EXPECT_FALSE(frmpwd::state.CmdOK.Enabled);
        frmpwd::oldpasswd_change("");
        EXPECT_TRUE(frmpwd::state.CmdOK.Enabled);
    }
}

TEST_F(Password, EqualNewInputsAreStoredAtOnceAndTheDialogCloses) {
    const std::string before = file("tyxo.ini");
    change("Ruhe7", "Neu8", "Neu8");
    EXPECT_FALSE(frmpwd::state.form.Visible);
    EXPECT_FALSE(frmpwd::state.form.Loaded);
    EXPECT_TRUE(world().boxes.empty());
    std::string expected = before;
    expected.replace(expected.find("passwd=Ruhe7"), 12, "passwd=Neu8");
    EXPECT_EQ(file("tyxo.ini"), expected) << "no other key changes";
}

TEST_F(Password, DifferentNewInputsAreToldAndTheDialogStaysWithItsContents) {
    world().during_box = [] { EXPECT_TRUE(frmpwd::state.form.Visible); };
    const std::string before = file("tyxo.ini");
    change("Ruhe7", "Neu8", "neu8");
    ASSERT_EQ(world().boxes.size(), 1U);
    EXPECT_EQ(world().boxes[0].text, "New password inputs different !! \r\nPlease enter password again ! ");
    EXPECT_EQ(world().boxes[0].icon, box_icon::critical);
    EXPECT_EQ(world().boxes[0].buttons, box_buttons::ok);
    EXPECT_TRUE(frmpwd::state.form.Visible);
    EXPECT_EQ(frmpwd::state.oldpasswd.Text, "Ruhe7");
    EXPECT_EQ(frmpwd::state.newpasswd.Text, "Neu8");
    EXPECT_EQ(frmpwd::state.newpasswd2.Text, "neu8");
    EXPECT_TRUE(frmpwd::state.CmdOK.Enabled);
    EXPECT_EQ(file("tyxo.ini"), before);
    frmpwd::newpasswd2_change("Neu8");
    frmpwd::CmdOK_click();
    EXPECT_EQ(Ini::ini_read("passwd"), "Neu8");
}

TEST_F(Password, AnEmptyNewPasswordInBothBoxesIsAccepted) {
    change("Ruhe7", "", "");
    EXPECT_FALSE(frmpwd::state.form.Visible);
    EXPECT_TRUE(world().boxes.empty());
    EXPECT_EQ(stored_line(), "passwd=");
    mainfrm::load_settings();
    EXPECT_EQ(FrmAbort::state.stop_password, "");
}

TEST_F(Password, CancelStoresNothing) {
    const std::string before = file("tyxo.ini");
    frmpwd::oldpasswd_change("Ruhe7");
    frmpwd::newpasswd_change("Neu8");
    frmpwd::newpasswd2_change("Neu8");
    frmpwd::CmdCancel_click();
    EXPECT_FALSE(frmpwd::state.form.Visible);
    EXPECT_FALSE(frmpwd::state.form.Loaded);
    EXPECT_EQ(file("tyxo.ini"), before);
}

TEST_F(Password, OkCountsOnlyWhileTheOldPasswordIsRightAndTheDialogIsOpen) {
    const std::string before = file("tyxo.ini");
    change("Ruhe7x", "Neu8", "Neu8"); // a click that was on its way when the last letter came
    EXPECT_TRUE(frmpwd::state.form.Visible);
    EXPECT_EQ(file("tyxo.ini"), before);
    frmpwd::oldpasswd_change("Ruhe7");
    frmpwd::CmdCancel_click();
    frmpwd::CmdOK_click();
    EXPECT_EQ(file("tyxo.ini"), before);
    EXPECT_TRUE(world().boxes.empty());
}

TEST_F(Password, TheNewOneIsValidInTheDialogAtOnceAndTheProgramKeepsTheOldOne) {
    set("Neu8");
    mainfrm::setup_passwd_click();
    frmpwd::oldpasswd_change("Ruhe7");
    EXPECT_FALSE(frmpwd::state.CmdOK.Enabled);
    frmpwd::oldpasswd_change("Neu8");
    EXPECT_TRUE(frmpwd::state.CmdOK.Enabled);
    EXPECT_EQ(FrmAbort::state.stop_password, "Ruhe7");
    mainfrm::load_settings();
    EXPECT_EQ(FrmAbort::state.stop_password, "Neu8");
}

TEST_F(Password, IsStoredAsItWasTypedAndReadAsTheFileIsRead) {
    struct row {
        const char* name;
        std::string typed;
        std::string valid; ///< from now on
    };
    const std::string letters = std::string(69, 'a') + std::string(11, 'b');
    for (const row& each : {row{"umlauts and case", "\xC4pfel\xDF", "\xC4pfel\xDF"},
                            row{"blanks around are lost", "  a b ", "a b"},
                            row{"quotes around are lost", "\"geheim\"", "geheim"},
                            row{"a quote inside stays", "ge'heim\"", "ge'heim\""},
                            row{"only blanks are no password", "   ", ""},
                            row{"80 letters become 69", letters, letters.substr(0, 69)},
                            row{"[, ; and = are letters", ";[a]=b", ";[a]=b"}}) {
        set(each.typed);
        EXPECT_EQ(stored_line(), "passwd=" + each.typed) << each.name;
        mainfrm::setup_passwd_click();
        frmpwd::oldpasswd_change(each.valid);
        EXPECT_TRUE(frmpwd::state.CmdOK.Enabled) << each.name;
        frmpwd::oldpasswd_change(each.typed);
        EXPECT_EQ(frmpwd::state.CmdOK.Enabled, each.typed == each.valid) << each.name;
        mainfrm::load_settings();
        EXPECT_EQ(FrmAbort::state.stop_password, each.valid) << each.name;
    }
}

TEST_F(Password, AFileThatCannotBeWrittenIsNotNoticed) {
    world().unwritable.insert("tyxo.ini");
    change("Ruhe7", "Neu8", "Neu8");
    EXPECT_FALSE(frmpwd::state.form.Visible);
    EXPECT_TRUE(world().boxes.empty());
    EXPECT_EQ(Ini::ini_read("passwd"), "Ruhe7");
}

TEST_F(Password, IsChangedWhileMeasuringToo) {
    start_logging(0);
    set("Neu8");
    EXPECT_TRUE(sensor::state.measure_running);
    EXPECT_EQ(Ini::ini_read("passwd"), "Neu8");
}

} // namespace
} // namespace tyxo
