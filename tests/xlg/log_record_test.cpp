// A header read back as the record of a channel is the record that it was written of.

#include "logging/log_header.h"
#include "logging/logging_machine.h"
#include "xlg/log_reader.h"
#include "xlg/log_record.h"

#include <algorithm>

namespace tyxo {
namespace {

using namespace simulation;

xlg::header_lines read_header(const std::string& text) {
    xlg::log_reader reader([text, at = std::size_t{0}](std::span<char> room) mutable {
        const std::size_t length = text.copy(room.data(), room.size(), at);
        at += length;
        return length;
    });
    for (xlg::entry one; reader.next(one);) {
    }
    return reader.header();
}

/// The header of the channel's record, and that of the record that it is read back as.
void expect_the_same(const parameter_values& values, parameter_form form = parameter_form::full,
                     std::string_view more_settings = "") {
    start_on(logging_settings(1, more_settings));
    start_logging(0, values, form);
    const std::string header = log::log_header(0);
    channel_rec& rec = sensor::channel_at(0);
    const channel_rec written = rec;
    rec = xlg::record_of(read_header(header), written.location);
    rec.logname = written.logname; // of the file, not of the engine
    EXPECT_EQ(log::log_header(0), header);
    EXPECT_EQ(rec.param_valid, written.param_valid);
    EXPECT_EQ(rec.firingorder, written.firingorder);
    EXPECT_EQ(rec.firingangle, written.firingangle);
    EXPECT_EQ(rec.location, written.location);
}

TEST(LogRecord, OfAnEngineInLineIsTheOneThatWasWritten) {
    expect_the_same({}, parameter_form::full, "typecode 1=TX-6\r\n");
}

TEST(LogRecord, OfAVEngineHasItsBanks) {
    expect_the_same({.ratedspeed = 750,
                     .overspeed = 900,
                     .numzyl = 12,
                     .cylconf = 2,
                     .firingorder = {101, 201, 105, 205, 103, 203, 106, 206, 102, 202, 104, 204},
                     .firingangle = {0, 60, 120, 180, 240, 300, 360, 420, 480, 540, 600, 660}});
}

TEST(LogRecord, OfTwentyFourCylindersAndTheShortestParametersLeavesTheOthersUnknown) {
    parameter_values values{.ratedspeed = 100, .overspeed = 119, .enginetype = 2, .numzyl = 24};
    for (std::size_t cylinder = 0; cylinder < 24; ++cylinder) {
        values.firingorder[cylinder] = static_cast<i32>(cylinder) + 1;
        values.firingangle[cylinder] = 30 * static_cast<i32>(cylinder);
    }
    expect_the_same(values, parameter_form::shortest);
}

TEST(LogRecord, OfMoreThan24CylindersHasNoFiringOrderAndDoesNotFail) {
    start_on(logging_settings(1));
    start_logging(0, {.numzyl = 25});
    const channel_rec rec = xlg::record_of(read_header(log::log_header(0)), "Engine 1");
    EXPECT_EQ(rec.numzyl, 25);
    EXPECT_EQ(std::ranges::count(rec.firingorder, 0), std::ssize(rec.firingorder));
}

TEST(LogRecord, OfAHeaderOfZerosHasNoParameters) {
    start_on(logging_settings(1));
    EXPECT_FALSE(xlg::record_of(read_header(log::log_header(0)), "Engine 1").param_valid);
}

TEST(LogRecord, IsCalledAsTheLogOfItsChannel) {
    EXPECT_EQ(xlg::location_of("/a/b/20260702Qu_Engine 1.xlg"), "Engine 1");
    EXPECT_EQ(xlg::location_of("2026070213Qu_K\xC3\xBChlung.xlg"), "K\xFChlung");
    EXPECT_EQ(xlg::location_of("copies/of engine 1.xlg"), "of engine 1");
}

} // namespace
} // namespace tyxo
