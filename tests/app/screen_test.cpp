// The question about a screen that is too small.

#include "app/started_program.h"

#include "displays/panel.h"
#include "settings/serial_ports.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

class Screen : public testing::Test {
  protected:
    void SetUp() override { prepare(logging_settings(2, std::string(with_events) + "autostart=1\r\n")); }
};

TEST_F(Screen, BelowItsLimitsIsWarnedAbout) {
    struct size_row {
        int width;
        int height;
        bool warned;
    };
    for (const size_row& row : {size_row{1272, 937, false},
                                {1280, 1024, false},
                                {3840, 2160, false},
                                {1272, 32767, false},
                                {1271, 1024, true},
                                {1280, 936, true},
                                {1271, 937, true},
                                {1272, 936, true},
                                {1024, 768, true},
                                {800, 2000, true},
                                {5000, 480, true}}) {
        SetUp();
        world().screen = {row.width, row.height};
        mainfrm::start_program(1272, 911);
        EXPECT_EQ(world().boxes.size(), row.warned ? 1U : 0U) << row.width << " x " << row.height;
    }
}

TEST_F(Screen, TheWarningHasItsTextTitleIconAndButtons) {
    world().screen = {1271, 1024};
    mainfrm::start_program(1272, 911);
    ASSERT_EQ(world().boxes.size(), 1U);
    const shown_box& box = world().boxes[0];
    EXPECT_EQ(box.text, "Resolution is actual 1271 x 1024dots\r\n"
                        "Screen does not fulfil the minimum requirements !\r\n"
                        "\r\n"
                        "It must have at least 1280 x 1024 dots !");
    EXPECT_EQ(box.title, "WARNING !");
    EXPECT_EQ(box.icon, box_icon::information);
    EXPECT_EQ(box.buttons, box_buttons::ok_cancel);
}

TEST_F(Screen, TheWarningNamesTheSizesInPlainDecimals) {
    world().screen = {800, 0};
    mainfrm::start_program(1272, 911);
    ASSERT_EQ(world().boxes.size(), 1U);
    EXPECT_TRUE(world().boxes[0].text.starts_with("Resolution is actual 800 x 0dots\r\n"));
}

TEST_F(Screen, OkGoesOnWithTheStart) {
    world().screen = {1024, 768};
    world().answers = {box_answer::ok};
    mainfrm::start_program(1272, 911);
    EXPECT_FALSE(world().exit_code.has_value());
    EXPECT_EQ(panels.Frame_sensor[1].Caption, "2: Engine 2");
    EXPECT_TRUE(sensor::state.measure_running);
    EXPECT_EQ(event_lines().size(), 3U);
    EXPECT_NE(mainfrm::state.Caption, "");
}

TEST_F(Screen, CancelWritesTheStartLineAndTheStopLineAndEnds) {
    world().screen = {1024, 768};
    world().answers = {box_answer::cancel};
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(world().exit_code, 0);
    EXPECT_EQ(event_lines(), (text_lines{std::string(start_line), std::string(stop_line)}));
    EXPECT_EQ(world().boxes.size(), 1U);
}

TEST_F(Screen, CancelStartsNoMeasuringWhateverTheSettingsSay) {
    world().screen = {1024, 768};
    world().answers = {box_answer::cancel};
    mainfrm::start_program(1272, 911);
    EXPECT_FALSE(sensor::state.measure_running);
    for (i16 channel = 0; channel < channel_count; ++channel)
        EXPECT_EQ(port(channel).opened, 0);
}

TEST_F(Screen, CancelWithTheEventFileDisabledEndsWithoutAFile) {
    prepare(logging_settings(2));
    const auto files = world().files;
    world().screen = {1024, 768};
    world().answers = {box_answer::cancel};
    mainfrm::start_program(1272, 911);
    EXPECT_EQ(world().exit_code, 0);
    EXPECT_EQ(world().files, files);
}

} // namespace
} // namespace tyxo
