// The large copy of the status text stands still until it is refreshed.

#include "dialogs/frmstatustext.h"

#include "link/indicators.h"
#include "logging/logging_machine.h"

namespace tyxo {
namespace {

using namespace simulation;

class StatusWindow : public testing::Test {
  protected:
    void SetUp() override {
        start_on(logging_settings(1));
        indicators.Text_status.keep_last(0);
        add("first");
    }

    static void add(const std::string& line) { indicators.Text_status.append(line + "\r\n"); }
    static const std::string& text() { return frmstatustext::state.Text_status.Text; }
    static const Form& form() { return frmstatustext::state.form; }
};

TEST_F(StatusWindow, BearsItsCaptions) {
    EXPECT_EQ(form().Caption, "Status window");
    EXPECT_EQ(frmstatustext::state.Cmdrefresh.Caption, "Refresh");
    EXPECT_EQ(frmstatustext::state.Cmdclose.Caption, "Close");
}

TEST_F(StatusWindow, OpensWithTheWholeStatusText) {
    EXPECT_FALSE(form().Visible);
    add("second");
    mainfrm::Text_status_dblclick();
    EXPECT_TRUE(form().Visible);
    EXPECT_TRUE(form().Loaded);
    EXPECT_EQ(text(), "first\r\nsecond\r\n");
}

TEST_F(StatusWindow, ALineThatArrivesShowsOnlyAfterRefresh) {
    mainfrm::Text_status_dblclick();
    raise_event(0, {.box = " KVD Engine 1 ## Main Error", .comment = "", .file = ""});
    EXPECT_EQ(text(), "first\r\n");
    frmstatustext::Cmdrefresh_click();
    EXPECT_EQ(text(), "first\r\n07-02-2026 13:05:09 KVD Engine 1 ## Main Error\r\n");
    EXPECT_TRUE(form().Visible);
    add("third");
    EXPECT_EQ(text().find("third"), std::string::npos);
}

TEST_F(StatusWindow, ClosingAndReopeningBringsTheTextUpToDate) {
    mainfrm::Text_status_dblclick();
    add("second");
    frmstatustext::Cmdclose_click();
    EXPECT_FALSE(form().Visible);
    EXPECT_FALSE(form().Loaded);
    EXPECT_EQ(text(), "first\r\n");
    mainfrm::Text_status_dblclick();
    EXPECT_EQ(text(), "first\r\nsecond\r\n");
}

TEST_F(StatusWindow, KeepsItsTextWhenTheStatusTextIsCut) {
    mainfrm::Text_status_dblclick();
    indicators.Text_status.keep_last(0);
    EXPECT_EQ(text(), "first\r\n");
    frmstatustext::Cmdrefresh_click();
    EXPECT_EQ(text(), "");
}

TEST_F(StatusWindow, ChangesNothingOfTheStatusText) {
    mainfrm::Text_status_dblclick();
    frmstatustext::Cmdrefresh_click();
    frmstatustext::Cmdclose_click();
    EXPECT_EQ(indicators.Text_status.text(), "first\r\n");
}

} // namespace
} // namespace tyxo
