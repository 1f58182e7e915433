// The stop lock without its picture: the password and the answer.

#include "dialogs/frmpwd.h"
#include "dialogs/locked_program.h"
#include "settings/ini.h"

#include <gtest/gtest.h>

#include <optional>

namespace tyxo {
namespace {

using namespace simulation;

TEST_F(StopLock, LoadsWithItsTextsAnEmptyBoxAndADisabledButton) {
    EXPECT_FALSE(FrmAbort::state.form.Visible);
    bool looked = false;
    asked([&] {
        looked = true;
        EXPECT_TRUE(FrmAbort::state.form.Visible);
        EXPECT_TRUE(FrmAbort::state.form.Loaded);
        EXPECT_EQ(FrmAbort::state.form.Caption, "stop data logging");
        EXPECT_EQ(FrmAbort::state.Label1.Caption, "To stop data-logging enter password :");
        EXPECT_EQ(FrmAbort::state.CmdStop.Caption, "Stop Logging");
        EXPECT_EQ(FrmAbort::state.CmdContinue.Caption, "Continue Logging");
        EXPECT_EQ(FrmAbort::state.TextPassword.Text, "");
        EXPECT_FALSE(FrmAbort::state.CmdStop.Enabled);
        EXPECT_TRUE(FrmAbort::state.CmdContinue.Enabled);
        EXPECT_EQ(FrmAbort::state.CmdStop_focused, 0);
    });
    EXPECT_TRUE(looked);
    EXPECT_FALSE(FrmAbort::state.form.Visible);
    EXPECT_FALSE(FrmAbort::state.form.Loaded);
}

TEST_F(StopLock, TheLastLetterEnablesStopAndMovesTheFocusAndOneMoreDisablesItAgain) {
    asked([] {
        for (const std::string_view text : {"R", "Ru", "Ruh", "Ruhe"}) {
            FrmAbort::TextPassword_change(text);
            EXPECT_FALSE(FrmAbort::state.CmdStop.Enabled) << text;
            EXPECT_EQ(FrmAbort::state.CmdStop_focused, 0) << text;
        }
        FrmAbort::TextPassword_change("Ruhe7");
        EXPECT_TRUE(FrmAbort::state.CmdStop.Enabled);
        EXPECT_EQ(FrmAbort::state.CmdStop_focused, 1);
        FrmAbort::TextPassword_change("Ruhe7x");
        EXPECT_FALSE(FrmAbort::state.CmdStop.Enabled);
        EXPECT_EQ(FrmAbort::state.CmdStop_focused, 1);
        EXPECT_EQ(FrmAbort::state.TextPassword.Text, "Ruhe7x");
        FrmAbort::TextPassword_change("Ruhe7");
        EXPECT_TRUE(FrmAbort::state.CmdStop.Enabled);
        EXPECT_EQ(FrmAbort::state.CmdStop_focused, 2);
    });
}

TEST_F(StopLock, APasswordInOtherCaseDoesNotMatch) {
    asked([] {
        for (const std::string_view text : {"ruhe7", "RUHE7", "RuHe7", " Ruhe7", "Ruhe7 ", "uhe7", ""}) {
            FrmAbort::TextPassword_change(text);
            EXPECT_FALSE(FrmAbort::state.CmdStop.Enabled) << text;
        }
        EXPECT_EQ(FrmAbort::state.CmdStop_focused, 0);
    });
}

TEST_F(StopLock, AnUmlautHasToBeTheSameLetter) {
    start_with("passwd=R\xFChrer\xDF\r\n");
    asked([] {
        for (const std::string_view text : {"R\xDChrer\xDF", "Ruhrer\xDF", "R\xC3\xBChrer\xC3\x9F"}) {
            FrmAbort::TextPassword_change(text);
            EXPECT_FALSE(FrmAbort::state.CmdStop.Enabled);
        }
        FrmAbort::TextPassword_change("R\xFChrer\xDF");
        EXPECT_TRUE(FrmAbort::state.CmdStop.Enabled);
    });
}

TEST_F(StopLock, WithAnEmptyPasswordStopIsEnabledFromTheStartAndTheFocusStaysInTheBox) {
    for (const std::string_view more : {"passwd=\r\n", ""}) {
        start_with(more);
        asked([] {
            EXPECT_TRUE(FrmAbort::state.CmdStop.Enabled);
            EXPECT_EQ(FrmAbort::state.CmdStop_focused, 0);
            FrmAbort::TextPassword_change("x");
            EXPECT_FALSE(FrmAbort::state.CmdStop.Enabled);
            FrmAbort::TextPassword_change("");
            EXPECT_TRUE(FrmAbort::state.CmdStop.Enabled);
            EXPECT_EQ(FrmAbort::state.CmdStop_focused, 1);
        });
    }
}

TEST_F(StopLock, StopGrantsAndContinueAndTheFrameRefuse) {
    struct row {
        const char* name;
        void (*answer)();
        bool granted;
    };
    for (const row& each :
         {row{"stop", FrmAbort::CmdStop_click, true}, row{"continue", FrmAbort::CmdContinue_click, false},
          row{"frame", FrmAbort::unload, false}}) {
        while_asked([&] {
            type_password("Ruhe7");
            EXPECT_EQ(FrmAbort::GetStatus(), 0);
            each.answer();
        });
        EXPECT_EQ(FrmAbort::stop_lock(what), each.granted) << each.name;
        EXPECT_EQ(FrmAbort::GetStatus(), each.granted ? -1 : 0) << each.name;
    }
}

TEST_F(StopLock, TheResultOutlivesTheWindowUntilTheNextLoading) {
    while_asked([] { stop_with("Ruhe7"); });
    EXPECT_TRUE(FrmAbort::stop_lock(what));
    EXPECT_FALSE(FrmAbort::state.form.Loaded);
    EXPECT_EQ(FrmAbort::GetStatus(), -1);
    EXPECT_FALSE(asked([] { EXPECT_EQ(FrmAbort::GetStatus(), 0); }));
    EXPECT_EQ(FrmAbort::GetStatus(), 0);
}

TEST_F(StopLock, EveryOpeningBeginsAnewAndKeepsThePassword) {
    for (int opening = 0; opening < 2; ++opening) {
        asked([] {
            EXPECT_EQ(FrmAbort::state.TextPassword.Text, "");
            EXPECT_FALSE(FrmAbort::state.CmdStop.Enabled);
            type_password("Ruhe7");
            EXPECT_TRUE(FrmAbort::state.CmdStop.Enabled);
        });
    }
}

TEST_F(StopLock, AClickOnStopCountsOnlyWhileThePasswordIsRight) {
    EXPECT_FALSE(asked([] {
        FrmAbort::CmdStop_click();
        EXPECT_TRUE(FrmAbort::state.form.Visible) << "nothing typed";
        type_password("Ruhe7x"); // the button was enabled for a moment
        FrmAbort::CmdStop_click();
        EXPECT_TRUE(FrmAbort::state.form.Visible) << "one letter more";
    }));
}

TEST_F(StopLock, TheFirstAnswerCountsWhenASecondComesLate) {
    while_asked([] {
        type_password("Ruhe7");
        FrmAbort::CmdContinue_click();
        FrmAbort::CmdStop_click();
        FrmAbort::TextPassword_change("Ruhe7");
    });
    EXPECT_FALSE(FrmAbort::stop_lock(what));
    EXPECT_EQ(FrmAbort::GetStatus(), 0);
    EXPECT_EQ(FrmAbort::state.CmdStop_focused, 1);
    while_asked([] {
        stop_with("Ruhe7");
        FrmAbort::CmdContinue_click();
    });
    EXPECT_TRUE(FrmAbort::stop_lock(what));
    EXPECT_EQ(FrmAbort::GetStatus(), -1);
}

TEST_F(StopLock, SaysWhatWillStop) {
    for (const std::string_view text : {"Stops channel 2: Engine 2", "Stops all channels"}) {
        while_asked([&] {
            EXPECT_EQ(FrmAbort::state.Lbl_what.Caption, text);
            FrmAbort::unload();
        });
        EXPECT_FALSE(FrmAbort::stop_lock(text));
    }
}

TEST_F(StopLock, MeasuringGoesOnWhileItIsUp) {
    const auto before = logged(0).size();
    while_asked([] {
        feed(0, measured_body());
        type_password("Ru");
    });
    after(2500, [] { feed(0, measured_body()); });
    after(3500, [] { FrmAbort::CmdContinue_click(); });
    EXPECT_FALSE(FrmAbort::stop_lock(what));
    EXPECT_EQ(world().now_ms, 3500);
    EXPECT_EQ(logged(0).size(), before + 2);
}

TEST_F(StopLock, ASecondRequestIsRefusedAtOnceAndTheFirstGetsTheAnswer) {
    std::optional<bool> second;
    while_asked([&] {
        type_password("Ruhe7");
        second = FrmAbort::stop_lock(what);
        EXPECT_TRUE(FrmAbort::state.form.Visible) << "the first one still asks";
        EXPECT_TRUE(FrmAbort::state.CmdStop.Enabled) << "and keeps what was typed";
        FrmAbort::CmdStop_click();
    });
    EXPECT_TRUE(FrmAbort::stop_lock(what));
    EXPECT_EQ(second, false);
}

TEST_F(StopLock, ARequestBetweenTheAnswerAndTheEndOfTheWaitIsRefusedAndTakesNoAnswerAway) {
    std::optional<bool> second;
    while_asked([&] {
        stop_with("Ruhe7");
        second = FrmAbort::stop_lock(what);
    });
    EXPECT_TRUE(FrmAbort::stop_lock(what));
    EXPECT_EQ(second, false);
    EXPECT_EQ(FrmAbort::GetStatus(), -1);
    EXPECT_FALSE(asked([] { EXPECT_TRUE(FrmAbort::state.form.Visible) << "it can ask again"; }));
}

// The password and the settings file.

TEST_F(StopLock, AChangedPasswordIsValidOnlyAfterTheRestart) {
    mainfrm::setup_passwd_click();
    frmpwd::oldpasswd_change("Ruhe7");
    frmpwd::newpasswd_change("Neu8");
    frmpwd::newpasswd2_change("Neu8");
    frmpwd::CmdOK_click();
    EXPECT_EQ(Ini::ini_read("passwd"), "Neu8");
    asked([] {
        FrmAbort::TextPassword_change("Neu8");
        EXPECT_FALSE(FrmAbort::state.CmdStop.Enabled);
        FrmAbort::TextPassword_change("Ruhe7");
        EXPECT_TRUE(FrmAbort::state.CmdStop.Enabled);
    });
    mainfrm::load_settings();
    asked([] {
        FrmAbort::TextPassword_change("Ruhe7");
        EXPECT_FALSE(FrmAbort::state.CmdStop.Enabled);
        FrmAbort::TextPassword_change("Neu8");
        EXPECT_TRUE(FrmAbort::state.CmdStop.Enabled);
    });
}

TEST_F(StopLock, APasswordFromTheFileIsComparedAsTheFileIsRead) {
    struct row {
        const char* name;
        std::string stored;
        std::string valid;
    };
    const std::string letters(80, 'p');
    for (const row& each : {row{"blanks around are no part of it", "  a b  ", "a b"},
                            row{"quotes around are no part of it", "\"geheim\"", "geheim"},
                            row{"quotes keep the blanks", "\" geheim \"", " geheim "},
                            row{"one quote is a letter", "ge\"heim", "ge\"heim"},
                            row{"a semicolon and a = are letters", "a;b=c", "a;b=c"},
                            row{"only 69 letters are read", letters, letters.substr(0, 69)}}) {
        start_with("passwd=" + each.stored + "\r\n");
        asked([&] {
            FrmAbort::TextPassword_change(each.valid);
            EXPECT_TRUE(FrmAbort::state.CmdStop.Enabled) << each.name;
            if (each.stored == each.valid) return;
            FrmAbort::TextPassword_change(each.stored);
            EXPECT_FALSE(FrmAbort::state.CmdStop.Enabled) << each.name;
        });
    }
}

} // namespace
} // namespace tyxo
