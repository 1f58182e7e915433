// The restart of the alarm inhibit time: one command to the Evaluator, three records of it.

#include "dialogs/frmresetinhtime.h"

#include "link/calls.h"
#include "logging/logging_machine.h"
#include "settings/settings.h"

namespace tyxo {
namespace {

using namespace simulation;

constexpr std::string_view command = ":80092f\r\n";
constexpr std::string_view box_line = "07-02-2026 13:05:09 KVD Engine 2 ## Restart Alarm Inhibit Time\r\n";
constexpr std::string_view event_record = "##;07-02-2026;13:05:09;KVD Engine 2 ## Restart Alarm Inhibit Time";

class InhibitReset : public testing::Test {
  protected:
    void SetUp() override {
        start_on(logging_settings(3, "eventfile_ena= 1\r\nevtpath=C:\\logs\\\r\n"));
        indicators.Text_status.keep_last(0);
    }

    static FrmResetInhTime::window& dialog() { return FrmResetInhTime::state; }
    static std::string status() { return std::string(indicators.Text_status.text()); }
    static std::string last_event() { return lines_of(file("C:/logs/TY_all_events.txt")).back(); }
};

TEST_F(InhibitReset, BearsItsCaptions) {
    EXPECT_EQ(dialog().form.Caption, "Alarm Inhibit Time");
    EXPECT_EQ(dialog().Label1.Caption, "Restart Alarm Inhibit Time");
    EXPECT_EQ(dialog().CmdDo.Caption, "Restart");
    EXPECT_EQ(dialog().CmdCancel.Caption, "Cancel");
}

TEST_F(InhibitReset, TheInhibitLabelOpensItForItsChannel) {
    EXPECT_FALSE(dialog().form.Visible);
    for (const i16 channel : {i16{2}, i16{0}, i16{3}}) {
        mainfrm::Lbl_alminhibit_click(channel);
        EXPECT_EQ(sensor::state.inhibit_reset_channel, channel);
        EXPECT_TRUE(dialog().form.Visible);
        EXPECT_TRUE(dialog().form.Loaded);
    }
    EXPECT_EQ(sent(0), "");
    EXPECT_EQ(status(), "");
}

TEST_F(InhibitReset, SendsTheCommandWithItsCheck) {
    mainfrm::Lbl_alminhibit_click(1);
    FrmResetInhTime::CmdDo_click();
    EXPECT_EQ(sent(1), command);
    EXPECT_EQ(sent(0), "");
    EXPECT_EQ(sent(2), "");
}

TEST_F(InhibitReset, IsWrittenIntoTheStatusText) {
    mainfrm::Lbl_alminhibit_click(1);
    FrmResetInhTime::CmdDo_click();
    EXPECT_EQ(status(), box_line);
}

TEST_F(InhibitReset, IsAddedBehindWhatTheStatusTextHolds) {
    indicators.Text_status.append("first\r\n");
    mainfrm::Lbl_alminhibit_click(1);
    FrmResetInhTime::CmdDo_click();
    EXPECT_EQ(status(), "first\r\n" + std::string(box_line));
}

TEST_F(InhibitReset, IsAnEventOfThePlant) {
    mainfrm::Lbl_alminhibit_click(1);
    FrmResetInhTime::CmdDo_click();
    EXPECT_EQ(last_event(), event_record);
}

TEST_F(InhibitReset, IsACommentInTheChannelsLog) {
    start_logging(1);
    mainfrm::Lbl_alminhibit_click(1);
    FrmResetInhTime::CmdDo_click();
    EXPECT_NE(logged(1).back().find("<!-- "), std::string::npos) << logged(1).back();
    EXPECT_NE(logged(1).back().find("KVD Engine 2 ## Restart Alarm Inhibit Time"), std::string::npos);
}

TEST_F(InhibitReset, WithNoLogOpenNothingIsWrittenThere) {
    const auto before = world().files.size();
    mainfrm::Lbl_alminhibit_click(1);
    FrmResetInhTime::CmdDo_click();
    EXPECT_EQ(world().files.size(), before);
    EXPECT_FALSE(exists(log_path(1)));
    EXPECT_EQ(status(), box_line); // the other two places have it
    EXPECT_EQ(last_event(), event_record);
}

TEST_F(InhibitReset, TakesItsStepsInTheirOrder) {
    text_lines steps;
    const auto seen = [&steps](std::string_view where, i16 channel, std::string_view text) {
        steps.push_back(std::string(where) + ' ' + std::to_string(channel) + ' ' + std::string(text));
        steps.push_back("sent " + std::to_string(sent(1).size()) + ", box " +
                        std::to_string(status().size()));
        EXPECT_TRUE(dialog().form.Visible);
    };
    calls.log_comment = [&](i16 channel, std::string_view text) { seen("log", channel, text); };
    calls.event_line = [&](std::string_view text) { seen("event", 1, text); };
    mainfrm::Lbl_alminhibit_click(1);
    FrmResetInhTime::CmdDo_click();
    const std::string both_done =
        "sent " + std::to_string(command.size()) + ", box " + std::to_string(box_line.size());
    EXPECT_EQ(steps, (text_lines{"log 1 KVD Engine 2 ## Restart Alarm Inhibit Time", both_done,
                                 "event 1 07-02-2026;13:05:09;KVD Engine 2 ## Restart Alarm Inhibit Time",
                                 both_done}));
}

TEST_F(InhibitReset, ClosesTheDialogAndWaitsForNoAnswer) {
    mainfrm::Lbl_alminhibit_click(1);
    const auto before = world().now_ms;
    FrmResetInhTime::CmdDo_click();
    EXPECT_FALSE(dialog().form.Visible);
    EXPECT_FALSE(dialog().form.Loaded);
    EXPECT_EQ(world().now_ms, before);
}

TEST_F(InhibitReset, IsSentWhateverTheStateOfTheInhibitTime) {
    for (const i32 left : {0, 1, 600}) {
        sent(1).clear();
        sensor::state.channels[1].alminhibit_left = left;
        mainfrm::Lbl_alminhibit_click(1);
        FrmResetInhTime::CmdDo_click();
        EXPECT_EQ(sent(1), command) << left;
    }
}

TEST_F(InhibitReset, OpensAClosedPortForTheTimeOfTheSend) {
    mainfrm::Lbl_alminhibit_click(1);
    FrmResetInhTime::CmdDo_click();
    EXPECT_EQ(port(1).opened, 1);
    EXPECT_EQ(port(1).number, 2);
    EXPECT_FALSE(port(1).open);
}

TEST_F(InhibitReset, LeavesTheOpenPortOfAMeasuringChannelOpen) {
    mainfrm::start_channel_click(1);
    const int opened = port(1).opened;
    mainfrm::Lbl_alminhibit_click(1);
    FrmResetInhTime::CmdDo_click();
    EXPECT_EQ(port(1).opened, opened);
    EXPECT_TRUE(port(1).open);
    EXPECT_TRUE(sent(1).ends_with(command));
}

TEST_F(InhibitReset, IsRecordedAndClosedWhenTheCommandCannotBeSent) {
    start_logging(0);
    world().ports[1].refuses_output = true;
    world().debug.clear();
    mainfrm::Lbl_alminhibit_click(0);
    FrmResetInhTime::CmdDo_click();
    EXPECT_NE(status().find("KVD Engine 1 ## Restart Alarm Inhibit Time\r\n"), std::string::npos);
    EXPECT_NE(logged(0).back().find("KVD Engine 1 ## Restart"), std::string::npos);
    EXPECT_TRUE(last_event().ends_with(";KVD Engine 1 ## Restart Alarm Inhibit Time"));
    EXPECT_FALSE(dialog().form.Visible);
    ASSERT_EQ(world().debug.size(), 2U);
    EXPECT_EQ(world().debug[0], "TX: :80092f");
    EXPECT_NE(world().debug[1], "");
    EXPECT_TRUE(world().boxes.empty());
}

TEST_F(InhibitReset, OfAChannelThatDoesNotExistOnlyCloses) {
    mainfrm::Lbl_alminhibit_click(0);
    sensor::state.inhibit_reset_channel = 4;
    FrmResetInhTime::CmdDo_click();
    EXPECT_FALSE(dialog().form.Visible);
    EXPECT_EQ(status(), "");
    EXPECT_EQ(world().debug.back(), "Subscript out of range");
}

TEST_F(InhibitReset, TheFirstClickCountsWhenASecondComesLate) {
    mainfrm::Lbl_alminhibit_click(1);
    FrmResetInhTime::CmdDo_click();
    FrmResetInhTime::CmdDo_click();
    EXPECT_EQ(sent(1), command);
    EXPECT_EQ(status(), box_line);
    sent(1).clear();
    mainfrm::Lbl_alminhibit_click(1);
    FrmResetInhTime::CmdCancel_click();
    FrmResetInhTime::CmdDo_click();
    EXPECT_EQ(sent(1), "");
    EXPECT_EQ(status(), box_line);
}

TEST_F(InhibitReset, CancelledDoesNothingElse) {
    mainfrm::Lbl_alminhibit_click(1);
    const std::string events = file("C:/logs/TY_all_events.txt");
    FrmResetInhTime::CmdCancel_click();
    EXPECT_FALSE(dialog().form.Visible);
    EXPECT_EQ(sent(1), "");
    EXPECT_EQ(port(1).opened, 0);
    EXPECT_EQ(status(), "");
    EXPECT_EQ(file("C:/logs/TY_all_events.txt"), events);
}

} // namespace
} // namespace tyxo
