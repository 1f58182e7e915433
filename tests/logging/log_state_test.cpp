// What logs and event file keep beside their lines.

#include "link/channel_rec.h"
#include "logging/event_file.h"
#include "logging/log.h"
#include "logging/logging_machine.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

TEST(LogState, BeforeTheFirstLogThereIsNoPeriod) {
    fresh_world();
    const log::period none = log::state.log_period;
    EXPECT_EQ(none.year, 0);
    EXPECT_EQ(none.month, 0);
    EXPECT_EQ(none.day, 0);
    EXPECT_EQ(none.hour, 0);
}

TEST(LogState, EachChannelsFileHasTheChannelsNumber) {
    start_on(logging_settings(2));
    start_logging(0);
    start_logging(1);
    EXPECT_EQ(sensor::state.channels[0].log_fileno, 1);
    EXPECT_EQ(sensor::state.channels[1].log_fileno, 2);
}

TEST(LogState, ADaysPeriodHasNoHour) {
    start_on(logging_settings(1));
    start_logging(0);
    EXPECT_EQ(log::state.log_period.hour, -1);
}

TEST(LogState, TheEventFileIsOpenForItsLineOnly) {
    start_on(logging_settings(1, "eventfile_ena=1\r\nevtpath=C:\\logs\\\r\n"));
    event_line("a line");
    EXPECT_FALSE(event_file.event_output.is_open());
    EXPECT_EQ(event_file.event_fileno, 256);
}

} // namespace
} // namespace tyxo
